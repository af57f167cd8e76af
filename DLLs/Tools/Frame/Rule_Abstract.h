// The wrapper of a design rule, and the base of the rules that have a class of their own.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBase.h"

namespace Ketril::Tools {

// The host holds scopes as expressions; to the tools they are opaque text.
class TRule : public TWrapper<TRule, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Rule2> IRule() const { return CheckedCast<IPCB_Rule2>(FPrimitive); }

  // The class of the result is that of the rule.
  TRule* Replicate(TCopyMode mode) const;

  KETRIL_FORWARD_READ(TRuleKind, RuleKind, IRule, RuleKind)
  KETRIL_FORWARD(std::u16string, Name, IRule, Name)
  KETRIL_FORWARD(std::u16string, Comment, IRule, Comment)
  KETRIL_FORWARD(bool, DRCEnabled, IRule, DRCEnabled)
  KETRIL_FORWARD(std::u16string, Scope1Expression, IRule, Scope1Expression)
  KETRIL_FORWARD(std::u16string, Scope2Expression, IRule, Scope2Expression)
};

}  // namespace Ketril::Tools
