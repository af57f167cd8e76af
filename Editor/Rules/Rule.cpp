#include "Editor/Rules/Rule.h"

#include <algorithm>

#include "Editor/Model/Board.h"
#include "Editor/Model/Polygon.h"
#include "Editor/Rules/Clearance.h"
#include "Editor/Rules/ComponentChecks.h"
#include "Editor/Selection/Selection.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

// What all rules answer.
template <class Self, class... Interfaces>
class RuleObject : public PrimitiveObject<Self, Rule, Interfaces...> {
 public:
  KETRIL_HOST_READ(IPCB_Rule, TRuleKind, RuleKind, this->data.rule_kind)
  KETRIL_HOST_PROPERTY(IPCB_Rule, std::u16string, Name, this->data.name)
  KETRIL_HOST_PROPERTY(IPCB_Rule, std::u16string, Comment, this->data.comment)
  KETRIL_HOST_PROPERTY(IPCB_Rule, bool, DRCEnabled, this->data.enabled)
  KETRIL_HOST_PROPERTY(IPCB_Rule2, std::u16string, Scope1Expression, this->data.scope1)
  KETRIL_HOST_PROPERTY(IPCB_Rule2, std::u16string, Scope2Expression, this->data.scope2)
  KETRIL_HOST_PROPERTY(IPCB_Rule2, TNetScope, NetScope, this->data.net_scope)
  KETRIL_HOST_PROPERTY(IPCB_Rule2, TRuleLayerKind, LayerKind, this->data.layer_kind)
  KETRIL_HOST_PROPERTY(IPCB_Rule2, bool, DefinedByLogicalDocument, this->data.from_schematic)
  KETRIL_HOST_READ(IPCB_Rule2, std::uint16_t, Priority, static_cast<std::uint16_t>(this->data.priority))
  KETRIL_HOST_READ(IPCB_Rule2, TUnit, DisplayUnit, this->board ? this->board->setup.display_unit : eMetric)
  KETRIL_HOST_READ(IPCB_Rule2, std::u16string, DataSummaryString, this->Summary())
  KETRIL_HOST_METHOD(IPCB_Rule2, Scope1Includes, (IPCB_Primitive * primitive, bool& includes),
                     void(includes = this->Scope1Has(FromInterface(primitive))))
  KETRIL_HOST_METHOD(IPCB_Rule2, Scope2Includes, (IPCB_Primitive * primitive, bool& includes),
                     void(includes = this->Scope2Has(FromInterface(primitive))))
  KETRIL_HOST_METHOD(IPCB_Rule2, SubscopeMatches, (IPCB_Primitive * p1, IPCB_Primitive* p2, bool& matches),
                     void(matches = this->Scope1Has(FromInterface(p1)) && this->Scope2Has(FromInterface(p2))))
  KETRIL_HOST_METHOD(IPCB_Rule2, GetState_AttributesDescriptorString,
                     (IPCB_Primitive*, IPCB_Primitive*, std::u16string& text), void(text = this->Summary()))
  KETRIL_HOST_METHOD(IPCB_Rule2, ActualCheck,
                     (IPCB_Primitive * p1, IPCB_Primitive* p2, Ref<IPCB_ViolationReport>& violations),
                     this->CheckPair(p1, p2, violations))

  // A rule is told by its identifier, and a replica is the same rule.
  Ref<Primitive> FreeCopy() const override {
    Ref<Primitive> copy = PrimitiveObject<Self, Rule, Interfaces...>::FreeCopy();
    copy->SetUniqueId(this->UniqueId());
    return copy;
  }
};

class PlainRule final : public RuleObject<PlainRule, IPCB_Rule2> {};
class FanoutRule final : public RuleObject<FanoutRule, IPCB_FanoutControlRule> {};
class ViaStyleRule final : public RuleObject<ViaStyleRule, IPCB_RoutingViaStyleRule> {};

class ClearanceRule final : public RuleObject<ClearanceRule, IPCB_ClearanceConstraint2> {
 public:
  KETRIL_HOST_PROPERTY(IPCB_ClearanceConstraint, TCoord, Gap, data.gap)
  KETRIL_HOST_READ(IPCB_ClearanceConstraint2, TClearanceConstraintMode, Mode,
                   data.gaps.empty() ? eClearanceConstraintMode_SingleClearance
                                     : eClearanceConstraintMode_ObjectsClearance)
  KETRIL_HOST_METHOD(IPCB_ClearanceConstraint2, GetState_Clearance,
                     (TObjectClearanceId a, TObjectClearanceId b, TCoord& gap), void(gap = GapOf(a, b)))
  KETRIL_HOST_METHOD(IPCB_ClearanceConstraint2, SetState_Clearance,
                     (TObjectClearanceId a, TObjectClearanceId b, TCoord gap), Put(a, b, gap))
  KETRIL_HOST_METHOD(IPCB_ClearanceConstraint2, GetState_ObjectClearance,
                     (IPCB_Primitive * a, IPCB_Primitive* b, TCoord& gap), OfPair(a, b, gap, false))
  KETRIL_HOST_METHOD(IPCB_ClearanceConstraint2, SetState_ObjectClearance,
                     (IPCB_Primitive * a, IPCB_Primitive* b, TCoord gap), OfPair(a, b, gap, true))
  KETRIL_HOST_READ(IPCB_ClearanceConstraint2, TCoord, MaxGap, Extreme(nullptr, true))
  KETRIL_HOST_READ(IPCB_ClearanceConstraint2, TCoord, MinGap, Extreme(nullptr, false))
  KETRIL_HOST_METHOD(IPCB_ClearanceConstraint2, GetState_ObjectMaxGap,
                     (IPCB_Primitive * primitive, TCoord& gap),
                     void(gap = Extreme(FromInterface(primitive), true)))
  KETRIL_HOST_METHOD(IPCB_ClearanceConstraint2, GetState_ObjectMinGap,
                     (IPCB_Primitive * primitive, TCoord& gap),
                     void(gap = Extreme(FromInterface(primitive), false)))

 private:
  void Put(TObjectClearanceId a, TObjectClearanceId b, TCoord gap) {
    Write([&] { data.gaps[std::minmax(a, b)] = gap; });
  }
  Status OfPair(IPCB_Primitive* a, IPCB_Primitive* b, TCoord& gap, bool write) {
    const Primitive *first = FromInterface(a), *second = FromInterface(b);
    if (!first || !second) return Status::InvalidArgument;
    const TObjectClearanceId id1 = ClearanceIdOf(*first), id2 = ClearanceIdOf(*second);
    write ? Put(id1, id2, gap) : void(gap = GapOf(id1, id2));
    return Status::Ok;
  }
};

class ComponentRule final : public RuleObject<ComponentRule, IPCB_ComponentClearanceConstraint> {
 public:
  KETRIL_HOST_PROPERTY(IPCB_ComponentClearanceConstraint, TCoord, HorizontalGap, data.horizontal_gap)
  KETRIL_HOST_PROPERTY(IPCB_ComponentClearanceConstraint, TCoord, VerticalGap, data.vertical_gap)
  KETRIL_HOST_PROPERTY(IPCB_ComponentClearanceConstraint, bool, ShowDistances, data.show_distances)
  KETRIL_HOST_PROPERTY(IPCB_ComponentClearanceConstraint, bool, DoNotCheckWithout3DBody,
                       data.skip_without_body)
  KETRIL_HOST_PROPERTY(IPCB_ComponentClearanceConstraint, bool, CheckComponentBoundary, data.check_boundary)
};

class RoomRule final : public RuleObject<RoomRule, IPCB_ConfinementConstraint2, IPCB_RegionShape3> {
 public:
  // A copy has its region to itself.
  Ref<Primitive> Copy() const override {
    const Ref<Primitive> copy = RuleObject::Copy();
    As<Rule>(copy.Get())->data.region = Region();
    return copy;
  }

  KETRIL_HOST_READ(IPCB_ConfinementConstraint2, TConfinementStyle, Kind, data.confinement)
  KETRIL_HOST_READ(IPCB_ConfinementConstraint2, bool, IncludeInFormatCopy, true)
  KETRIL_HOST_PROPERTY(IPCB_ConfinementConstraint2, bool, LockComponents, data.lock_components)
  KETRIL_HOST_READ(IPCB_ConfinementConstraint2, TV6_Layer, RegionLayer, data.region_layer)
  KETRIL_HOST_METHOD(IPCB_RegionShape, GetState_Segments, (std::int32_t index, TPolySegment& segment),
                     SegmentOf(Region(), index, segment))
  KETRIL_HOST_METHOD(IPCB_RegionShape, SetState_Segments, (std::int32_t index, const TPolySegment& segment),
                     Edit([&] { return PutSegment(EditRegion(), index, segment); }))
  KETRIL_HOST_PAIR(IPCB_RegionShape3, std::int32_t, PointCount,
                   static_cast<std::int32_t>(Region().points.size()), Resize(value))
  KETRIL_HOST_METHOD(IPCB_RegionShape3, IncrementPointCount, (), Resize(Points() + 1))
  KETRIL_HOST_METHOD(IPCB_RegionShape3, DecrementPointCount, (), Resize(Points() - 1))
  KETRIL_HOST_METHOD(IPCB_RegionShape, RemoveRedundantVertices, (), Status::Ok)
  KETRIL_HOST_METHOD(IPCB_RegionShape, SynchronizeGPCPolyFromShape, (bool), Status::Ok)
  KETRIL_HOST_METHOD(IPCB_RegionShape, SynchronizeShapeFromGPCPoly, (), Status::Ok)

 private:
  std::int32_t Points() const { return static_cast<std::int32_t>(Region().points.size()); }
  template <class Action>
  Status Edit(Action action) {
    Status status = Status::Ok;
    const auto edit = [&] { status = action(); };
    Write([&] { Zone() ? Zone()->Write(edit) : edit(); });
    return status;
  }
  Status Resize(std::int32_t count) {
    if (count < 0) return Status::InvalidArgument;
    return Edit([&] {
      EditRegion().points.resize(static_cast<std::size_t>(count));
      return Status::Ok;
    });
  }
};

}  // namespace

struct Rule::Scope {
  std::u16string text;
  std::unique_ptr<Selection> selection;  // null when the text is none
};

Rule::Rule(TObjectId kind) : Primitive(kind) {
  state.layer = eV6_MultiLayer;
}

Rule::~Rule() = default;

void Rule::DrawBy(Polygon& zone) {
  zone_ = Ref<Polygon>(&zone);
}

const Ring& Rule::Region() const {
  return zone_ && !zone_->data.rings.empty() ? zone_->data.rings.front() : data.region;
}

Ring& Rule::EditRegion() {
  return const_cast<Ring&>(Region());
}

TCoordRect Rule::Bounds() const {
  Extent extent;
  for (const TCoordPoint point : Region().points) extent.Add(point);
  return extent.Rect();
}

void Rule::Transform(const PlaneMap& map) {
  map.Apply(data.region.points);
  if (zone_) zone_->WriteWithMembers([&] { zone_->Transform(map); });
}

void Rule::BeginEdit() {
  Primitive::BeginEdit();
  if (zone_) zone_->BeginEdit();
}

void Rule::EndEdit() {
  Primitive::EndEdit();
  if (zone_) zone_->EndEdit();
}

void Rule::CancelEdit() {
  Primitive::CancelEdit();
  if (zone_) zone_->CancelEdit();
}

bool Rule::IsMoveable() const {
  return Primitive::IsMoveable() && !(zone_ && zone_->Has(kFlag_Locked));
}

bool Rule::Has(std::unique_ptr<Scope>& scope, const std::u16string& text, const Primitive* object) const {
  if (!object || !board) return false;
  if (text.empty()) return true;
  if (!scope || scope->text != text) {
    scope = std::make_unique<Scope>(Scope{text, nullptr});
    try {
      scope->selection = std::make_unique<Selection>(Platform::ToUtf8(text));
    } catch (const SelectionError&) {
      // A scope that nobody can read holds nothing.
    }
  }
  return scope->selection && scope->selection->Matches(*object, *board);
}

bool Rule::Governs(const Primitive& a, const Primitive& b) const {
  return data.enabled && ((Scope1Has(&a) && Scope2Has(&b)) || (Scope1Has(&b) && Scope2Has(&a)));
}

TCoord Rule::GapOf(TObjectClearanceId a, TObjectClearanceId b) const {
  const auto found = data.gaps.find(std::minmax(a, b));
  return found == data.gaps.end() ? data.gap : found->second;
}

TCoord Rule::Extreme(const Primitive* object, bool greatest) const {
  TCoord gap = data.gap;
  for (const auto& [ids, own] : data.gaps) {
    if (object && ClearanceIdOf(*object) != ids.first && ClearanceIdOf(*object) != ids.second) continue;
    gap = greatest ? std::max(gap, own) : std::min(gap, own);
  }
  return gap;
}

std::u16string Rule::Summary() const {
  return data.name + (data.scope1.empty() ? u" (all)" : u" (" + data.scope1 + u")") +
         (data.scope2.empty() ? u", (all)" : u", (" + data.scope2 + u")");
}

Status Rule::CheckPair(IPCB_Primitive* a, IPCB_Primitive* b, Ref<IPCB_ViolationReport>& violations) const {
  Primitive *first = FromInterface(a), *second = FromInterface(b);
  if (!first || !second) return Status::InvalidArgument;
  violations = nullptr;
  if (!board || !Governs(*first, *second)) return Status::Ok;
  std::optional<Violation> found;
  if (data.rule_kind == eRule_Clearance) {
    const TCoord asked = GapOf(ClearanceIdOf(*first), ClearanceIdOf(*second));
    found = ClearanceChecker(*board).CheckPair(*first, *second, asked);
  } else if (data.rule_kind == eRule_ComponentClearance) {
    Component *component1 = As<Component>(first), *component2 = As<Component>(second);
    if (component1 && component2) found = CheckComponents(*this, *component1, *component2);
  }
  if (found) {
    const Ref<ViolationReport> report = MakeHost<ViolationReport>(TRuleKindSet{data.rule_kind});
    report->Add(std::move(*found));
    violations = report;
  }
  return Status::Ok;
}

TObjectClearanceId ClearanceIdOf(const Primitive& object) {
  switch (object.kind) {
    case eArcObject:
      return eObjectClearanceID_Arc;
    case eTrackObject:
      return eObjectClearanceID_Track;
    case ePadObject:
      return object.state.layer == TV7_Layer(eV6_MultiLayer) ? eObjectClearanceID_THPad
                                                             : eObjectClearanceID_SMDPad;
    case eViaObject:
      return eObjectClearanceID_Via;
    case ePolyObject:
      return eObjectClearanceID_Poly;
    case eRegionObject:
      return object.OwnerAs<Polygon>() ? eObjectClearanceID_Poly : eObjectClearanceID_Region;
    case eTextObject:
      return eObjectClearanceID_Text;
    default:
      return eObjectClearanceID_Fill;
  }
}

Ref<Rule> MakeRule(TRuleKind kind) {
  const auto make = [&]<class T>(std::type_identity<T>) {
    const Ref<T> rule = MakeHost<T>();
    rule->data.rule_kind = kind;
    return Ref<Rule>(rule.Get());
  };
  switch (kind) {
    case eRule_Clearance:
      return make(std::type_identity<ClearanceRule>{});
    case eRule_ComponentClearance:
      return make(std::type_identity<ComponentRule>{});
    case eRule_ConfinementConstraint:
      return make(std::type_identity<RoomRule>{});
    case eRule_FanoutControl:
      return make(std::type_identity<FanoutRule>{});
    case eRule_RoutingViaStyle:
      return make(std::type_identity<ViaStyleRule>{});
    default:
      return make(std::type_identity<PlainRule>{});
  }
}

}  // namespace Ketril::Editor
