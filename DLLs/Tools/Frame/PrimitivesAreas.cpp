#include "DLLs/Tools/Frame/PrimitivesAreas.h"

namespace Ketril::Tools {

void TPolyRegion::RemoveRedundantVertices() {
  if (const auto shape = Probe<IPCB_RegionShape>(FPrimitive))
    On(shape).Call(&IPCB_RegionShape::RemoveRedundantVertices);
}

void TPolyRegion::SynchronizeGPCPolyFromShape(bool conserve_existing_holes) {
  if (const auto shape = Probe<IPCB_RegionShape>(FPrimitive))
    On(shape).Call(&IPCB_RegionShape::SynchronizeGPCPolyFromShape, conserve_existing_holes);
}

void TPolyRegion::SynchronizeShapeFromGPCPoly() {
  if (const auto shape = Probe<IPCB_RegionShape>(FPrimitive))
    On(shape).Call(&IPCB_RegionShape::SynchronizeShapeFromGPCPoly);
}

}  // namespace Ketril::Tools
