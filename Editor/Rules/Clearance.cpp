#include "Editor/Rules/Clearance.h"

#include <algorithm>

#include "Editor/Copper/Distance.h"
#include "Editor/Model/Polygon.h"

namespace Ketril::Editor {

namespace {

TCoordRect Grown(const TCoordRect& box, TCoord by) {
  return {ToCoord(std::int64_t{box.x1} - by), ToCoord(std::int64_t{box.y1} - by),
          ToCoord(std::int64_t{box.x2} + by), ToCoord(std::int64_t{box.y2} + by)};
}

// Pours have chords for arcs, so that their gaps come out a little small.
constexpr TCoord kPourTolerance = 394;  // 1 micrometre

bool IsPour(const Primitive& object) {
  return object.kind == eRegionObject && object.Owner() && object.Owner()->kind == ePolyObject;
}

bool Forbids(const PolygonData& area, const Primitive& object) {
  switch (object.kind) {
    case eTrackObject:
    case eArcObject:
      return area.keepout_tracks;
    case eViaObject:
      return area.keepout_vias;
    case ePadObject:
      return area.keepout_pads;
    default:
      return area.keepout_copper && !IsPour(object);
  }
}

}  // namespace

ClearanceChecker::ClearanceChecker(Board& board)
    : board_(board),
      clearance_(board.setup.clearance),
      hole_clearance_(board.setup.hole_clearance),
      greatest_(std::max(clearance_, hole_clearance_)) {
  board.objects.ForEach({eRuleObject}, [&](Primitive& object) {
    Rule* rule = As<Rule>(&object);
    if (rule->data.rule_kind != eRule_Clearance || !rule->data.enabled) return;
    if (rule->data.net_class.empty()) rules_.push_back(rule);
    greatest_ = std::max(greatest_, rule->data.gap);
    for (const auto& [ids, gap] : rule->data.gaps) greatest_ = std::max(greatest_, gap);
  });
  std::ranges::stable_sort(rules_, {}, [](const Rule* rule) { return rule->data.priority; });
  board.objects.ForEach({eClassObject}, [&](Primitive& object) {
    greatest_ = std::max(greatest_, As<ObjectClass>(&object)->data.sizes.clearance);
  });
}

bool ClearanceChecker::IsCopper(const Primitive& object) {
  return kCopperKinds.Contains(object.kind) && !object.Has(kFlag_KeepOut);
}

bool ClearanceChecker::MayTouch(const Primitive& a, const Primitive& b) {
  return a.GetNet() == b.GetNet();
}

TCoord ClearanceChecker::NetClearance(const Net* net) {
  const auto [entry, is_new] = net_clearances_.try_emplace(net, board_.setup.clearance);
  if (is_new) {
    const ObjectClass* net_class = board_.ClassOf(net);
    if (net_class && net_class->data.sizes.clearance > 0) entry->second = net_class->data.sizes.clearance;
  }
  return entry->second;
}

TCoord ClearanceChecker::Clearance(const Primitive& a, const Primitive& b) {
  for (const Rule* rule : rules_) {
    if (rule->Governs(a, b)) return rule->GapOf(ClearanceIdOf(a), ClearanceIdOf(b));
  }
  return std::max(NetClearance(a.GetNet()), NetClearance(b.GetNet()));
}

const CopperShape& ClearanceChecker::ShapeOn(const Primitive& object, TV7_Layer layer, CopperShape& scratch) {
  if (object.kind != eRegionObject || !object.on_board) return scratch = CopperOn(object, layer);
  const auto [entry, is_new] = shapes_.try_emplace(&object);
  if (is_new) entry->second = CopperOn(object, layer);
  return entry->second;
}

double ClearanceChecker::GapOn(const Primitive& a, const Primitive& b, TV7_Layer layer, double limit) {
  if (const auto gap = QuickGap(a, b, layer, limit)) return *gap;
  CopperShape scratch_a, scratch_b;
  const CopperShape& shape_a = ShapeOn(a, layer, scratch_a);
  return Gap(shape_a, ShapeOn(b, layer, scratch_b), limit);
}

bool ClearanceChecker::Touches(const Primitive& a, const Primitive& b) {
  if (a.MemberList() || b.MemberList()) return Touch(a, b);
  return std::ranges::any_of(SharedLayers(a, b),
                             [&](TV7_Layer layer) { return GapOn(a, b, layer, kTouchGap) < kTouchGap; });
}

// Of the copper on the layer to the hole; beyond what the board asks when there is no hole.
double ClearanceChecker::GapToHole(const Primitive& drilled, const Primitive& other, TV7_Layer layer) {
  const Via* const via = As<Via>(&drilled);
  const Pad* const pad = As<Pad>(&drilled);
  if (!via && !pad) return board_.setup.hole_clearance;
  const Hull hole = via ? HoleOf(*via) : HoleOf(*pad);
  if (hole.discs.empty()) return board_.setup.hole_clearance;
  CopperShape scratch;
  return Gap(ShapeOf({hole}), ShapeOn(other, layer, scratch), board_.setup.hole_clearance);
}

std::optional<Violation> ClearanceChecker::CheckPair(Primitive& a, Primitive& b, TCoord asked) {
  const TCoord hole_asked = board_.setup.hole_clearance;
  // By less than a unit nothing is too near: whole coordinates cannot tell it.
  const double tolerance = IsPour(a) || IsPour(b) ? kPourTolerance : kTouchGap;
  for (const TV7_Layer layer : SharedLayers(a, b)) {
    const double gap = GapOn(a, b, layer, std::max(asked, hole_asked));
    if (gap < asked - tolerance) return Violation{Ref<Primitive>(&a), Ref<Primitive>(&b), layer, gap, asked};
    if (gap >= hole_asked) continue;  // its hole is further away than a pad's or via's copper
    const double to_hole = std::min(GapToHole(a, b, layer), GapToHole(b, a, layer));
    if (to_hole < hole_asked - tolerance) {
      return Violation{Ref<Primitive>(&a), Ref<Primitive>(&b),          layer, to_hole,
                       hole_asked,         ViolationKind::HoleClearance};
    }
  }
  return std::nullopt;
}

void ClearanceChecker::CheckKeepOuts(Primitive& object, const std::vector<Primitive*>& near,
                                     std::vector<Violation>& violations) {
  for (Primitive* other : near) {
    const Polygon* const area = As<Polygon>(other);
    if (!area || !area->Has(kFlag_KeepOut) || !Forbids(area->data, object)) continue;
    const auto [shape, is_new] = shapes_.try_emplace(area);
    if (is_new) shape->second = ShapeOf({AreaOfRings(area->data.rings)});
    for (const TV7_Layer layer : area->data.layers) {
      CopperShape scratch;
      if (!HasCopperOn(object, layer) || Gap(shape->second, ShapeOn(object, layer, scratch), 1) > 0) continue;
      violations.push_back(
          {Ref<Primitive>(&object), Ref<Primitive>(other), layer, 0, 0, ViolationKind::KeepOut});
      break;
    }
  }
}

void ClearanceChecker::Check(Primitive& object, std::uint64_t from, std::vector<Violation>& violations) {
  if (!IsCopper(object)) return;
  const std::vector<Primitive*> near = board_.index.Find(Grown(object.Bounds(), greatest_));
  for (Primitive* other : near) {
    if (other == &object || other->order < from || !IsCopper(*other) || MayTouch(object, *other)) continue;
    if (auto found = CheckPair(object, *other, Clearance(object, *other)))
      violations.push_back(std::move(*found));
  }
  CheckKeepOuts(object, near, violations);
}

std::vector<Violation> ClearanceChecker::CheckObject(Primitive& object) {
  std::vector<Violation> violations;
  Check(object, 0, violations);
  return violations;
}

std::vector<Violation> ClearanceChecker::CheckBoard(const std::function<void(std::size_t)>& progress) {
  std::vector<Violation> violations;
  std::size_t done = 0;
  board_.objects.ForEach(kCopperKinds, [&](Primitive& object) {
    if (progress) progress(done++);
    Check(object, object.order, violations);
  });
  return violations;
}

}  // namespace Ketril::Editor
