#include "Editor/Copper/CopperShape.h"

#include <cmath>
#include <iterator>
#include <utility>

#include "Editor/Copper/Outline.h"

namespace Ketril::Editor {

namespace {

constexpr std::size_t kLeafSize = 8;

// Twice the area, positive when counter-clockwise.
double TwiceArea(const Spots& ring) {
  double twice = 0;
  for (std::size_t i = 0, last = ring.size() - 1; i < ring.size(); last = i++) {
    const Spot a = ring[last], b = ring[i], origin = ring.front();
    twice += (a.x - origin.x) * (b.y - origin.y) - (b.x - origin.x) * (a.y - origin.y);
  }
  return twice;
}

// The hull of discs of one radius is their polygon, drawn with a round pen; of several radii it is the
// polygon of the points where its sides end, and the discs.
void AddParts(const Hull& hull, std::vector<CopperPart>& parts) {
  const std::vector<Disc>& discs = hull.discs;
  const auto spot = [](const Disc& disc) { return Spot{disc.x, disc.y}; };
  const bool alike = std::ranges::all_of(discs, [&](const Disc& d) { return d.radius == discs[0].radius; });
  if (alike && discs.size() <= 2) {
    parts.emplace_back(Segment{spot(discs.front()), spot(discs.back())}, discs[0].radius);
    return;
  }
  Area area;
  if (alike) {
    std::ranges::transform(discs, std::back_inserter(area.outer.emplace_back()), spot);
    area.pen = discs[0].radius;
  } else {
    area.outer.push_back(HullRing(hull, 0, kCoarsest));
    for (const Disc& disc : discs) parts.emplace_back(Segment{spot(disc), spot(disc)}, disc.radius);
  }
  parts.emplace_back(area);
}

}  // namespace

double GapOf(const Box& a, const Box& b) {
  const double dx = std::max({a.x1 - b.x2, b.x1 - a.x2, 0.0}), dy = std::max({a.y1 - b.y2, b.y1 - a.y2, 0.0});
  return std::sqrt(dx * dx + dy * dy);
}

CopperPart::CopperPart(Segment line, double pen)
    : segments_{line}, holes_from_(1), starts_{line.a}, pen_(pen) {
  BuildTree();
}

CopperPart::CopperPart(const ArcLine& arc, double pen) : arc_(arc), starts_{arc.a}, pen_(pen) {
  Box box;
  box.Add(arc.a);
  box.Add(arc.b);
  for (const double quadrant : {0.0, 90.0, 180.0, 270.0}) {
    if (const Spot spot = arc.At(quadrant); arc.Sees(spot)) box.Add(spot);
  }
  nodes_ = {Box(), box};
}

CopperPart::CopperPart(const Area& area) : pen_(area.pen), filled_(area.filled) {
  for (const Spots& ring : area.outer) AddRing(ring, area.closed);
  holes_from_ = segments_.size();
  for (const Spots& ring : area.holes) AddRing(ring, area.closed);
  BuildTree();
}

// All rings the same way round, so that of those that overlap no winding cancels another.
void CopperPart::AddRing(const Spots& ring, bool closed) {
  starts_.push_back(ring.front());
  const auto first = static_cast<std::ptrdiff_t>(segments_.size());
  for (std::size_t i = 1; i < ring.size(); ++i) segments_.push_back({ring[i - 1], ring[i]});
  if (closed || ring.size() == 1) segments_.push_back({ring.back(), ring.front()});
  if (!filled_ || TwiceArea(ring) >= 0) return;
  std::reverse(segments_.begin() + first, segments_.end());
  for (auto s = segments_.begin() + first; s != segments_.end(); ++s) std::swap(s->a, s->b);
}

void CopperPart::BuildTree() {
  const std::size_t leaves = (segments_.size() + kLeafSize - 1) / kLeafSize;
  nodes_.resize(2 * std::max<std::size_t>(leaves, 1));
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    nodes_[leaves + i / kLeafSize].Add(segments_[i].a);
    nodes_[leaves + i / kLeafSize].Add(segments_[i].b);
  }
  for (std::size_t node = leaves; node-- > 1;) {
    nodes_[node].Add(nodes_[2 * node]);
    nodes_[node].Add(nodes_[2 * node + 1]);
  }
}

std::pair<const Segment*, const Segment*> CopperPart::Leaf(std::size_t node) const {
  const std::size_t first = (node - LeafCount()) * kLeafSize;
  return {segments_.data() + std::min(first, segments_.size()),
          segments_.data() + std::min(first + kLeafSize, segments_.size())};
}

// Winding numbers about the spot, with a ray to the right, apart for outer rings and holes: where rings of
// one sort overlap they do not cancel.
bool CopperPart::Surrounds(Spot spot) const {
  if (!filled_) return false;
  int outer = 0, holes = 0;
  const auto visit = [&](const auto& self, std::size_t node) -> void {
    const Box& box = nodes_[node];
    if (spot.y < box.y1 || spot.y > box.y2 || spot.x > box.x2) return;
    if (node < LeafCount()) {
      self(self, 2 * node);
      self(self, 2 * node + 1);
      return;
    }
    const auto [begin, end] = Leaf(node);
    for (const Segment* s = begin; s != end; ++s) {
      const bool up = s->a.y <= spot.y, down = s->b.y <= spot.y;
      if (up == down) continue;
      const double side = (s->b.x - s->a.x) * (spot.y - s->a.y) - (spot.x - s->a.x) * (s->b.y - s->a.y);
      if (up ? side <= 0 : side >= 0) continue;
      (static_cast<std::size_t>(s - segments_.data()) < holes_from_ ? outer : holes) += up ? 1 : -1;
    }
  };
  visit(visit, 1);
  return outer != 0 && holes == 0;
}

CopperShape ShapeOf(const std::vector<Form>& forms) {
  CopperShape shape;
  for (const Form& form : forms) {
    if (const Hull* hull = std::get_if<Hull>(&form)) AddParts(*hull, shape.parts);
    if (const DrawnArc* arc = std::get_if<DrawnArc>(&form)) shape.parts.emplace_back(arc->line, arc->pen);
    if (const Area* area = std::get_if<Area>(&form)) shape.parts.emplace_back(*area);
  }
  return shape;
}

}  // namespace Ketril::Editor
