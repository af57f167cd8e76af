#include "Editor/Model/LayerIterator.h"

#include <algorithm>
#include <utility>

namespace Ketril::Editor {

LayerIterator::LayerIterator(std::vector<TV7_Layer> layers) : layers_(std::move(layers)) {
  std::sort(layers_.begin(), layers_.end());
}

void LayerIterator::Advance(bool& found) {
  if (next_ <= layers_.size()) ++next_;
  found = next_ <= layers_.size();
}

Status LayerIterator::Current(TV7_Layer& layer) const {
  if (next_ == 0 || next_ > layers_.size()) return Status::InvalidArgument;
  layer = layers_[next_ - 1];
  return Status::Ok;
}

}  // namespace Ketril::Editor
