// The wrapper of a layer of the board's stack.
#pragma once

#include <string>

#include "DLLs/Tools/Frame/HostLink.h"
#include "Interfaces/Layers.h"

namespace Ketril::Tools {

// Belongs to the object scope that was open when it was made, else to its maker; deleting it early is
// allowed.
class TLayerObject {
 public:
  explicit TLayerObject(Ref<IPCB_LayerObject> layer_object);
  ~TLayerObject();
  TLayerObject(const TLayerObject&) = delete;
  TLayerObject& operator=(const TLayerObject&) = delete;

  Ref<IPCB_LayerObject> LayerObjectIntf() const { return FLayerObjectIntf; }
  KETRIL_FORWARD(std::u16string, Name, LayerObjectIntf, Name)  // the name that the user gave the layer
  KETRIL_FORWARD_READ(TV7_Layer, LayerId, LayerObjectIntf, LayerId)

 private:
  Ref<IPCB_LayerObject> FLayerObjectIntf;
};

}  // namespace Ketril::Tools
