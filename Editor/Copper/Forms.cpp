#include "Editor/Copper/Forms.h"

#include <algorithm>
#include <iterator>

#include "Editor/Model/Copper.h"
#include "Editor/Model/Group.h"
#include "Editor/Model/Shapes.h"

namespace Ketril::Editor {

namespace {

Spot SpotOf(TCoordPoint point) {
  return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

// Places what is drawn about the origin: turned, then moved.
class Placement {
 public:
  Placement(Spot origin, double degrees) : origin_(origin), turn_(DirectionOf(degrees)) {}

  Spot operator()(double x, double y) const {
    return {origin_.x + (turn_.cos * x - turn_.sin * y), origin_.y + (turn_.sin * x + turn_.cos * y)};
  }
  Hull operator()(const std::vector<Disc>& discs, TCoordPoint offset = {}) const {
    Hull hull;
    for (const Disc& disc : discs) {
      const Spot spot = (*this)(disc.x + offset.x, disc.y + offset.y);
      hull.discs.push_back({spot.x, spot.y, disc.radius});
    }
    return hull;
  }

 private:
  Spot origin_;
  Direction turn_;
};

std::vector<Disc> BoxDiscs(double x1, double y1, double x2, double y2) {
  if (x1 > x2) std::swap(x1, x2);
  if (y1 > y2) std::swap(y1, y2);
  return {{x1, y1, 0}, {x2, y1, 0}, {x2, y2, 0}, {x1, y2, 0}};
}

Hull RoundHull(TCoordPoint center, TCoord size) {
  if (size <= 0) return {};
  return {{{static_cast<double>(center.x), static_cast<double>(center.y), size / 2.0}}};
}

Stroke StrokeOf(const TrackData& track) {
  TCoordPoint left = track.p1, right = track.p2;
  if (right.x < left.x || (right.x == left.x && right.y < left.y)) std::swap(left, right);
  return {{SpotOf(left), SpotOf(right)}, std::max(track.width, 0) / 2.0};
}

Form FormOf(const TrackData& track) {
  const auto [line, pen] = StrokeOf(track);
  return Hull{{{line.a.x, line.a.y, pen}, {line.b.x, line.b.y, pen}}};
}

Form FormOf(const Arc& arc) {
  return DrawnArc{
      ArcLine(SpotOf(arc.data.center), std::max(arc.data.radius, 0), arc.data.angle1, arc.Sweep()),
      std::max(arc.data.width, 0) / 2.0};
}

Form FormOf(const FillData& fill) {
  const Spot center{(double{1} * fill.box.x1 + fill.box.x2) / 2, (double{1} * fill.box.y1 + fill.box.y2) / 2};
  const Placement place(center, fill.rotation);
  return place(BoxDiscs(fill.box.x1 - center.x, fill.box.y1 - center.y, fill.box.x2 - center.x,
                        fill.box.y2 - center.y));
}

Form FormOf(const Text& text) {
  const TCoordRect box = text.Box();
  const Spot anchor = SpotOf(text.data.anchor);
  return Placement(anchor, text.data.rotation)(
      BoxDiscs(box.x1 - anchor.x, box.y1 - anchor.y, box.x2 - anchor.x, box.y2 - anchor.y));
}

void AddForms(const RegionData& region, std::vector<Form>& forms) {
  if (region.kind != eRegionKind_Copper) return;
  Area area = AreaOfRings(region.rings);
  area.pen = std::max(region.line_width, 0) / 2.0;
  area.filled = region.filled && region.closed;
  area.closed = region.closed;
  if (!area.outer.empty()) forms.push_back(std::move(area));
}

TCoord RingSize(const Via& via, TV7_Layer layer) {
  return Contains(via.data.removed, layer) ? via.data.hole : via.SizeOn(layer);
}

void AddForms(const Via& via, TV7_Layer layer, std::vector<Form>& forms) {
  Hull hull = RoundHull(via.data.center, RingSize(via, layer));
  if (!hull.discs.empty()) forms.push_back(std::move(hull));
}

void AddForms(const Pad& pad, TV7_Layer layer, std::vector<Form>& forms) {
  const PadLayer& entry = pad.On(layer);
  const Placement place(SpotOf(pad.data.center), pad.data.rotation);
  const bool removed = Contains(pad.data.removed, layer);
  Hull hull = !removed ? place(HullOf(entry), entry.offset) : pad.data.plated ? HoleOf(pad) : Hull{};
  if (!hull.discs.empty()) forms.push_back(std::move(hull));
  if (removed) return;
  for (const auto& polygon : entry.custom) {
    if (polygon.empty()) continue;
    Spots spots;
    for (const TCoordPoint& point : polygon) {
      spots.push_back(place(double{1} * point.x + entry.offset.x, double{1} * point.y + entry.offset.y));
    }
    forms.push_back(Area{{std::move(spots)}, {}});
  }
}

}  // namespace

Hull HoleOf(const Via& via) {
  return RoundHull(via.data.center, via.data.hole);
}

Hull HoleOf(const Pad& pad) {
  if (pad.data.hole <= 0) return {};
  const double half = pad.data.hole / 2.0, reach = pad.data.hole_width / 2.0 - half;
  const Placement place(SpotOf(pad.data.center), pad.data.rotation + pad.data.hole_rotation);
  if (pad.data.hole_type == eSquareHole) return place(BoxDiscs(-half, -half, half, half));
  if (pad.data.hole_type == eSlotHole && reach > 0) return place({{-reach, 0, half}, {reach, 0, half}});
  return place({{0, 0, half}});
}

Area AreaOfRings(const std::vector<Ring>& rings) {
  Area area;
  for (const Ring& ring : rings) {
    if (ring.points.empty()) continue;
    Spots& spots = (ring.hole ? area.holes : area.outer).emplace_back();
    std::ranges::transform(ring.points, std::back_inserter(spots), SpotOf);
  }
  return area;
}

bool HasCopperOn(const Primitive& primitive, TV7_Layer layer) {
  if (primitive.Has(kFlag_Hidden)) return false;
  const bool stands_on = primitive.state.layer == layer;
  switch (primitive.kind) {
    case ePadObject:
      return stands_on || (IsCopper(layer) && static_cast<const Pad&>(primitive).IsOn(layer));
    case eViaObject:
      return stands_on || static_cast<const Via&>(primitive).Spans(layer);
    case eTrackObject:
    case eArcObject:
    case eFillObject:
    case eTextObject:
    case eRegionObject:
      return stands_on || (primitive.state.layer == TV7_Layer(eV6_MultiLayer) && IsCopper(layer));
    default: {
      const auto* members = primitive.MemberList();
      return members && std::ranges::any_of(*members, [&](const Ref<Primitive>& member) {
               return HasCopperOn(*member, layer);
             });
    }
  }
}

std::vector<Form> FormsOf(const Primitive& primitive, TV7_Layer layer) {
  std::vector<Form> forms;
  if (!HasCopperOn(primitive, layer)) return forms;
  if (const Track* track = As<Track>(&primitive)) forms.push_back(FormOf(track->data));
  if (const Arc* arc = As<Arc>(&primitive)) forms.push_back(FormOf(*arc));
  if (const Fill* fill = As<Fill>(&primitive)) forms.push_back(FormOf(fill->data));
  if (const Text* text = As<Text>(&primitive)) forms.push_back(FormOf(*text));
  if (const Region* region = As<Region>(&primitive)) AddForms(region->data, forms);
  if (const Pad* pad = As<Pad>(&primitive)) AddForms(*pad, layer, forms);
  if (const Via* via = As<Via>(&primitive)) AddForms(*via, layer, forms);
  if (const auto* members = primitive.MemberList()) {
    for (const Ref<Primitive>& member : *members) {
      std::ranges::move(FormsOf(*member, layer), std::back_inserter(forms));
    }
  }
  return forms;
}

std::optional<Stroke> StrokeOf(const Primitive& primitive, TV7_Layer layer) {
  if (!HasCopperOn(primitive, layer)) return std::nullopt;
  if (const Track* track = As<Track>(&primitive)) return StrokeOf(track->data);
  const Via* const via = As<Via>(&primitive);
  const TCoord size = via ? RingSize(*via, layer) : 0;
  if (size <= 0) return std::nullopt;
  const Spot center = SpotOf(via->data.center);
  return Stroke{{center, center}, size / 2.0};
}

}  // namespace Ketril::Editor
