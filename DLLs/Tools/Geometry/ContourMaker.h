// `TContourMaker`: the editor's outlines of copper.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "Interfaces/Copper.h"

namespace Ketril::Tools {

// Holds a maker of the editor's PCB server. Raises EHostError, and EEmptyReference without a server.
class TContourMaker {
 public:
  TContourMaker();

  // How far a chord may run inside the arc that it stands for, in units.
  std::int32_t ArcResolution() const;
  void SetArcResolution(std::int32_t Value);
  // The outline of the primitive on the layer, grown by the expansion, or shrunk by a negative one; empty
  // when there is none.
  Ref<IPCB_GeometricPolygon> MakeContour(const TPrimitive* APrim, TCoord AExpansion, TV7_Layer ALayer) const;

 private:
  Ref<IPCB_ContourMaker> FContourMaker;
};

}  // namespace Ketril::Tools
