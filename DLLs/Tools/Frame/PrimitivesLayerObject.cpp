#include "DLLs/Tools/Frame/PrimitivesLayerObject.h"

#include "DLLs/Tools/Frame/ObjectScope.h"

namespace Ketril::Tools {

TLayerObject::TLayerObject(Ref<IPCB_LayerObject> layer_object) : FLayerObjectIntf(std::move(layer_object)) {
  RecordIn(LayerObjectRegistry, this);
}

TLayerObject::~TLayerObject() {
  ForgetIn(LayerObjectRegistry, this);
}

}  // namespace Ketril::Tools
