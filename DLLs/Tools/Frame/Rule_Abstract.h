// The wrapper of a design rule, and the base of the rules that have a class of their own.
//
// The host holds the rules and evaluates them; the tools read them, by kind (TBoard::SortedRules), by name or
// through an iterator. Raises as TPrimitive does.
#pragma once

#include <memory>

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Geometry/ListContainer.h"
#include "Interfaces/Rules.h"

namespace Ketril::Tools {

// The host holds scopes as expressions; to the tools they are opaque text. Objects given may be null.
class TRule : public TWrapper<TRule, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Rule2> IRule() const { return CheckedCast<IPCB_Rule2>(FPrimitive); }

  virtual bool Scope1Includes(const TPrimitive* P) const;
  virtual bool Scope2Includes(const TPrimitive* P) const;
  virtual bool SubscopeMatches(const TPrimitive* P1,
                               const TPrimitive* P2) const;  // the host's test of a pair
  KETRIL_FORWARD_VIRTUAL(std::u16string, GetState_DataSummaryString, IRule, DataSummaryString)
  virtual std::u16string GetState_AttributesDescriptorString(const TPrimitive* P1,
                                                             const TPrimitive* P2) const;
  // Equal in name, comment, kind, identifier, origin, scopes and whether it is checked; false for what is no
  // rule.
  virtual bool SameAs(const TPrimitive* P) const;
  // The host's check of a pair: the identity key of each violation as an entry that is never followed; null
  // when there is none.
  virtual std::unique_ptr<TContainer> ActualCheck(const TPrimitive* P1, const TPrimitive* P2) const;

  KETRIL_FORWARD_OVERRIDE(std::u16string, GetProperty_UniqueID, IRule, UniqueId)
  void SetProperty_UniqueID(const std::u16string& value) override {
    On(IRule()).Call(&IPCB_Rule2::SetState_UniqueId, value);
  }
  void CopyTo(TContainedObject* target, TCopyMode mode) const override;
  using TPrimitive::GetState_BoundingRectangle;
  TCoordRect GetState_BoundingRectangle(TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) const override;

  // The class of the result is that of the rule.
  TRule* Replicate(TCopyMode mode) const;
  KETRIL_FORWARD_READ(TUnit, GetDisplayUnit, IRule, DisplayUnit)
  KETRIL_FORWARD_READ(std::uint16_t, Priority, IRule, Priority)  // its place among the rules of its kind
  // Whether rules of this library's hosts can be scoped by the kind: by any of them.
  bool ScopeKindIsValid(TScopeKind AScopeKind) const { return AScopeKind <= eScopeKindAdvanced; }

  KETRIL_FORWARD_READ(TRuleKind, RuleKind, IRule, RuleKind)
  KETRIL_FORWARD(std::u16string, Name, IRule, Name)
  KETRIL_FORWARD(std::u16string, Comment, IRule, Comment)
  KETRIL_FORWARD(bool, DRCEnabled, IRule, DRCEnabled)
  KETRIL_FORWARD(bool, DefinedByLogicalDocument, IRule, DefinedByLogicalDocument)
  KETRIL_FORWARD(TNetScope, NetScope, IRule, NetScope)
  KETRIL_FORWARD(TRuleLayerKind, LayerKind, IRule, LayerKind)
  KETRIL_FORWARD(std::u16string, Scope1Expression, IRule, Scope1Expression)
  KETRIL_FORWARD(std::u16string, Scope2Expression, IRule, Scope2Expression)

 protected:
  // A null object goes to the host as an empty reference.
  static Ref<IPCB_Primitive> HostOf(const TPrimitive* P);
};

}  // namespace Ketril::Tools
