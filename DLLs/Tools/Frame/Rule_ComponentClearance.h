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

  KETRIL_FORWARD(TCoord, HorizontalGap, IComponentClearanceConstraint, HorizontalGap)
  KETRIL_FORWARD(TCoord, VerticalGap, IComponentClearanceConstraint, VerticalGap)
  KETRIL_FORWARD(bool, ShowDistances, IComponentClearanceConstraint, ShowDistances)
  KETRIL_FORWARD(bool, DoNotCheckWithout3DBody, IComponentClearanceConstraint, DoNotCheckWithout3DBody)
  KETRIL_FORWARD(bool, CheckComponentBoundary, IComponentClearanceConstraint, CheckComponentBoundary)
};

}  // namespace Ketril::Tools
