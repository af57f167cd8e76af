#include "DLLs/Tools/Frame/PCB_LayerIterator.h"

#include "DLLs/Tools/Frame/HostLink.h"

namespace Ketril::Tools {

Status TLayerListIterator::Next(bool& found) noexcept {
  if (passed_ <= layers_.size()) ++passed_;
  found = passed_ <= layers_.size();
  return Status::Ok;
}

Status TLayerListIterator::Layer(TV7_Layer& layer) noexcept {
  if (passed_ == 0 || passed_ > layers_.size()) return Status::InvalidArgument;
  layer = layers_[passed_ - 1];
  return Status::Ok;
}

void ForEachLayer(const Ref<IPCB_LayerIterator>& layers, FunctionRef<void(TV7_Layer)> proc) {
  if (!layers) return;
  while (On(layers).Read(&IPCB_LayerIterator::Next)) proc(On(layers).Read(&IPCB_LayerIterator::Layer));
}

}  // namespace Ketril::Tools
