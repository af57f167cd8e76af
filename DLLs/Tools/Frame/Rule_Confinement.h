// A room: components are confined to it, or kept out of it.
#pragma once

#include "DLLs/Tools/Frame/Rule_Abstract.h"

namespace Ketril::Tools {

class TConfinementConstraint : public TWrapper<TConfinementConstraint, TRule> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_ConfinementConstraint> IConfinementConstraint() const {
    return CheckedCast<IPCB_ConfinementConstraint>(FPrimitive);
  }
};

}  // namespace Ketril::Tools
