#include "DLLs/Tools/Frame/Rule_Abstract.h"

#include "DLLs/Tools/Frame/PrimitivesFactory.h"

namespace Ketril::Tools {

Ref<IPCB_Primitive> TRule::HostOf(const TPrimitive* P) {
  return P ? P->IPrimitive() : nullptr;
}

bool TRule::Scope1Includes(const TPrimitive* P) const {
  return On(IRule()).Read(&IPCB_Rule2::Scope1Includes, HostOf(P).Get());
}

bool TRule::Scope2Includes(const TPrimitive* P) const {
  return On(IRule()).Read(&IPCB_Rule2::Scope2Includes, HostOf(P).Get());
}

bool TRule::SubscopeMatches(const TPrimitive* P1, const TPrimitive* P2) const {
  return On(IRule()).Read(&IPCB_Rule2::SubscopeMatches, HostOf(P1).Get(), HostOf(P2).Get());
}

std::u16string TRule::GetState_AttributesDescriptorString(const TPrimitive* P1, const TPrimitive* P2) const {
  return On(IRule()).Read(&IPCB_Rule2::GetState_AttributesDescriptorString, HostOf(P1).Get(),
                          HostOf(P2).Get());
}

bool TRule::SameAs(const TPrimitive* P) const {
  const auto* rule = dynamic_cast<const TRule*>(P);
  return rule && Name() == rule->Name() && Comment() == rule->Comment() && RuleKind() == rule->RuleKind() &&
         GetProperty_UniqueID() == rule->GetProperty_UniqueID() &&
         DefinedByLogicalDocument() == rule->DefinedByLogicalDocument() && NetScope() == rule->NetScope() &&
         LayerKind() == rule->LayerKind() && DRCEnabled() == rule->DRCEnabled() &&
         Scope1Expression() == rule->Scope1Expression() && Scope2Expression() == rule->Scope2Expression();
}

std::unique_ptr<TContainer> TRule::ActualCheck(const TPrimitive* P1, const TPrimitive* P2) const {
  const Ref<IPCB_ViolationReport> found =
      On(IRule()).Read(&IPCB_Rule2::ActualCheck, HostOf(P1).Get(), HostOf(P2).Get());
  const std::int32_t count = found ? On(found).Read(&IPCB_ViolationReport::GetState_Count) : 0;
  if (count == 0) return nullptr;
  auto violations = std::make_unique<TListContainer>();
  for (std::int32_t i = 0; i < count; ++i) {
    violations->Insert(reinterpret_cast<TItem>(On(found).Read(&IPCB_ViolationReport::GetState_Key, i)));
  }
  return violations;
}

void TRule::CopyTo(TContainedObject* target, TCopyMode mode) const {
  TPrimitive::CopyTo(target, mode);
  auto* rule = dynamic_cast<TRule*>(target);
  if (!rule) return;
  rule->SetName(Name());
  rule->SetComment(Comment());
  rule->SetDefinedByLogicalDocument(DefinedByLogicalDocument());
  rule->SetNetScope(NetScope());
  rule->SetLayerKind(LayerKind());
  rule->SetDRCEnabled(DRCEnabled());
  rule->SetScope1Expression(Scope1Expression());
  rule->SetScope2Expression(Scope2Expression());
}

TCoordRect TRule::GetState_BoundingRectangle(TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) const {
  return Spread(On(IRule()).Read(&IPCB_Rule2::GetState_BoundingRectangle), x1, y1, x2, y2);
}

TRule* TRule::Replicate(TCopyMode) const {
  return CheckedCast<TRule>(CreatePrimitiveWrapper(HostReplica()));
}

}  // namespace Ketril::Tools
