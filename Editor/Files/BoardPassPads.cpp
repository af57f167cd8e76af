// Pads: holes, layers, masks and stacks. Their copper is in BoardPassCopper.cpp.
#include <algorithm>

#include "Editor/Files/BoardComposer.h"
#include "Editor/Files/BoardPass.h"

namespace Ketril::Editor {

using namespace Literals;

// `(pad "1" smd roundrect (at ...) ...)`
void BoardPass::PadFields(Pad& pad) {
  PadWords words;
  Worded(in_.Word("the pad's name"), pad.data.name);
  words.type = in_.Word("the pad's type");
  words.copper.shape = in_.Word("the pad's shape");
  level_.lock_at = words.copper.shape.end;
  if (!edits_) {
    pad.data.mask = mask_;
    pad.data.clearance = clearance_;
  }
  // The pad's own words are those of its copper on the top layer.
  PadLayer copper = edits_ ? pad.On(eV6_TopLayer) : PadLayer();
  EachOnce([&](const Item& item, std::uint64_t key) {
    if (!PadWord(item, key, pad, copper, words) && !CopperWord(item, key, copper, words.copper)) {
      Common(item, key, pad);
    }
  });
  Require("at"_word, "at");
  Require("size"_word, "size");
  EndCopper(copper, words.copper);
  if (!edits_) pad.data.stack.front() = std::move(copper);
  EndPad(pad, words);
}

bool BoardPass::PadWord(const Item& item, std::uint64_t key, Pad& pad, PadLayer& copper, PadWords& words) {
  switch (key) {
    case "shape"_word:
    case "offset"_word:
      return true;  // words of a stack's layers, not of a pad
    case "at"_word:
      PlaceAndAngle(pad.data.center, pad.data.rotation);
      return true;
    case "drill"_word:
      PadDrill(item, pad, copper, words);
      return true;
    case "layers"_word:
      PadLayers(item, pad);
      return true;
    case "padstack"_word:
      PadStack(item, pad);
      return true;
    case "remove_unused_layers"_word:
    case "remove_unused_layer"_word:
      Flag(item, pad.data.remove_unused);
      return true;
    case "keep_end_layers"_word:
      Flag(item, pad.data.keep_end_layers);
      return true;
    case "solder_mask_margin"_word:
      Margin(item, pad.data.mask.solder, pad.data.mask.solder_mode);
      return true;
    case "solder_paste_margin"_word:
      Margin(item, pad.data.mask.paste, pad.data.mask.paste_mode);
      return true;
    case "solder_paste_margin_ratio"_word:
    case "solder_paste_ratio"_word:
      Number(pad.data.paste_ratio);
      return true;
    case "clearance"_word:
      Length(pad.data.clearance);
      return true;
    default:
      return false;
  }
}

void BoardPass::Margin(const Item& item, TCoord& margin, TMaskExpansionMode& mode) {
  if (!edits_) mode = eMaskExpansion_Manual;
  if (mode == eMaskExpansion_FromRule) {
    DropItem(item);
  } else {
    Length(margin);
  }
}

// `(drill 0.8)`, `(drill oval 0.6 1.2 (offset 0.1 0))`
void BoardPass::PadDrill(const Item& item, Pad& pad, PadLayer& copper, PadWords& words) {
  const Enter level(*this);
  bool is_oval = false;
  std::vector<Measure> sizes;
  std::uint32_t begin = item.word.end, end = item.word.end;
  Each([&](const Item& part, std::uint64_t key) {
    if (part.is_list) {
      if (key == "offset"_word && IsFirst(key)) {
        Offset(copper.offset);
        words.has_offset = true;
      }
      return;
    }
    if (begin == end) begin = part.begin;
    end = part.word.end;
    if (part.word.text == "oval") {
      is_oval = true;
    } else if (sizes.size() < 2) {
      sizes.push_back({ToUnits(TakeNanometres(part.word)), part.word});
    }
  });
  const TCoord x = sizes.empty() ? 0 : sizes.front().value, y = sizes.empty() ? 0 : sizes.back().value;
  PadData read;
  read.hole = is_oval ? std::min(x, y) : x;
  if (is_oval) {
    read.hole_type = eSlotHole;
    read.hole_width = std::max(x, y);
    read.hole_rotation = y > x ? 90 : 0;
  }
  words.hole = read.hole;
  words.drill_end = in_.Position();
  if (!edits_) {
    pad.data.hole = read.hole;
    pad.data.hole_type = read.hole_type;
    pad.data.hole_width = read.hole_width;
    pad.data.hole_rotation = read.hole_rotation;
  } else if (const std::string hole = BoardComposer::PadHole(pad.data);
             hole.empty() && !words.has_offset && read.hole > 0) {
    edits_->Drop(item.begin, words.drill_end);
    words.drill_end = 0;
  } else if (hole != BoardComposer::PadHole(read)) {
    edits_->Replace(begin, end, (begin == end ? " " : "") + hole);
  }
}

void BoardPass::PadLayers(const Item& item, Pad& pad) {
  std::vector<TV7_Layer> list;
  while (in_.HasWord()) layers_.Expand(in_.Word("a layer").text, list);
  const std::vector<TV7_Layer>& copper = layers_.Copper();
  const auto first = std::ranges::find_if(list, IsSignalLayer);
  TV7_Layer layer = list.empty() ? TV7_Layer(eV6_NoLayer) : list.front();
  if (first != list.end()) {
    layer = std::any_of(first + 1, list.end(), IsSignalLayer) ? TV7_Layer(eV6_MultiLayer) : *first;
  }
  std::vector<TV7_Layer> implied = BoardComposer::ImpliedPadLayers(layer, copper);
  if (std::ranges::is_permutation(list, implied)) list.clear();
  if (!edits_) {
    pad.state.layer = layer;
    pad.data.layers = std::move(list);
  } else if (pad.state.layer != layer || !std::ranges::is_permutation(pad.data.layers, list)) {
    in_.Leave(in_.Depth() - 1);
    edits_->Replace(item.begin, in_.Position(), BoardComposer::PadLayers(*words_, pad));
  }
}

void BoardPass::PadStack(const Item& item, Pad& pad) {
  std::vector<PadLayer> others;
  TPadMode mode = ePadMode_LocalStack;
  {
    TextEdits* const edits = std::exchange(edits_, nullptr);  // it is read to be compared as a whole
    const Enter level(*this);
    Each([&](const Item&, std::uint64_t key) {
      if (key == "mode"_word) mode = TakeStackMode();
      if (key == "layer"_word) PadStackLayer(others);
    });
    edits_ = edits;
  }
  // The pad's own words are those of the top layer.
  std::erase_if(others, [](const PadLayer& copper) { return copper.layer == TV7_Layer(eV6_TopLayer); });
  const auto is_same = [&](TV7_Layer layer) {
    const auto read = std::ranges::find(others, layer, &PadLayer::layer);
    PadLayer was = read == others.end() ? pad.On(eV6_TopLayer) : *read, wanted = pad.On(layer);
    was.layer = wanted.layer = layer;
    return was == wanted;
  };
  if (!edits_) {
    pad.data.mode = mode;
    pad.data.stack.insert(pad.data.stack.end(), others.begin(), others.end());
  } else if (pad.data.mode == ePadMode_Simple) {
    edits_->Drop(item.begin, in_.Position());
  } else if (pad.data.mode != mode || !std::ranges::all_of(layers_.Copper(), is_same)) {
    edits_->Replace(item.begin, in_.Position(), BoardComposer::PadStack(*words_, pad));
  }
}

void BoardPass::PadStackLayer(std::vector<PadLayer>& stack) {
  const std::vector<TV7_Layer> layers = TakeStackLayers();
  const Enter level(*this);
  PadLayer copper;
  CopperWords words;
  EachOnce([&](const Item& item, std::uint64_t key) { CopperWord(item, key, copper, words); });
  EndCopper(copper, words);
  for (const TV7_Layer layer : layers) {
    copper.layer = layer;
    stack.push_back(copper);
  }
}

void BoardPass::EndPad(Pad& pad, const PadWords& words) {
  const bool plated = words.type.text != "np_thru_hole";
  if (!edits_) {
    pad.data.plated = plated;
    return;
  }
  if (pad.data.plated != plated || (pad.data.hole > 0) != (words.hole > 0)) {
    Put(words.type, BoardComposer::PadType(pad.data));
  }
  const std::string offset = words.has_offset ? "" : BoardComposer::PadOffset(pad.On(eV6_TopLayer));
  if (words.drill_end > 0) {
    if (!offset.empty()) edits_->Insert(words.drill_end - 1, " " + offset);
  } else if (const std::string hole = BoardComposer::PadHole(pad.data); !hole.empty() || !offset.empty()) {
    InsertList("(drill" + (hole.empty() ? "" : " " + hole) + (offset.empty() ? "" : " " + offset) + ")");
  }
  const MaskData& mask = pad.data.mask;
  const auto margin = [&](const char* word, TCoord value, TMaskExpansionMode mode, TCoord inherited,
                          TMaskExpansionMode inherited_mode) {
    const bool differs = inherited_mode != eMaskExpansion_Manual || inherited != value;
    if (mode == eMaskExpansion_Manual && differs && !Seen(KeywordHash(word))) {
      InsertList(std::string("(") + word + " " + FileWords::Length(value) + ")");
    }
  };
  margin("solder_mask_margin", mask.solder, mask.solder_mode, mask_.solder, mask_.solder_mode);
  margin("solder_paste_margin", mask.paste, mask.paste_mode, mask_.paste, mask_.paste_mode);
  if (pad.data.mode != ePadMode_Simple && words_->version.HasPadstacks() && !Seen("padstack"_word)) {
    InsertList(BoardComposer::PadStack(*words_, pad));
  }
  EndCommon(pad);
}

}  // namespace Ketril::Editor
