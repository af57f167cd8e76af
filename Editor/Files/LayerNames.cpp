#include "Editor/Files/LayerNames.h"

#include <algorithm>
#include <charconv>

#include "Editor/Files/SExpression.h"

namespace Ketril::Editor {

namespace {

using namespace Literals;

constexpr TV7_Layer Mechanical(int n) {
  return n <= 16 ? TV7_Layer(static_cast<TV6_Layer>(eV6_Mechanical1 + n - 1))
                 : TV7_Layer(static_cast<std::uint16_t>(n), kFlags_FurtherMechanical);
}

struct NamedLayer {
  std::string_view name;
  TV7_Layer layer;
  int old_number;
  int new_number;
};
constexpr NamedLayer kNamed[] = {
    {"F.Cu", eV6_TopLayer, 0, 0},          {"B.Cu", eV6_BottomLayer, 31, 2},
    {"B.Adhes", Mechanical(12), 32, 11},   {"F.Adhes", Mechanical(11), 33, 9},
    {"B.Paste", eV6_BottomPaste, 34, 15},  {"F.Paste", eV6_TopPaste, 35, 13},
    {"B.SilkS", eV6_BottomOverlay, 36, 7}, {"F.SilkS", eV6_TopOverlay, 37, 5},
    {"B.Mask", eV6_BottomSolder, 38, 3},   {"F.Mask", eV6_TopSolder, 39, 1},
    {"Dwgs.User", Mechanical(3), 40, 17},  {"Cmts.User", Mechanical(4), 41, 19},
    {"Eco1.User", Mechanical(5), 42, 21},  {"Eco2.User", Mechanical(6), 43, 23},
    {"Edge.Cuts", kEdgeLayer, 44, 25},     {"Margin", Mechanical(2), 45, 27},
    {"B.CrtYd", Mechanical(8), 46, 29},    {"F.CrtYd", Mechanical(7), 47, 31},
    {"B.Fab", Mechanical(10), 48, 33},     {"F.Fab", Mechanical(9), 49, 35},
};
constexpr int kFirstUser = 13;  // of the mechanical layers; User.1
constexpr int kMostUser = 45;
constexpr int kMostInner = 30;

// The number between a name's two parts, as in "In12.Cu"; 0 when there is none.
int NumberIn(std::string_view name, std::string_view prefix, std::string_view suffix) {
  if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) || !name.ends_with(suffix)) {
    return 0;
  }
  name.remove_prefix(prefix.size());
  name.remove_suffix(suffix.size());
  int number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  return error == std::errc() && end == name.data() + name.size() ? std::max(number, 0) : 0;
}

int UserNumber(TV7_Layer layer) {
  for (int n = 1; n <= kMostUser; ++n) {
    if (Mechanical(kFirstUser + n - 1) == layer) return n;
  }
  return 0;
}

const NamedLayer* Named(TV7_Layer layer) {
  const auto found = std::ranges::find(kNamed, layer, &NamedLayer::layer);
  return found == std::end(kNamed) ? nullptr : found;
}

bool IsInner(TV7_Layer layer) {
  return layer.Flags() == 0 && layer.ID >= eV6_MidLayer1 && layer.ID <= eV6_MidLayer30;
}

}  // namespace

TV7_Layer LayerOfName(std::string_view name) {
  // The names of most items first; the others by the table.
  switch (KeywordHash(name)) {
    case "F.Cu"_word:
      return eV6_TopLayer;
    case "B.Cu"_word:
      return eV6_BottomLayer;
    case "F.SilkS"_word:
      return eV6_TopOverlay;
    case "F.Fab"_word:
      return Mechanical(9);
    case "F.CrtYd"_word:
      return Mechanical(7);
    default:
      break;
  }
  if (const int inner = NumberIn(name, "In", ".Cu"); inner > 0 && inner <= kMostInner) {
    return static_cast<TV6_Layer>(eV6_MidLayer1 + inner - 1);
  }
  if (const int user = NumberIn(name, "User.", ""); user > 0 && user <= kMostUser) {
    return Mechanical(kFirstUser + user - 1);
  }
  const auto found = std::ranges::find(kNamed, name, &NamedLayer::name);
  return found == std::end(kNamed) ? TV7_Layer(eV6_NoLayer) : found->layer;
}

std::string NameOfLayer(TV7_Layer layer) {
  if (const NamedLayer* named = Named(layer)) return std::string(named->name);
  if (IsInner(layer)) return "In" + std::to_string(layer.ID - eV6_MidLayer1 + 1) + ".Cu";
  if (const int user = UserNumber(layer)) return "User." + std::to_string(user);
  return "Cmts.User";
}

std::int32_t NumberOfLayer(TV7_Layer layer, bool new_numbering) {
  if (const NamedLayer* named = Named(layer)) return new_numbering ? named->new_number : named->old_number;
  if (IsInner(layer)) {
    const int inner = static_cast<int>(layer.ID) - eV6_MidLayer1 + 1;
    return new_numbering ? 2 + 2 * inner : inner;
  }
  const int user = UserNumber(layer);
  return new_numbering ? 37 + 2 * user : 49 + user;
}

LayerNames::LayerNames(const Board& board) {
  for (const BoardLayer& layer : board.layers) Add(layer);
}

void LayerNames::Add(const BoardLayer& layer) {
  if (LayerOfName(layer.file_name) != layer.id) own_names_.push_back({layer.file_name, layer.id});
  if (IsSignalLayer(layer.id)) {
    // Old numbers ascend from top to bottom.
    copper_.insert(std::upper_bound(copper_.begin(), copper_.end(), layer.id), layer.id);
  }
}

TV7_Layer LayerNames::Find(std::string_view name) const {
  for (const OwnName& own : own_names_) {
    if (own.name == name) return own.layer;
  }
  return LayerOfName(name);
}

std::string LayerNames::NameOf(TV7_Layer layer) const {
  for (const OwnName& own : own_names_) {
    if (own.layer == layer) return own.name;
  }
  return NameOfLayer(layer);
}

void LayerNames::Expand(std::string_view word, std::vector<TV7_Layer>& layers) const {
  const auto add = [&](TV7_Layer layer) {
    if (layer != TV7_Layer(eV6_NoLayer) && std::ranges::find(layers, layer) == layers.end()) {
      layers.push_back(layer);
    }
  };
  if (word == "*.Cu") {
    for (const TV7_Layer layer : copper_) add(layer);
  } else if (word.starts_with("*.") || word.starts_with("F&B.")) {
    const std::string kind(word.substr(word.find('.')));
    add(Find("F" + kind));
    add(Find("B" + kind));
  } else {
    add(Find(word));
  }
}

}  // namespace Ketril::Editor
