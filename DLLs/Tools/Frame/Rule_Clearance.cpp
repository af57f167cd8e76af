#include "DLLs/Tools/Frame/Rule_Clearance.h"

namespace Ketril::Tools {

using IHost = IPCB_ClearanceConstraint2;

TCoord TClearanceConstraint::GetClearance(const TPrimitive* APrimitive1,
                                          const TPrimitive* APrimitive2) const {
  return On(IClearanceConstraint())
      .Read(&IHost::GetState_ObjectClearance, HostOf(APrimitive1).Get(), HostOf(APrimitive2).Get());
}

void TClearanceConstraint::SetClearance(const TPrimitive* APrimitive1, const TPrimitive* APrimitive2,
                                        TCoord AClearance) {
  On(IClearanceConstraint())
      .Call(&IHost::SetState_ObjectClearance, HostOf(APrimitive1).Get(), HostOf(APrimitive2).Get(),
            AClearance);
}

TCoord TClearanceConstraint::MaxGap(const TPrimitive* APrim) const {
  return On(IClearanceConstraint()).Read(&IHost::GetState_ObjectMaxGap, HostOf(APrim).Get());
}

TCoord TClearanceConstraint::MinGap(const TPrimitive* APrim) const {
  return On(IClearanceConstraint()).Read(&IHost::GetState_ObjectMinGap, HostOf(APrim).Get());
}

TCoord TClearanceConstraint::GetClearance(TObjectClearanceId AClearanceId1,
                                          TObjectClearanceId AClearanceId2) const {
  return On(IClearanceConstraint()).Read(&IHost::GetState_Clearance, AClearanceId1, AClearanceId2);
}

void TClearanceConstraint::SetClearance(TObjectClearanceId AClearanceId1, TObjectClearanceId AClearanceId2,
                                        TCoord AClearance) {
  On(IClearanceConstraint()).Call(&IHost::SetState_Clearance, AClearanceId1, AClearanceId2, AClearance);
}

}  // namespace Ketril::Tools
