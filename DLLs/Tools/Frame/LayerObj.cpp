#include "DLLs/Tools/Frame/LayerObj.h"

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesLayerObject.h"

namespace Ketril::Tools {

void TDelegatedPCBLayerProcessCallback::ProcessLayer(IPCB_LayerObject* layer) {
  FLayerObjectProc(layer ? new TLayerObject(layer) : nullptr);
}

void ProcessLayers(TBoard* board, TLayerObjectProc proc) {
  if (!board || !board->IBoard()) return;
  const auto callback = MakeCounted<TDelegatedPCBLayerProcessCallback>(std::move(proc));
  On(board->IBoard()).Call(&IPCB_Board3::ProcessLayers, callback.Get());
}

}  // namespace Ketril::Tools
