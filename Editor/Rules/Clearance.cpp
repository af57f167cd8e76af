#include "Editor/Rules/Clearance.h"

#include <algorithm>

#include "Editor/Copper/Distance.h"

namespace Ketril::Editor {

namespace {

constexpr TObjectSet kCopperKinds = {eArcObject, eTrackObject, ePadObject,
                                     eViaObject, eFillObject,  eRegionObject};

TCoordRect Grown(const TCoordRect& box, TCoord by) {
  return {ToCoord(std::int64_t{box.x1} - by), ToCoord(std::int64_t{box.y1} - by),
          ToCoord(std::int64_t{box.x2} + by), ToCoord(std::int64_t{box.y2} + by)};
}

}  // namespace

ClearanceChecker::ClearanceChecker(Board& board) : board_(board), greatest_(board.setup.clearance) {
  board.objects.ForEach({eRuleObject}, [&](Primitive& object) {
    Rule* rule = As<Rule>(&object);
    if (rule->data.rule_kind != eRule_Clearance || !rule->data.enabled) return;
    rules_.push_back(rule);
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
  CopperShape scratch_a, scratch_b;
  const CopperShape& shape_a = ShapeOn(a, layer, scratch_a);
  return Gap(shape_a, ShapeOn(b, layer, scratch_b), limit);
}

bool ClearanceChecker::Touches(const Primitive& a, const Primitive& b) {
  if (a.MemberList() || b.MemberList()) return Touch(a, b);
  return std::ranges::any_of(SharedLayers(a, b),
                             [&](TV7_Layer layer) { return GapOn(a, b, layer, kTouchGap) < kTouchGap; });
}

std::optional<Violation> ClearanceChecker::CheckPair(Primitive& a, Primitive& b, TCoord asked) {
  for (const TV7_Layer layer : SharedLayers(a, b)) {
    const double gap = GapOn(a, b, layer, asked);
    // By less than a unit nothing is too near: whole coordinates cannot tell it.
    if (gap < asked - kTouchGap) return Violation{Ref<Primitive>(&a), Ref<Primitive>(&b), layer, gap, asked};
  }
  return std::nullopt;
}

// Objects of other nets whose box comes as near as any clearance asks.
template <class Visit>
void ClearanceChecker::ForEachNeighbour(const Primitive& object, Visit visit) {
  for (Primitive* other : board_.index.Find(Grown(object.Bounds(), greatest_))) {
    if (other != &object && IsCopper(*other) && !MayTouch(object, *other)) visit(*other);
  }
}

std::vector<Violation> ClearanceChecker::CheckObject(Primitive& object) {
  std::vector<Violation> violations;
  if (!IsCopper(object)) return violations;
  ForEachNeighbour(object, [&](Primitive& other) {
    if (auto found = CheckPair(object, other, Clearance(object, other)))
      violations.push_back(std::move(*found));
  });
  return violations;
}

std::vector<Violation> ClearanceChecker::CheckBoard(const std::function<void(std::size_t)>& progress) {
  std::vector<Violation> violations;
  std::size_t done = 0;
  board_.objects.ForEach(kCopperKinds, [&](Primitive& object) {
    if (progress) progress(done++);
    if (!IsCopper(object)) return;
    ForEachNeighbour(object, [&](Primitive& other) {
      if (other.order < object.order) return;
      if (auto found = CheckPair(object, other, Clearance(object, other)))
        violations.push_back(std::move(*found));
    });
  });
  return violations;
}

}  // namespace Ketril::Editor
