#include "Editor/Model/LayerFacts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "Editor/Model/Board.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

struct Sides {
  TV6_Layer top, bottom;
};
constexpr std::array kSides{Sides{eV6_TopLayer, eV6_BottomLayer}, Sides{eV6_TopOverlay, eV6_BottomOverlay},
                            Sides{eV6_TopPaste, eV6_BottomPaste}, Sides{eV6_TopSolder, eV6_BottomSolder}};

struct NamedRange {
  TV6_Layer first, last;
  std::string_view name;  // followed by the number within the range when there are several
};
constexpr std::array kNames{NamedRange{eV6_TopLayer, eV6_TopLayer, "Top Layer"},
                            NamedRange{eV6_MidLayer1, eV6_MidLayer30, "Mid Layer"},
                            NamedRange{eV6_BottomLayer, eV6_BottomLayer, "Bottom Layer"},
                            NamedRange{eV6_TopOverlay, eV6_TopOverlay, "Top Overlay"},
                            NamedRange{eV6_BottomOverlay, eV6_BottomOverlay, "Bottom Overlay"},
                            NamedRange{eV6_TopPaste, eV6_TopPaste, "Top Paste"},
                            NamedRange{eV6_BottomPaste, eV6_BottomPaste, "Bottom Paste"},
                            NamedRange{eV6_TopSolder, eV6_TopSolder, "Top Solder"},
                            NamedRange{eV6_BottomSolder, eV6_BottomSolder, "Bottom Solder"},
                            NamedRange{eV6_InternalPlane1, eV6_InternalPlane16, "Internal Plane"},
                            NamedRange{eV6_KeepOutLayer, eV6_KeepOutLayer, "Keep-Out Layer"},
                            NamedRange{eV6_Mechanical1, eV6_Mechanical16, "Mechanical"},
                            NamedRange{eV6_MultiLayer, eV6_MultiLayer, "Multi-Layer"}};

// "F.CrtYd" and "B.CrtYd" are two sides of one.
const BoardLayer* OtherSideByName(TV7_Layer layer, const Board& board) {
  const BoardLayer* entry = board.FindLayer(layer);
  if (!entry || entry->file_name.size() < 2 || entry->file_name[1] != '.') return nullptr;
  std::string name = entry->file_name;
  if (name[0] != 'F' && name[0] != 'B') return nullptr;
  name[0] = name[0] == 'F' ? 'B' : 'F';
  return board.FindLayer(std::string_view(name));
}

}  // namespace

bool IsBottomSide(TV7_Layer layer) {
  return std::any_of(kSides.begin(), kSides.end(), [&](const Sides& sides) { return layer == sides.bottom; });
}

std::u16string LayerName(TV7_Layer layer, const Board* board) {
  if (const BoardLayer* entry = board ? board->FindLayer(layer) : nullptr) {
    if (!entry->user_name.empty()) return entry->user_name;
  }
  const auto number = [](std::uint32_t n) { return Platform::ToUtf16(" " + std::to_string(n)); };
  for (const NamedRange& range : kNames) {
    if (layer.ID < range.first || layer.ID > range.last) continue;
    std::u16string name = Platform::ToUtf16(range.name);
    if (range.first != range.last) name += number(layer.ID - range.first + 1);
    return name;
  }
  return u"Layer" + number(layer.ID);
}

TV7_Layer MirroredLayer(TV7_Layer layer, const Board* board) {
  for (const Sides& sides : kSides) {
    if (layer == sides.top) return sides.bottom;
    if (layer == sides.bottom) return sides.top;
  }
  if (!board) return layer;
  if (IsCopper(layer)) {
    const std::vector<TV7_Layer> copper = board->CopperLayers();
    const auto place = std::find(copper.begin(), copper.end(), layer);
    return place == copper.end() ? layer : *(copper.end() - 1 - (place - copper.begin()));
  }
  const BoardLayer* other = OtherSideByName(layer, *board);
  return other ? other->id : layer;
}

void MirrorAll(std::vector<TV7_Layer>& layers, const Board* board) {
  for (TV7_Layer& layer : layers) layer = MirroredLayer(layer, board);
}

std::vector<TV7_Layer> SpannedLayers(const Board* board, TV7_Layer low, TV7_Layer high) {
  if (!board) {
    std::vector<TV7_Layer> layers;
    const auto [first, last] = std::minmax({ToV6(low), ToV6(high)});
    for (int n = std::max<int>(first, eV6_TopLayer); n <= std::min<int>(last, eV6_BottomLayer); ++n) {
      layers.push_back(static_cast<TV6_Layer>(n));
    }
    return layers;
  }
  std::vector<TV7_Layer> copper = board->CopperLayers();
  auto first = std::find(copper.begin(), copper.end(), low);
  auto last = std::find(copper.begin(), copper.end(), high);
  if (first == copper.end()) first = copper.begin();
  if (last == copper.end() && last != copper.begin()) --last;
  if (last < first) std::swap(first, last);
  if (last != copper.end()) ++last;
  return {first, last};
}

bool Contains(const std::vector<TV7_Layer>& layers, TV7_Layer layer) {
  return std::find(layers.begin(), layers.end(), layer) != layers.end();
}

void Include(std::vector<TV7_Layer>& layers, TV7_Layer layer, bool included) {
  if (!included) {
    std::erase(layers, layer);
  } else if (!Contains(layers, layer)) {
    layers.push_back(layer);
  }
}

}  // namespace Ketril::Editor
