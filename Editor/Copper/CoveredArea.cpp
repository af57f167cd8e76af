// The plane is halved until few sides lie in each part. There the part is cut into bands at the height of
// every end and every crossing of sides: within a band the sides keep their order from left to right, and
// what lies between two of them is a trapezoid (after Nievergelt and Preparata 1982, on bands of a part
// alone).
#include "Editor/Copper/CoveredArea.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <tuple>
#include <utility>

namespace Ketril::Editor {

namespace {

constexpr std::size_t kFewSides = 48;
constexpr std::size_t kFewVertices = 1000, kFewItems = 300;
constexpr double kSmall = 64;  // units; no smaller part is halved

struct Part {
  double x1, y1, x2, y2;
  bool IsWide() const { return x2 - x1 > y2 - y1; }
  bool IsSmall() const { return std::max(x2 - x1, y2 - y1) < kSmall; }
};

std::pair<Part, Part> Halves(const Part& part, bool across) {
  const double x = (part.x1 + part.x2) / 2, y = (part.y1 + part.y2) / 2;
  return across ? std::pair<Part, Part>({part.x1, part.y1, x, part.y2}, {x, part.y1, part.x2, part.y2})
                : std::pair<Part, Part>({part.x1, part.y1, part.x2, y}, {part.x1, y, part.x2, part.y2});
}

// A side that is not level, from below to above, and which way the ring has it.
struct Side {
  double x1, y1, x2, y2;
  std::int32_t up;
  bool less;
  double At(double y) const { return x1 + (x2 - x1) * ((y - y1) / (y2 - y1)); }
};
using Sides = std::vector<Side>;

struct Item {
  const Ring* ring;
  Part box;
  bool less;
};
using Items = std::vector<Item>;

// Adds what of the side bears on the part: what is left of it is put onto its left border, where it winds
// about the same places; what is right of it winds about none.
void AddWithin(Sides& sides, Side side, const Part& part) {
  const auto [left, right] = std::minmax(side.x1, side.x2);
  if (left >= part.x1 && right < part.x2 && side.y1 >= part.y1 && side.y2 <= part.y2)
    return sides.push_back(side);
  if (side.y2 <= part.y1 || side.y1 >= part.y2 || std::min(side.x1, side.x2) >= part.x2) return;
  if (side.y1 < part.y1) side = {side.At(part.y1), part.y1, side.x2, side.y2, side.up, side.less};
  if (side.y2 > part.y2) side = {side.x1, side.y1, side.At(part.y2), part.y2, side.up, side.less};
  for (const double border : {part.x1, part.x2}) {
    if (std::min(side.x1, side.x2) >= border || std::max(side.x1, side.x2) <= border) continue;
    const double y = std::clamp(side.y1 + (side.y2 - side.y1) * ((border - side.x1) / (side.x2 - side.x1)),
                                side.y1, side.y2);
    AddWithin(sides, {side.x1, side.y1, border, y, side.up, side.less}, part);
    AddWithin(sides, {border, y, side.x2, side.y2, side.up, side.less}, part);
    return;
  }
  if (side.y2 <= side.y1 || std::min(side.x1, side.x2) >= part.x2) return;
  if (std::max(side.x1, side.x2) <= part.x1) side.x1 = side.x2 = part.x1;
  sides.push_back(side);
}

// The heights of all ends and crossings, in order; the sides are in the order of their lower ends.
std::vector<double> Heights(const Sides& sides) {
  std::vector<double> heights;
  for (std::size_t i = 0; i < sides.size(); ++i) {
    const Side& a = sides[i];
    heights.insert(heights.end(), {a.y1, a.y2});
    for (std::size_t j = i + 1; j < sides.size() && sides[j].y1 < a.y2; ++j) {
      const Side& b = sides[j];
      if (std::max(a.x1, a.x2) < std::min(b.x1, b.x2) || std::max(b.x1, b.x2) < std::min(a.x1, a.x2))
        continue;
      const double low = b.y1, high = std::min(a.y2, b.y2);
      const double before = a.At(low) - b.At(low), after = a.At(high) - b.At(high);
      if ((before < 0 && after > 0) || (before > 0 && after < 0))
        heights.push_back(low + (high - low) * (before / (before - after)));
    }
  }
  std::ranges::sort(heights);
  heights.erase(std::unique(heights.begin(), heights.end()), heights.end());
  return heights;
}

// One side in the place of several that are the same.
void MergeEqual(Sides& sides) {
  const auto place = [](const Side& side) { return std::tie(side.x1, side.y1, side.x2, side.y2, side.less); };
  std::ranges::sort(sides, [&](const Side& a, const Side& b) { return place(a) < place(b); });
  std::size_t last = 0;
  for (std::size_t i = 1; i < sides.size(); ++i) {
    if (place(sides[i]) == place(sides[last])) {
      sides[last].up += sides[i].up;
    } else {
      sides[++last] = sides[i];
    }
  }
  if (!sides.empty()) sides.resize(last + 1);
}

double AreaByBands(Sides& sides, const Part& part) {
  if (sides.size() > kFewSides) MergeEqual(sides);
  std::ranges::sort(sides, {}, &Side::y1);
  const std::vector<double> heights = Heights(sides);
  struct Crossing {
    const Side* side;
    double x;
  };
  std::vector<Crossing> crossings;  // of the band
  double area = 0;
  auto next = sides.begin();
  for (std::size_t band = 0; band + 1 < heights.size(); ++band) {
    const double low = heights[band], high = heights[band + 1], middle = low + (high - low) / 2;
    std::erase_if(crossings, [&](const Crossing& crossing) { return crossing.side->y2 <= low; });
    for (; next != sides.end() && next->y1 <= low; ++next) crossings.push_back({&*next, 0});
    for (Crossing& crossing : crossings) crossing.x = crossing.side->At(middle);
    std::ranges::sort(crossings, {}, &Crossing::x);
    int wound = 0, less = 0;
    double width = 0;
    for (std::size_t i = 0; i < crossings.size(); ++i) {
      (crossings[i].side->less ? less : wound) += crossings[i].side->up;
      const double end = i + 1 < crossings.size() ? crossings[i + 1].x : part.x2;
      if (wound != 0 && less == 0) width += end - crossings[i].x;
    }
    area += width * (high - low);
  }
  return area;
}

// Halves what there is between the halves of a part, along the part or else across it, by `deal(whole,
// half)`. False where that leaves too much on both sides: with what lies on each other all the way.
template <class List, class Deal>
bool Halve(const List& whole, const Part& part, Deal deal, std::pair<List, List>& lists,
           std::pair<Part, Part>& halves) {
  for (const bool across : {part.IsWide(), !part.IsWide()}) {
    halves = Halves(part, across);
    lists = {deal(whole, halves.first), deal(whole, halves.second)};
    if (2 * (lists.first.size() + lists.second.size()) <= 3 * whole.size()) return true;
  }
  return false;
}

double AreaOfSides(Sides sides, const Part& part) {
  const auto deal = [](const Sides& whole, const Part& half) {
    Sides dealt;
    for (const Side& side : whole) AddWithin(dealt, side, half);
    return dealt;
  };
  std::pair<Sides, Sides> lists;
  std::pair<Part, Part> halves;
  if (sides.size() <= kFewSides || part.IsSmall() || !Halve(sides, part, deal, lists, halves))
    return AreaByBands(sides, part);
  Sides().swap(sides);
  return AreaOfSides(std::move(lists.first), halves.first) +
         AreaOfSides(std::move(lists.second), halves.second);
}

Sides SidesWithin(const Items& items, const Part& part) {
  Sides sides;
  for (const auto& [ring, box, less] : items) {
    const std::vector<TCoordPoint>& points = ring->points;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const TCoordPoint &a = points[i], &b = points[i + 1 < points.size() ? i + 1 : 0];
      const double ax = a.x, ay = a.y, bx = b.x, by = b.y;
      if (ay < by) AddWithin(sides, {ax, ay, bx, by, 1, less}, part);
      if (by < ay) AddWithin(sides, {bx, by, ax, ay, -1, less}, part);
    }
  }
  return sides;
}

bool Meet(const Part& a, const Part& b) {
  return a.x1 < b.x2 && b.x1 < a.x2 && a.y1 < b.y2 && b.y1 < a.y2;
}

Part Together(const Part& a, const Part& b) {
  return {std::min(a.x1, b.x1), std::min(a.y1, b.y1), std::max(a.x2, b.x2), std::max(a.y2, b.y2)};
}

Part Common(const Part& a, const Part& b) {
  return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}

// Takes off the list the rings of which each box meets that of another one of them, in a row from the last.
Items TakeGroup(Items& items) {
  Items group;
  const auto move_over = [&](Items::iterator item) {
    group.push_back(*item);
    *item = items.back();
    items.pop_back();
  };
  move_over(items.end() - 1);
  for (std::size_t known = 0; known < group.size(); ++known) {
    const Part box = group[known].box;
    for (std::size_t i = items.size(); i-- > 0;)
      if (Meet(items[i].box, box)) move_over(items.begin() + static_cast<std::ptrdiff_t>(i));
  }
  return group;
}

// Group by group, for many rings of copper lie by themselves.
double AreaOfFew(Items items, const Part& part) {
  double area = 0;
  while (!items.empty()) {
    const Items group = items.size() <= kFewItems ? TakeGroup(items) : std::exchange(items, {});
    Part box = group[0].box;
    for (const Item& item : group) box = Together(box, item.box);
    box = Common(box, part);
    area += AreaOfSides(SidesWithin(group, box), box);
  }
  return area;
}

// Rings are dealt out whole as long as they are small against the part.
double AreaOfItems(Items items, const Part& part) {
  std::size_t vertices = 0, most = 0;
  for (const Item& item : items) {
    vertices += item.ring->points.size();
    most = std::max(most, item.ring->points.size());
  }
  const auto deal = [](const Items& whole, const Part& half) {
    Items dealt;
    std::ranges::copy_if(whole, std::back_inserter(dealt), [&](const Item& i) { return Meet(i.box, half); });
    return dealt;
  };
  std::pair<Items, Items> lists;
  std::pair<Part, Part> halves;
  if (vertices <= kFewVertices || 2 * most > vertices || !Halve(items, part, deal, lists, halves))
    return AreaOfFew(std::move(items), part);
  Items().swap(items);
  return AreaOfItems(std::move(lists.first), halves.first) +
         AreaOfItems(std::move(lists.second), halves.second);
}

}  // namespace

double CoveredArea(const std::vector<Ring>& rings, const std::vector<Ring>& less) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  const Part nowhere{kFar, kFar, -kFar, -kFar};
  Part whole = nowhere;
  Items items;
  const auto add = [&](const std::vector<Ring>& list, bool is_less) {
    for (const Ring& ring : list) {
      Part box = nowhere;
      for (const TCoordPoint& at : ring.points)
        box = Together(box, {double(at.x), double(at.y), double(at.x), double(at.y)});
      if (box.x1 < box.x2 && box.y1 < box.y2) items.push_back({&ring, box, is_less});
    }
  };
  add(rings, false);
  for (const Item& item : items) whole = Together(whole, item.box);
  if (items.empty()) return 0;
  add(less, true);
  return AreaOfItems(std::move(items), whole);
}

}  // namespace Ketril::Editor
