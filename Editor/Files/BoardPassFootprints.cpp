// Footprints: the components of a board, and its free pads.
#include "Editor/Files/BoardPass.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

bool IsZero(std::string_view number) {
  return !number.empty() && number.find_first_not_of("+-0.") == number.npos;
}

// Whether the footprint is one that stands for a free pad: nobody has turned it, and it has one pad, in its
// origin. `in` is behind the word that opened the footprint.
bool IsFreePad(SExpressionCursor in) {
  if (in.Word("the footprint's name").text != kFreePadName) return false;
  int pads = 0;
  bool is_plain = true;
  // The pad may be turned in its origin; the footprint is not turned.
  const auto take_place = [&](bool of_pad) {
    int count = 0;
    for (; in.HasWord(); ++count) {
      const bool is_zero = IsZero(in.Word("a number").text);
      is_plain &= is_zero || count == 2 || !of_pad;
    }
    is_plain &= count == 2 || (of_pad && count == 3);
  };
  in.ForEach([&](const SExpressionItem& item) {
    if (!item.is_list) return;
    if (item.word.text == "at") take_place(false);
    if (item.word.text != "pad") return;
    ++pads;
    in.ForEach([&](const SExpressionItem& part) {
      if (part.is_list && part.word.text == "at") take_place(true);
    });
  });
  return pads == 1 && is_plain;
}

}  // namespace

void BoardPass::FootprintItem(const Item& item) {
  if (IsFreePad(in_)) {
    Object(item, nullptr, &BoardPass::FreePad);
  } else {
    Object(item, nullptr, &BoardPass::Footprint);
  }
}

void BoardPass::Footprint(Component& component) {
  const SExpressionWord name = in_.Word("the footprint's name");
  Worded(name, component.data.pattern);
  level_.lock_at = name.end;
  FootprintWords words;
  WithMembers(component, [&] {
    Each([&](const Item& item, std::uint64_t key) {
      switch (key) {
        case "property"_word:
          PropertyItem(item, component);
          return;
        case "pad"_word:
          FindPlaceAhead(component);
          Object(item, &component, &BoardPass::PadFields);
          return;
        default:
          break;
      }
      if (item.is_list && item.word.text.starts_with("fp_")) FindPlaceAhead(component);
      if (!Graphic(item, key, &component) && IsFirst(key)) FootprintWord(item, key, component, words);
    });
    Require("at"_word, "at");
    EndFootprint(component, words);
  });
  placement_ = {};
  mask_ = {};
  clearance_ = 0;
  moved_ = false;
}

void BoardPass::FootprintWord(const Item& item, std::uint64_t key, Component& component,
                              FootprintWords& words) {
  switch (key) {
    case "at"_word:
      FootprintPlace(component);
      break;
    case "descr"_word:
      String(component.data.description);
      break;
    case "sheetname"_word:
      if (!edits_ && in_.HasWord()) component.origin.sheet = Resolved(in_.Word("a sheet"));
      break;
    case "component_classes"_word:
      if (!edits_) ComponentClasses(component.origin.classes);
      break;
    case "attr"_word:
      words.attributes = item;
      while (in_.HasWord()) {
        const SExpressionWord word = in_.Word("an attribute");
        if (word.text == "exclude_from_bom" || word.text == "virtual") words.no_bom = word;
        words.attributes_end = word.end;
      }
      break;
    case "net_tie_pad_groups"_word:
      words.is_tie = true;
      break;
    case "solder_mask_margin"_word:
      mask_.solder = TakeMeasure().value;
      mask_.solder_mode = eMaskExpansion_Manual;
      break;
    case "solder_paste_margin"_word:
      mask_.paste = TakeMeasure().value;
      mask_.paste_mode = eMaskExpansion_Manual;
      break;
    case "clearance"_word:
      clearance_ = TakeMeasure().value;
      break;
    default:
      Common(item, key, component);
  }
}

void BoardPass::EndFootprint(Component& component, const FootprintWords& words) {
  const bool no_bom = !words.no_bom.text.empty();
  if (!edits_) {
    component.data.flipped = IsBottomSide(component.state.layer);
    component.data.kind = words.is_tie ? (no_bom ? eComponentKind_NetTie_NoBOM : eComponentKind_NetTie_BOM)
                          : no_bom     ? eComponentKind_Standard_NoBOM
                                       : eComponentKind_Standard;
    return;
  }
  EndCommon(component);
  const TComponentKind kind = component.data.kind;
  const bool wants_none = kind == eComponentKind_Standard_NoBOM || kind == eComponentKind_NetTie_NoBOM;
  const bool wants_some = kind == eComponentKind_Standard || kind == eComponentKind_NetTie_BOM;
  const std::string word = words_->version.SaysFootprint() ? "exclude_from_bom" : "virtual";
  if (no_bom && wants_some) {
    edits_->Drop(words.no_bom.begin, words.no_bom.end);
  } else if (!no_bom && wants_none) {
    if (words.attributes_end > 0) {
      InsertWord(words.attributes_end, word);
    } else {
      InsertList("(attr " + word + ")");
    }
  }
}

void BoardPass::FootprintPlace(Component& component) {
  placement_ = {};
  const SExpressionCursor begin = in_;
  const Place place = TakePlace();
  double angle = 0;
  if (in_.HasWord()) ParseNumber(in_.Word("an angle").text, angle);
  in_ = begin;
  PlaceAndAngle(component.data.reference, component.data.rotation);
  const bool turned = !IsSameAngle(angle, component.data.rotation);
  moved_ = edits_ && (turned || place.at != component.data.reference);
  placement_ = Placement(component.data.reference, component.data.rotation, edits_ && turned);
}

// In an unusual order members may come before the footprint's place, which theirs are counted from.
void BoardPass::FindPlaceAhead(Component& component) {
  if (Seen("at"_word)) return;
  const SExpressionCursor here = in_;
  const Item item = item_;
  in_.Leave(in_.Depth() - 1);
  for (Item next; in_.Next(next);) {
    const unsigned depth = in_.Depth() - (next.is_list ? 1 : 0);
    if (next.is_list && next.word.text == "at") {
      IsFirst("at"_word);
      FootprintPlace(component);
      break;
    }
    in_.Leave(depth);
  }
  Require("at"_word, "at");
  in_ = here;
  item_ = item;
}

// Some properties are texts, others have no place and no letters.
void BoardPass::PropertyItem(const Item& item, Component& component) {
  SExpressionCursor ahead = in_;
  while (ahead.HasWord()) ahead.Word("a word");
  Item first;
  if (!ahead.Next(first)) return;
  FindPlaceAhead(component);
  Object(item, &component, &BoardPass::Property);
}

// A pad of no component, in a footprint of its own.
void BoardPass::FreePad(Pad& pad) {
  in_.Word("the footprint's name");
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "at"_word:
        Point(pad.data.center);
        break;
      case "pad"_word: {
        placement_ = Placement(pad.data.center, 0);
        const Enter level(*this);
        PadFields(pad);
        placement_ = {};
        break;
      }
      case "tstamp"_word:
      case "uuid"_word:
        Stamp(pad);
        break;
      case "locked"_word:
      case "locked"_bare:
        SayFlag(item, locked_, pad, kFlag_Locked);
        break;
      default:
        break;
    }
  });
  Require("at"_word, "at");
  Require("pad"_word, "pad");
  if (edits_ && words_->version.IsTabbed() && pad.Has(kFlag_Locked) && !locked_.yes)
    InsertList("(locked yes)");
}

}  // namespace Ketril::Editor
