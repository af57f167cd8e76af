#include "DLLs/Tools/Geometry/ContourMaker.h"

#include "DLLs/Tools/Frame/PCBServer.h"

namespace Ketril::Tools {

TContourMaker::TContourMaker()
    : FContourMaker(On(PCBServer()).Read(&IPCB_ServerInterface::CreateContourMaker)) {}

std::int32_t TContourMaker::ArcResolution() const {
  return On(FContourMaker).Read(&IPCB_ContourMaker::GetState_ArcResolution);
}

void TContourMaker::SetArcResolution(std::int32_t Value) {
  On(FContourMaker).Call(&IPCB_ContourMaker::SetState_ArcResolution, Value);
}

Ref<IPCB_GeometricPolygon> TContourMaker::MakeContour(const TPrimitive* APrim, TCoord AExpansion,
                                                      TV7_Layer ALayer) const {
  return On(FContourMaker)
      .Read(&IPCB_ContourMaker::MakeContour, APrim->IPrimitive().Get(), AExpansion, ALayer);
}

}  // namespace Ketril::Tools
