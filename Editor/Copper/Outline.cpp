#include "Editor/Copper/Outline.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <utility>

#include "Editor/Copper/Clipping.h"

namespace Ketril::Editor {

namespace {

// Adds the ends of the chords of an arc; a negative sweep runs clockwise.
void AddArc(Spots& spots, Spot center, double radius, double start, double sweep, double error) {
  const ArcLine arc(center, radius, start, std::abs(sweep));
  if (radius <= 0) return spots.push_back(center);
  const int chords = ChordCount(radius, std::abs(sweep), error);
  for (int i = 0; i <= chords; ++i) spots.push_back(arc.At(start + sweep * i / chords));
}

// A ring of whole units, without vertices that repeat the one before. A ring that is left without area is
// emptied.
Ring Rounded(const Spots& spots, bool hole = false) {
  Ring ring{{}, hole};
  for (const Spot& spot : spots) {
    const TCoordPoint point{ToCoord(spot.x), ToCoord(spot.y)};
    if (ring.points.empty() || ring.points.back() != point) ring.points.push_back(point);
  }
  while (ring.points.size() > 1 && ring.points.back() == ring.points.front()) ring.points.pop_back();
  if (ring.points.size() < 3 || AreaOf(ring) == 0) ring.points.clear();
  return ring;
}

std::vector<Ring> WithArea(std::vector<Ring> rings) {
  std::erase_if(rings, [](const Ring& ring) { return ring.points.empty(); });
  return rings;
}

// The direction, in degrees, in which the side from one disc to the next faces: the outer tangent of both.
double FacingOf(const Disc& from, const Disc& to) {
  const double dx = to.x - from.x, dy = to.y - from.y, apart = std::hypot(dx, dy);
  const double along = std::clamp((from.radius - to.radius) / apart, -1.0, 1.0);
  const double across = std::sqrt(1 - along * along);
  return std::atan2(along * dy - across * dx, along * dx + across * dy) * 180 / std::numbers::pi;
}

// A convex polygon, its sides moved inwards by `depth`; nothing when a side vanishes on the way.
Spots Inset(const std::vector<Disc>& discs, double depth) {
  Spots ring;
  const std::size_t count = discs.size();
  for (std::size_t i = 0; i < count; ++i) {
    const Disc &before = discs[(i + count - 1) % count], &corner = discs[i], &after = discs[(i + 1) % count];
    const double x1 = corner.x - before.x, y1 = corner.y - before.y, length1 = std::hypot(x1, y1);
    const double x2 = after.x - corner.x, y2 = after.y - corner.y, length2 = std::hypot(x2, y2);
    const double turn = (x1 * y2 - y1 * x2) / (length1 * length2);
    if (!(turn > 1e-6)) return {};
    // Where both moved sides meet.
    const double k = depth / turn;
    ring.push_back(
        {corner.x + k * (x2 / length2 - x1 / length1), corner.y + k * (y2 / length2 - y1 / length1)});
  }
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t next = (i + 1) % count;
    const double along = (ring[next].x - ring[i].x) * (discs[next].x - discs[i].x) +
                         (ring[next].y - ring[i].y) * (discs[next].y - discs[i].y);
    if (along <= 0) return {};
  }
  return ring;
}

std::vector<Ring> HullOutline(const Hull& hull, double growth, double error) {
  const auto [least, greatest] = std::ranges::minmax(hull.discs, {}, &Disc::radius);
  if (least.radius + growth >= 0) return WithArea({Rounded(HullRing(hull, growth, error))});
  if (hull.discs.size() > 2 && least.radius == greatest.radius) {
    const Spots ring = Inset(hull.discs, -growth - least.radius);
    if (!ring.empty()) return WithArea({Rounded(ring)});
  }
  return Offset(WithArea({Rounded(HullRing(hull, 0, error))}), growth, error);
}

// What a pen of the radius `pen` > 0 draws along the arc.
std::vector<Ring> ArcOutline(const ArcLine& arc, double pen, double error) {
  const auto disc = [&](Spot spot) { return Rounded(HullRing(Hull{{{spot.x, spot.y, pen}}}, 0, error)); };
  if (arc.radius <= 0 || arc.sweep <= 0) return WithArea({disc(arc.a)});
  const double inner = std::max(arc.radius - pen, 0.0), end = arc.start + arc.sweep;
  Spots outside;
  AddArc(outside, arc.center, arc.radius + pen, arc.start, arc.sweep, error);
  if (arc.sweep >= 360) {
    Spots inside;
    AddArc(inside, arc.center, inner, arc.start, -360, error);
    return WithArea({Rounded(outside), Rounded(inside, true)});
  }
  // The round ends meet neither each other nor the centre: one ring is it all.
  if (inner > 0 && (arc.sweep <= 180 || Distance(arc.a, arc.b) >= 2 * pen)) {
    AddArc(outside, arc.b, pen, end, 180, error);
    AddArc(outside, arc.center, inner, end, -arc.sweep, error);
    AddArc(outside, arc.a, pen, arc.start + 180, 180, error);
    return WithArea({Rounded(outside)});
  }
  AddArc(outside, arc.center, inner, end, -arc.sweep, error);
  return Difference(WithArea({Rounded(outside), disc(arc.a), disc(arc.b)}), {});
}

std::vector<Ring> RingsOf(const std::vector<Spots>& rings, bool hole, bool filled) {
  std::vector<Ring> result;
  for (const Spots& spots : rings) {
    Ring ring = Rounded(spots, hole);
    if (!filled) {
      ring.points.clear();
      for (const Spot& spot : spots) ring.points.push_back({ToCoord(spot.x), ToCoord(spot.y)});
    } else if ((AreaOf(ring) < 0) != hole && !ring.points.empty()) {
      std::reverse(ring.points.begin() + 1, ring.points.end());
    }
    result.push_back(std::move(ring));
  }
  return WithArea(std::move(result));
}

std::vector<Ring> AreaOutline(const Area& area, double growth, double error) {
  const double reach = area.pen + growth;
  std::vector<Ring> outer = RingsOf(area.outer, false, area.filled);
  std::vector<Ring> holes = RingsOf(area.holes, true, area.filled);
  if (area.filled) {
    std::vector<Ring> rings = Difference(outer, holes);
    return reach == 0 ? rings : Offset(rings, reach, error);
  }
  if (reach <= 0) return {};
  std::ranges::move(holes, std::back_inserter(outer));
  return Offset(outer, reach, error, false, area.closed);
}

std::vector<Ring> FormOutline(const Form& form, double growth, double error) {
  if (const Hull* hull = std::get_if<Hull>(&form)) return HullOutline(*hull, growth, error);
  if (const Area* area = std::get_if<Area>(&form)) return AreaOutline(*area, growth, error);
  const DrawnArc& arc = std::get<DrawnArc>(form);
  return arc.pen + growth > 0 ? ArcOutline(arc.line, arc.pen + growth, error) : std::vector<Ring>{};
}

}  // namespace

int ChordCount(double radius, double degrees, double error) {
  const double step = 2 * std::acos(std::clamp(1 - error / radius, 0.0, 1.0)) * 180 / std::numbers::pi;
  const double fine = std::ceil(degrees / std::clamp(step, 360 / 4096.0, 45.0) - 1e-9);
  return static_cast<int>(std::clamp(fine, 1.0, 4096.0));
}

Spots HullRing(const Hull& hull, double growth, double error) {
  std::vector<Disc> discs;
  const auto same = [](const Disc& a, const Disc& b) {
    return a.x == b.x && a.y == b.y && a.radius == b.radius;
  };
  std::ranges::unique_copy(hull.discs, std::back_inserter(discs), same);
  while (discs.size() > 1 && same(discs.front(), discs.back())) discs.pop_back();
  Spots ring;
  const auto add = [&](const Disc& disc, double start, double sweep) {
    AddArc(ring, {disc.x, disc.y}, disc.radius + growth, start, sweep, error);
  };
  if (discs.size() == 1) {
    add(discs[0], 90, 180);
    add(discs[0], 270, 180);
    return ring;
  }
  double facing = FacingOf(discs.back(), discs.front());
  for (std::size_t i = 0; i < discs.size(); ++i) {
    const double next = FacingOf(discs[i], discs[(i + 1) % discs.size()]);
    double sweep = std::fmod(next - facing + 720, 360);
    if (sweep > 270) sweep = 0;  // sides in one line, but for rounding
    add(discs[i], facing, sweep);
    facing = next;
  }
  return ring;
}

std::vector<Ring> Outline(const std::vector<Form>& forms, double growth, double error) {
  if (forms.size() == 1) return FormOutline(forms[0], growth, error);
  std::vector<Ring> rings;
  for (const Form& form : forms) {
    std::ranges::move(FormOutline(form, std::max(growth, 0.0), error), std::back_inserter(rings));
  }
  if (!rings.empty()) rings = Difference(rings, {});
  return growth < 0 ? Offset(rings, growth, error) : rings;
}

}  // namespace Ketril::Editor
