// How near objects of different nets may come.
#pragma once

#include "DLLs/Tools/Frame/Rule_Abstract.h"

namespace Ketril::Tools {

// Gaps are in units. In the single mode one gap holds for all, in the other one each pair of kinds has its
// own.
class TClearanceConstraint : public TWrapper<TClearanceConstraint, TRule> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_ClearanceConstraint2> IClearanceConstraint() const {
    return CheckedCast<IPCB_ClearanceConstraint2>(FPrimitive);
  }

  // Of two objects, whose kinds the host works out, and of two kinds; neither depends on the order.
  virtual TCoord GetClearance(const TPrimitive* APrimitive1, const TPrimitive* APrimitive2) const;
  KETRIL_FORWARD_VIRTUAL(TCoord, MaxGap, IClearanceConstraint, MaxGap)
  KETRIL_FORWARD_VIRTUAL(TCoord, MinGap, IClearanceConstraint, MinGap)
  virtual TCoord MaxGap(const TPrimitive* APrim) const;  // against any kind
  virtual TCoord MinGap(const TPrimitive* APrim) const;
  void SetClearance(const TPrimitive* APrimitive1, const TPrimitive* APrimitive2, TCoord AClearance);
  TCoord GetClearance(TObjectClearanceId AClearanceId1, TObjectClearanceId AClearanceId2) const;
  void SetClearance(TObjectClearanceId AClearanceId1, TObjectClearanceId AClearanceId2, TCoord AClearance);

  KETRIL_FORWARD_READ(TClearanceConstraintMode, Mode, IClearanceConstraint, Mode)
  KETRIL_FORWARD(TCoord, Gap, IClearanceConstraint, Gap)
};

}  // namespace Ketril::Tools
