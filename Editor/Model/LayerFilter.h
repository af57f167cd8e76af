// Which layers a walk passes: a tool's set, asked once for each layer.
#pragma once

#include <array>
#include <unordered_map>

#include "Interfaces/Layers.h"

namespace Ketril::Editor {

class LayerFilter {
 public:
  LayerFilter() = default;  // passes everything
  explicit LayerFilter(IPCB_LayerSet* layers) : layers_(layers) {}

  // Forgets the answers, so that changes of the set count. Both operations raise std::runtime_error when the
  // set fails.
  void Restart();
  bool Passes(TV7_Layer layer) { return passes_all_ || Answer(layer); }
  bool PassesAll() const { return passes_all_; }

 private:
  bool Answer(TV7_Layer layer);
  bool Ask(TV7_Layer layer) const;

  enum class Known : std::uint8_t { Nothing, No, Yes };
  Ref<IPCB_LayerSet> layers_;
  bool passes_all_ = true;
  std::array<Known, kV6LayerCount> answers_{};
  std::unordered_map<TV7_Layer, bool> further_answers_;
};

}  // namespace Ketril::Editor
