#include "Editor/Rules/ComponentChecks.h"

#include <algorithm>
#include <cmath>

#include "Editor/Copper/Clipping.h"
#include "Editor/Copper/Distance.h"
#include "Editor/Model/Board.h"

namespace Ketril::Editor {

namespace {

Ring RingOf(const TCoordRect& box) {
  return {{{box.x1, box.y1}, {box.x2, box.y1}, {box.x2, box.y2}, {box.x1, box.y2}}, false};
}

CopperShape ShapeOfRegion(const Ring& region) {
  return region.points.empty() ? CopperShape() : ShapeOf({AreaOfRings({region})});
}

TCoord DistanceOf(const TCoordRect& a, const TCoordRect& b) {
  const auto apart = [](TCoord low1, TCoord high1, TCoord low2, TCoord high2) {
    return std::max({double{0}, double(low2) - high1, double(low1) - high2});
  };
  return ToCoord(std::hypot(apart(a.x1, a.x2, b.x1, b.x2), apart(a.y1, a.y2, b.y1, b.y2)));
}

template <class Visit>
void ForEachRule(Board& board, TRuleKind kind, Visit visit) {
  std::vector<Rule*> rules;
  board.objects.ForEach({eRuleObject}, [&](Primitive& object) {
    Rule* rule = As<Rule>(&object);
    if (rule->data.rule_kind == kind && rule->data.enabled) rules.push_back(rule);
  });
  std::ranges::stable_sort(rules, {}, [](const Rule* rule) { return rule->data.priority; });
  for (Rule* rule : rules) visit(*rule);
}

// Each pair by the first rule that governs it.
void CheckAllComponents(Board& board, const std::vector<Component*>& components,
                        std::vector<Violation>& violations) {
  std::vector<const Rule*> rules;
  ForEachRule(board, eRule_ComponentClearance, [&](const Rule& rule) { rules.push_back(&rule); });
  TCoord reach = 0;
  for (const Rule* rule : rules) reach = std::max(reach, rule->data.horizontal_gap);
  if (rules.empty()) return;
  for (Component* a : components) {
    const TCoordRect box = a->Bounds();
    const TCoordRect near{ToCoord(std::int64_t{box.x1} - reach), ToCoord(std::int64_t{box.y1} - reach),
                          ToCoord(std::int64_t{box.x2} + reach), ToCoord(std::int64_t{box.y2} + reach)};
    for (Primitive* other : board.index.Find(near)) {
      Component* b = As<Component>(other);
      if (!b || b->order <= a->order) continue;
      const auto rule = std::ranges::find_if(rules, [&](const Rule* r) { return r->Governs(*a, *b); });
      if (rule == rules.end()) continue;
      if (auto found = CheckComponents(**rule, *a, *b)) violations.push_back(std::move(*found));
    }
  }
}

}  // namespace

bool IsBoxWithin(const TCoordRect& box, const Ring& region) {
  if (region.points.empty()) return false;
  // Nothing of the box outside: no corner is, and no side of the region crosses it.
  double covered = 0;
  for (const Ring& part : Difference({RingOf(box)}, {region})) covered += std::abs(AreaOf(part));
  const auto spot = [](TCoordPoint p) { return ShapeOf({Hull{{Disc{double(p.x), double(p.y), 0}}}}); };
  return covered < 1 && Gap(ShapeOfRegion(region), spot({box.x1, box.y1}), kTouchGap) < kTouchGap;
}

bool DoesBoxMeet(const TCoordRect& box, const Ring& region) {
  return Gap(ShapeOfRegion(region), ShapeOfRegion(RingOf(box)), kTouchGap) < kTouchGap;
}

std::optional<Violation> CheckComponents(const Rule& rule, Component& a, Component& b) {
  if (a.state.layer != b.state.layer) return std::nullopt;
  const TCoord gap = DistanceOf(a.Bounds(), b.Bounds());
  if (gap >= rule.data.horizontal_gap) return std::nullopt;
  return Violation{Ref<Primitive>(&a), Ref<Primitive>(&b),       a.state.layer,
                   double(gap),        rule.data.horizontal_gap, ViolationKind::ComponentClearance};
}

std::optional<Violation> CheckConfinement(Rule& room, Component& component) {
  const RuleData& data = room.data;
  const bool is_its_side = component.state.layer == TV7_Layer(data.region_layer);
  if (!room.Scope1Has(&component)) return std::nullopt;
  const TCoordRect box = component.Bounds();
  const bool broken = data.confinement == eConfineIn ? !is_its_side || !IsBoxWithin(box, room.Region())
                                                     : is_its_side && DoesBoxMeet(box, room.Region());
  if (!broken) return std::nullopt;
  return Violation{Ref<Primitive>(&component), Ref<Primitive>(&room), component.state.layer, 0, 0,
                   ViolationKind::Confinement};
}

std::vector<Violation> CheckComponentRules(Board& board, TRuleKindSet kinds) {
  std::vector<Component*> components;
  board.objects.ForEach({eComponentObject},
                        [&](Primitive& object) { components.push_back(As<Component>(&object)); });
  std::vector<Violation> violations;
  if (kinds.Contains(eRule_ComponentClearance)) CheckAllComponents(board, components, violations);
  if (kinds.Contains(eRule_ConfinementConstraint)) {
    ForEachRule(board, eRule_ConfinementConstraint, [&](Rule& room) {
      for (Component* component : components) {
        if (auto found = CheckConfinement(room, *component)) violations.push_back(std::move(*found));
      }
    });
  }
  return violations;
}

}  // namespace Ketril::Editor
