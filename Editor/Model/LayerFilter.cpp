#include "Editor/Model/LayerFilter.h"

#include <stdexcept>

namespace Ketril::Editor {

void LayerFilter::Restart() {
  answers_.fill(Known::Nothing);
  further_answers_.clear();
  passes_all_ = true;
  if (layers_ && Failed(layers_->GetState_IsEmpty(passes_all_))) throw std::runtime_error("layer set failed");
}

bool LayerFilter::Answer(TV7_Layer layer) {
  if (layer.ID < answers_.size()) {
    Known& answer = answers_[layer.ID];
    if (answer == Known::Nothing) answer = Ask(layer) ? Known::Yes : Known::No;
    return answer == Known::Yes;
  }
  auto it = further_answers_.find(layer);
  if (it == further_answers_.end()) it = further_answers_.emplace(layer, Ask(layer)).first;
  return it->second;
}

bool LayerFilter::Ask(TV7_Layer layer) const {
  bool contained = false;
  if (Failed(layers_->ContainsLayer(layer, contained))) throw std::runtime_error("layer set failed");
  return contained;
}

}  // namespace Ketril::Editor
