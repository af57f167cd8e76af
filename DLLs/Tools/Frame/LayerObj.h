// Calls a procedure for each layer of a board's stack.
#pragma once

#include <functional>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "Interfaces/Layers.h"

namespace Ketril::Tools {

class TBoard;
class TLayerObject;

// Gets a new wrapper, which belongs to the object scope, or null where the host hands over no layer.
using TLayerObjectProc = std::function<void(TLayerObject*)>;

// What the board calls back. An exception of the procedure passes through the host to whoever started.
class TDelegatedPCBLayerProcessCallback final : public CountedObject<IPCB_LayerProcessInterface> {
 public:
  explicit TDelegatedPCBLayerProcessCallback(TLayerObjectProc proc) : FLayerObjectProc(std::move(proc)) {}
  void ProcessLayer(IPCB_LayerObject* layer) override;

 private:
  TLayerObjectProc FLayerObjectProc;
};

// From top to bottom. Nothing happens without a board, or when it wraps no host board. Raises EHostError when
// the host fails, and what `proc` raises.
void ProcessLayers(TBoard* board, TLayerObjectProc proc);

}  // namespace Ketril::Tools
