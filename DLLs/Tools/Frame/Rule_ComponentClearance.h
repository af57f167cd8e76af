// How near components may come.
#pragma once

#include "DLLs/Tools/Frame/Rule_Abstract.h"

namespace Ketril::Tools {

class TComponentClearanceConstraint : public TWrapper<TComponentClearanceConstraint, TRule> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_ComponentClearanceConstraint> IComponentClearanceConstraint() const {
    return CheckedCast<IPCB_ComponentClearanceConstraint>(FPrimitive);
  }
};

}  // namespace Ketril::Tools
