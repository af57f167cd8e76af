// Walks a list of layers.
#pragma once

#include <vector>

#include "Editor/HostObject.h"
#include "Editor/Model/HostProperty.h"
#include "Interfaces/Layers.h"

namespace Ketril::Editor {

class LayerIterator final : public HostObject<IPCB_LayerIterator> {
 public:
  explicit LayerIterator(std::vector<TV7_Layer> layers);  // in any order; walked in ascending order
  KETRIL_HOST_METHOD(IPCB_LayerIterator, Next, (bool& found), Advance(found))
  // Fails before the first `Next` and after the last.
  KETRIL_HOST_METHOD(IPCB_LayerIterator, Layer, (TV7_Layer & layer), Current(layer))

 private:
  void Advance(bool& found);
  Status Current(TV7_Layer& layer) const;
  std::vector<TV7_Layer> layers_;
  std::size_t next_ = 0;
};

}  // namespace Ketril::Editor
