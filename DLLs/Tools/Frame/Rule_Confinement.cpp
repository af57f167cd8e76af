#include "DLLs/Tools/Frame/Rule_Confinement.h"

namespace Ketril::Tools {

TConfinementRegion::TConfinementRegion(TConfinementConstraint* AOwner) : FOwner(AOwner), FPolyshape(AOwner) {}

TRule* TConfinementRegion::Owner() const {
  return FOwner;
}

TV7_Layer TConfinementRegion::Layer() const {
  return On(FOwner->IConfinementConstraint()).Read(&IPCB_ConfinementConstraint2::GetState_RegionLayer);
}

}  // namespace Ketril::Tools
