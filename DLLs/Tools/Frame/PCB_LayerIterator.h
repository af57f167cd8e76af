// Walks of layers: the library's own iterator, and the loop over anybody's.
#pragma once

#include <vector>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "DLLs/Tools/Frame/FunctionRef.h"
#include "Interfaces/Layers.h"

namespace Ketril::Tools {

// Walks a list that it owns, so what the list was taken from may change meanwhile.
class TLayerListIterator final : public CountedObject<IPCB_LayerIterator> {
 public:
  explicit TLayerListIterator(std::vector<TV7_Layer> layers) : layers_(std::move(layers)) {}

  Status Next(bool& found) noexcept override;
  // InvalidArgument before the first `Next` and after the one that found nothing.
  Status Layer(TV7_Layer& layer) noexcept override;

 private:
  std::vector<TV7_Layer> layers_;
  std::size_t passed_ = 0;  // how many calls of Next found a layer, and one more after the end
};

// Calls `proc` with each layer that is left in `layers`, which may be empty. Raises EHostError when the
// iterator fails.
void ForEachLayer(const Ref<IPCB_LayerIterator>& layers, FunctionRef<void(TV7_Layer)> proc);

}  // namespace Ketril::Tools
