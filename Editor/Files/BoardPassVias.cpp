// Vias, and what the stacks of vias and pads have in common.
#include <algorithm>

#include "Editor/Files/BoardComposer.h"
#include "Editor/Files/BoardPass.h"

namespace Ketril::Editor {

using namespace Literals;

void BoardPass::ViaFields(Via& via) {
  std::vector<TV7_Layer> ends;
  SExpressionWord words[2];
  if (!edits_) via.state.layer = eV6_MultiLayer;
  bool is_blind = false;
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "blind"_bare:
      case "micro"_bare:
      case "buried"_bare:
        is_blind = true;
        break;
      case "at"_word:
        Point(via.data.center);
        break;
      case "size"_word:
        Length(via.data.size);
        break;
      case "drill"_word:
        Length(via.data.hole);
        break;
      case "layers"_word:
        for (SExpressionWord& word : words) {
          word = in_.Word("a layer");
          ends.push_back(layers_.Find(word.text));
        }
        break;
      case "remove_unused_layers"_word:
        Flag(item, via.data.remove_unused);
        break;
      case "keep_end_layers"_word:
        Flag(item, via.data.keep_end_layers);
        break;
      case "padstack"_word:
        ViaStack(item, via);
        break;
      default:
        Common(item, key, via);
    }
  });
  Require("at"_word, "at");
  Require("size"_word, "size");
  if (!ends.empty()) PutSpan(via, ends[0], ends[1], words, is_blind);
  if (!Seen("drill"_word)) {
    if (!edits_) {
      without_hole_.push_back(&via);
    } else if (via.data.hole != DefaultHole(via.GetNet())) {
      InsertList("(drill " + FileWords::Length(via.data.hole) + ")");
    }
  }
  EndVia(via);
}

void BoardPass::PutSpan(Via& via, TV7_Layer from, TV7_Layer to, const SExpressionWord (&words)[2],
                        bool is_blind) {
  const bool is_upward = to < from;
  const int low = is_upward ? 1 : 0;
  if (!edits_) {
    via.data.low = is_upward ? to : from;
    via.data.high = is_upward ? from : to;
    return;
  }
  const TV7_Layer was_low = is_upward ? to : from, was_high = is_upward ? from : to;
  if (via.data.low != was_low) Put(words[low], words_->Layer(via.data.low));
  if (via.data.high != was_high) Put(words[1 - low], words_->Layer(via.data.high));
  const bool spans_all =
      via.data.low == TV7_Layer(eV6_TopLayer) && via.data.high == TV7_Layer(eV6_BottomLayer);
  if (!spans_all && !is_blind && (via.data.low != was_low || via.data.high != was_high)) {
    InsertWord(level_.lock_at, "blind");
  }
}

void BoardPass::EndVia(Via& via) {
  if (!edits_) return;
  const auto say = [&](const char* word, bool wanted) {
    if (wanted && !Seen(KeywordHash(word))) {
      InsertList(std::string("(") + word + (words_->version.IsTabbed() ? " yes)" : ")"));
    }
  };
  if (words_->version.QuotesAll()) {
    say("remove_unused_layers", via.data.remove_unused);
    say("keep_end_layers", via.data.keep_end_layers);
  }
  if (via.data.mode != ePadMode_Simple && !Seen("padstack"_word) && words_->version.HasPadstacks()) {
    InsertList(BoardComposer::ViaStack(*words_, via.data));
  }
  EndCommon(via);
}

// `(padstack (mode front_inner_back) (layer "Inner" (size 0.5)) ...)`: sizes that are not the via's own.
void BoardPass::ViaStack(const Item& item, Via& via) {
  ViaData read;
  read.mode = ePadMode_LocalStack;
  {
    const Enter level(*this);
    Each([&](const Item&, std::uint64_t key) {
      if (key == "mode"_word) read.mode = TakeStackMode();
      if (key == "layer"_word) ViaStackLayer(read);
    });
  }
  const auto is_same = [&](TV7_Layer layer) {
    const auto own = std::ranges::find(read.sizes, layer, &LayerSize::layer);
    return via.SizeOn(layer) == (own == read.sizes.end() ? via.data.size : own->size);
  };
  if (!edits_) {
    via.data.mode = read.mode;
    via.data.sizes = std::move(read.sizes);
  } else if (via.data.mode == ePadMode_Simple) {
    edits_->Drop(item.begin, in_.Position());
  } else if (read.mode != via.data.mode || !std::ranges::all_of(layers_.Copper(), is_same)) {
    edits_->Replace(item.begin, in_.Position(), BoardComposer::ViaStack(*words_, via.data));
  }
}

TPadMode BoardPass::TakeStackMode() {
  return in_.Word("a mode").text == "custom" ? ePadMode_ExternalStack : ePadMode_LocalStack;
}

std::vector<TV7_Layer> BoardPass::TakeStackLayers() {
  const SExpressionWord word = in_.Word("a layer");
  if (word.text != "Inner") return {layers_.Find(word.text)};
  std::vector<TV7_Layer> inner = layers_.Copper();
  std::erase_if(inner, [](TV7_Layer layer) {
    return layer == TV7_Layer(eV6_TopLayer) || layer == TV7_Layer(eV6_BottomLayer);
  });
  return inner;
}

void BoardPass::ViaStackLayer(ViaData& via) {
  const std::vector<TV7_Layer> layers = TakeStackLayers();
  const Enter level(*this);
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key != "size"_word) return;
    const Measure size = TakeMeasure();
    for (const TV7_Layer layer : layers) via.sizes.push_back({layer, size.value});
  });
}

}  // namespace Ketril::Editor
