#include "Editor/Picture/LayerColours.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "Editor/Model/LayerFacts.h"

namespace Ketril::Editor {

namespace {

struct LayerLook {
  std::string_view name;  // the file's
  const char* colour;
  int height;  // in the picture; copper is 100 (bottom) to 199 (top)
  bool shown;
};
constexpr std::array kLooks{
    LayerLook{"B.Fab", "#585d84", 10, false},      LayerLook{"B.CrtYd", "#26e9ff", 11, false},
    LayerLook{"B.Adhes", "#0000c2", 12, false},    LayerLook{"B.Paste", "#00c2c2", 13, false},
    LayerLook{"B.Mask", "#02ffee", 14, false},     LayerLook{"B.SilkS", "#e8b2a7", 20, true},
    LayerLook{"F.SilkS", "#f2eda1", 200, true},    LayerLook{"F.Mask", "#d864ff", 205, false},
    LayerLook{"F.Paste", "#b4a09a", 206, false},   LayerLook{"F.Adhes", "#840084", 207, false},
    LayerLook{"F.CrtYd", "#ff26e2", 210, false},   LayerLook{"F.Fab", "#afafaf", 211, false},
    LayerLook{"Dwgs.User", "#c2c2c2", 220, false}, LayerLook{"Cmts.User", "#5994dc", 221, false},
    LayerLook{"Eco1.User", "#b4dbd2", 222, false}, LayerLook{"Eco2.User", "#d8c852", 223, false},
    LayerLook{"Margin", "#ff26e2", 230, false},    LayerLook{"Edge.Cuts", "#d0d2cd", 240, true},
};
constexpr std::array kInnerColours{"#7fc87f", "#ce7d2c", "#4fcbcb", "#db628b", "#a7a5c6", "#28ccd9"};

const LayerLook* FindLook(const Board& board, TV7_Layer layer) {
  const BoardLayer* entry = board.FindLayer(layer);
  if (!entry) return nullptr;
  const auto look = std::find_if(kLooks.begin(), kLooks.end(),
                                 [&](const LayerLook& l) { return l.name == entry->file_name; });
  return look == kLooks.end() ? nullptr : &*look;
}

int Height(const Board& board, TV7_Layer layer) {
  if (layer == eV6_TopLayer) return 199;
  if (layer == eV6_BottomLayer) return 100;
  if (IsCopper(layer)) return 198 - static_cast<int>(std::min<std::uint32_t>(layer.N(), 90));
  const LayerLook* look = FindLook(board, layer);
  return look ? look->height : 225;
}

}  // namespace

std::string LayerColour(const Board& board, TV7_Layer layer) {
  if (layer == eV6_TopLayer) return "#c83434";
  if (layer == eV6_BottomLayer) return "#4d7fc4";
  if (layer == eV6_MultiLayer) return "#c9a227";
  if (IsCopper(layer)) return kInnerColours[layer.N() % kInnerColours.size()];
  const LayerLook* look = FindLook(board, layer);
  return look ? look->colour : "#9aa0a6";
}

std::vector<TV7_Layer> DrawingOrder(const Board& board) {
  std::vector<TV7_Layer> order;
  for (const BoardLayer& layer : board.layers) order.push_back(layer.id);
  std::stable_sort(order.begin(), order.end(),
                   [&](TV7_Layer a, TV7_Layer b) { return Height(board, a) < Height(board, b); });
  return order;
}

bool IsShownByDefault(const Board& board, TV7_Layer layer) {
  if (IsCopper(layer) || layer == eV6_MultiLayer) return true;
  const LayerLook* look = FindLook(board, layer);
  return look && look->shown;
}

}  // namespace Ketril::Editor
