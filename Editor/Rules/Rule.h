// Design rules as objects of the board. They stand on eV6_MultiLayer, where tools look for them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "Editor/Model/GeometricPolygon.h"
#include "Editor/Model/PrimitiveObject.h"
#include "Interfaces/Rules.h"

namespace Ketril::Editor {

class Polygon;

// Gaps are in units.
struct RuleData {
  TRuleKind rule_kind = eRule_Clearance;
  std::u16string name, comment;
  // Which objects a rule is about: expressions of the selection (Editor/Selection), empty for all.
  std::u16string scope1, scope2;
  bool enabled = true;
  bool from_schematic = false;
  std::u16string net_class;  // that it stands for (Editor/Rules/ClassRules.h), empty for a rule of its own
  TNetScope net_scope = eNetScope_DifferentNetsOnly;
  TRuleLayerKind layer_kind = eRuleLayerKind_SameLayer;
  std::int32_t priority = 1;  // 1 goes before all others of its kind
  // Clearance: one gap, or those of pairs of kinds, the lower id first, over it.
  TCoord gap = 0;
  std::map<std::pair<TObjectClearanceId, TObjectClearanceId>, TCoord> gaps;
  // Component clearance.
  TCoord horizontal_gap = 0, vertical_gap = 0;
  bool show_distances = false, skip_without_body = false, check_boundary = false;
  // Rooms. The region of one that a zone draws is the zone's.
  Ring region;
  TV6_Layer region_layer = eV6_TopLayer;
  TConfinementStyle confinement = eConfineIn;
  bool lock_components = false;
};

class Rule : public Primitive {
 public:
  static constexpr TObjectId kKind = eRuleObject;
  RuleData data;

  explicit Rule(TObjectId kind);
  // A room may be drawn by a zone of the board, whose first ring is then its region: moving the one moves the
  // other, and it leaves the board with the zone, as it is in the file. Null for a room that stands by
  // itself.
  Polygon* Zone() const { return zone_.Get(); }
  void DrawBy(Polygon& zone);  // data only
  const Ring& Region() const;  // of a room, else empty

  TCoordRect Bounds() const override;  // of a room, else nothing
  TCoordPoint Reference() const override { return Bounds().Location1(); }
  void Transform(const PlaneMap& map) override;
  std::u16string Identifier() const override { return data.name; }

  // False for a scope that is no expression, and for no object.
  bool Scope1Has(const Primitive* object) const { return Has(scope1_, data.scope1, object); }
  bool Scope2Has(const Primitive* object) const { return Has(scope2_, data.scope2, object); }
  using Primitive::Has;
  // Of the zone too.
  void BeginEdit();
  void EndEdit();
  void CancelEdit();
  bool Governs(const Primitive& a, const Primitive& b) const;  // enabled, with a scope for each of the two
  TCoord GapOf(TObjectClearanceId a, TObjectClearanceId b) const;

 protected:
  ~Rule();
  bool IsMoveable() const;
  Ring& EditRegion();
  std::u16string Summary() const;
  Status CheckPair(IPCB_Primitive* a, IPCB_Primitive* b, Ref<IPCB_ViolationReport>& violations) const;
  TCoord Extreme(const Primitive* object, bool greatest) const;  // of the gaps, against any kind

 private:
  struct Scope;
  bool Has(std::unique_ptr<Scope>& scope, const std::u16string& text, const Primitive* object) const;
  mutable std::unique_ptr<Scope> scope1_, scope2_;  // as they were last read
  Ref<Polygon> zone_;
};

// What clearances tell apart; a fill for what has no kind of its own.
TObjectClearanceId ClearanceIdOf(const Primitive& object);

// A new rule of the kind, with the interfaces that it has.
Ref<Rule> MakeRule(TRuleKind kind);

}  // namespace Ketril::Editor
