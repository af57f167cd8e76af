// How near objects of different nets may come.
#pragma once

#include "DLLs/Tools/Frame/Rule_Abstract.h"

namespace Ketril::Tools {

class TClearanceConstraint : public TWrapper<TClearanceConstraint, TRule> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_ClearanceConstraint> IClearanceConstraint() const {
    return CheckedCast<IPCB_ClearanceConstraint>(FPrimitive);
  }
};

}  // namespace Ketril::Tools
