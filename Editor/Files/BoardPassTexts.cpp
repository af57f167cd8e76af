// Texts, text boxes, dimensions.
#include <algorithm>

#include "Editor/Files/BoardComposer.h"
#include "Editor/Files/BoardPass.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

// What the oldest version has for the variables of a footprint's texts.
struct OldVariable {
  std::u16string_view old_name, name;
};
constexpr OldVariable kOldVariables[] = {{u"%R", u"${REFERENCE}"}, {u"%V", u"${VALUE}"}};

}  // namespace

// `(gr_text "R1" (at ...) ...)`
void BoardPass::TextFields(Text& text) {
  TextString(text);
  EachOnce([&](const Item& item, std::uint64_t key) {
    if (key == "at"_word) {
      PlaceAndAngle(text.data.anchor, text.data.rotation);
      if (in_.HasWord() && in_.Word("a word").text == "unlocked") text.data.keeps_upright = false;
    } else {
      TextWord(item, key, text);
    }
  });
  Require("at"_word, "at");
  EndText(text);
}

// `(fp_text reference "R1" (at ...) ...)`
void BoardPass::FootprintText(Text& text) {
  const SExpressionWord role = in_.Word("the text's role");
  level_.lock_at = role.end;
  text.data.keeps_upright = true;
  if (!edits_ && role.text == "reference") text.data.role = TextRole::Designator;
  if (!edits_ && role.text == "value") text.data.role = TextRole::Comment;
  TextFields(text);
}

// `(property "Reference" "R1" (at ...) ...)`
void BoardPass::Property(Text& text) {
  const SExpressionWord role = in_.Word("the property's name");
  text.data.keeps_upright = true;
  if (!edits_ && role.text == "Reference") text.data.role = TextRole::Designator;
  if (!edits_ && role.text == "Value") text.data.role = TextRole::Comment;
  TextFields(text);
}

void BoardPass::TextString(Text& text) {
  SExpressionWord word = in_.Word("the text");
  if (!word.quoted && word.text == "locked" && in_.HasWord()) {
    SayFlag({word, word.begin, false}, locked_, text, kFlag_Locked);
    word = in_.Word("the text");
  }
  std::u16string value = Resolved(word);
  const bool has_old_variables = !FileVersion(board_.file.version).QuotesAll();
  const auto old = std::ranges::find(kOldVariables, value, &OldVariable::old_name);
  if (has_old_variables && old != std::end(kOldVariables)) value = old->name;
  if (!edits_) {
    text.data.string = std::move(value);
  } else if (value != text.data.string) {
    const auto variable = std::ranges::find(kOldVariables, text.data.string, &OldVariable::name);
    const bool says_old = has_old_variables && variable != std::end(kOldVariables);
    Put(word, words_->Text(says_old ? std::u16string(variable->old_name) : text.data.string));
  }
}

void BoardPass::TextWord(const Item& item, std::uint64_t key, Text& text) {
  if (key == "effects"_word) {
    Effects(text);
  } else if (key == "render_cache"_word) {
    in_.Leave(in_.Depth() - 1);
    text_cache_ = {item.begin, in_.Position()};
  } else if (key == "unlocked"_word) {
    text.data.keeps_upright = in_.HasWord() && in_.Word("yes or no").text == "no";
  } else {
    Common(item, key, text);
  }
}

void BoardPass::EndText(Text& text) {
  EndCommon(text);
  // The letters' outlines as drawn before: other programs make them anew when they are missing.
  const SourceSpan cache = std::exchange(text_cache_, {});
  if (edits_ && !cache.IsEmpty() && (moved_ || edits_->ChangedSince(level_.item.begin))) {
    edits_->Drop(cache.begin, cache.end);
  }
}

void BoardPass::Effects(Text& text) {
  const Enter level(*this);
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "font"_word:
        Font(text);
        break;
      case "justify"_word:
        Justify(item, text);
        break;
      case "hide"_word:
      case "hide"_bare:
        SayFlag(item, hidden_, text, kFlag_Hidden);
        break;
      default:
        break;
    }
  });
  if (edits_ && !Seen("justify"_word)) {
    if (const std::string list = BoardComposer::Justify(text.data); !list.empty()) InsertList(list);
  }
}

void BoardPass::Font(Text& text) {
  const Enter level(*this);
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key == "size"_word) {
      Length(text.data.size);
      Length(text.data.letter_width);
    } else if (key == "thickness"_word) {
      Length(text.data.width);
    }
  });
  if (Seen("thickness"_word)) return;
  const TCoord customary = (std::min(text.data.size, text.data.letter_width) + 4) / 8;
  if (!edits_) {
    text.data.width = customary;
  } else if (text.data.width != customary) {
    InsertList("(thickness " + FileWords::Length(text.data.width) + ")");
  }
}

void BoardPass::Justify(const Item& item, Text& text) {
  TextData read;
  while (in_.HasWord()) {
    const std::string_view word = in_.Word("an alignment").text;
    if (word == "left") read.horizontal = TextAlign::Low;
    if (word == "right") read.horizontal = TextAlign::High;
    if (word == "bottom") read.vertical = TextAlign::Low;
    if (word == "top") read.vertical = TextAlign::High;
    if (word == "mirror") read.mirrored = true;
  }
  if (!edits_) {
    text.data.horizontal = read.horizontal;
    text.data.vertical = read.vertical;
    text.data.mirrored = read.mirrored;
  } else if (const std::string list = BoardComposer::Justify(text.data);
             list != BoardComposer::Justify(read)) {
    in_.Leave(in_.Depth() - 1);
    if (list.empty()) {
      edits_->Drop(item.begin, in_.Position());
    } else {
      edits_->Replace(item.begin, in_.Position(), list);
    }
  }
}

// A box is a text at the place in the box that its alignment names; it moves with that.
void BoardPass::TextBox(Text& text) {
  TextString(text);
  Place start, end;
  Outline outline;
  EachOnce([&](const Item& item, std::uint64_t key) {
    switch (key) {
      case "start"_word:
        start = TakePlace();
        break;
      case "end"_word:
        end = TakePlace();
        break;
      case "pts"_word:
        outline = TakeOutline();
        break;
      case "angle"_word:
        Angle(text.data.rotation);
        break;
      default:
        TextWord(item, key, text);
    }
  });
  if (start.IsThere() && end.IsThere()) {
    outline.points = {start.at, Corner(end, start), end.at, Corner(start, end)};
    outline.places = {start, end};
  }
  if (outline.points.size() < 4) in_.Fail(level_.item.begin, "this text box has no corners");
  const std::vector<TCoordPoint>& corners = outline.points;  // from the upper left, clockwise
  const double across = (static_cast<int>(text.data.horizontal) + 1) / 2.0;
  const double down = (1 - static_cast<int>(text.data.vertical)) / 2.0;
  const auto between = [&](TCoord TCoordPoint::*axis) {
    const double origin = corners[0].*axis;
    return corners[0].*axis +
           ToCoord(across * (corners[1].*axis - origin) + down * (corners[3].*axis - origin));
  };
  const TCoordPoint anchor = {between(&TCoordPoint::x), between(&TCoordPoint::y)};
  if (!edits_) {
    text.data.anchor = anchor;
  } else {
    for (const Place& place : outline.places) {
      PutPlace(place, Shifted(place.at, anchor,
                              placement_.IsAt(anchor, text.data.anchor) ? anchor : text.data.anchor));
    }
  }
  EndText(text);
}

void BoardPass::DimensionFields(Dimension& dimension) {
  WithMembers(dimension, [&] {
    Each([&](const Item& item, std::uint64_t key) {
      if (!DimensionMember(item, key, dimension) && IsFirst(key)) DimensionWord(item, key, dimension);
    });
  });
  if (edits_) return EndCommon(dimension);
  if (!Seen("type"_word)) dimension.data.style = u"aligned";
  for (const Ref<Primitive>& member : dimension.Members()) {
    if (Track* line = As<Track>(member.Get())) {
      line->state.layer = dimension.state.layer;
      line->data.width = dimension.data.width;
    }
  }
}

bool BoardPass::DimensionMember(const Item& item, std::uint64_t key, Dimension& dimension) {
  switch (key) {
    case "gr_text"_word:
      Object(item, &dimension, &BoardPass::TextFields);
      return true;
    case "feature1"_word:
    case "feature2"_word:
    case "crossbar"_word:
    case "arrow1a"_word:
    case "arrow1b"_word:
    case "arrow2a"_word:
    case "arrow2b"_word:
      Object(item, &dimension, &BoardPass::DimensionLine);
      return true;
    default:
      return false;
  }
}

void BoardPass::DimensionWord(const Item& item, std::uint64_t key, Dimension& dimension) {
  switch (key) {
    case "type"_word:
      String(dimension.data.style);
      break;
    case "pts"_word:
      Outlined(dimension.data.points);
      break;
    case "width"_word:
      Length(dimension.data.width);
      break;
    case "style"_word:
      DimensionStyle(dimension.data);
      break;
    case "height"_word:
      Length(dimension.data.height);
      break;
    case "leader_length"_word:
      Length(dimension.data.leader);
      break;
    case "orientation"_word:
      dimension.data.upright = TakeNumber(in_.Word("an orientation")) != 0;
      break;
    default:
      Common(item, key, dimension);
  }
}

void BoardPass::DimensionStyle(DimensionData& data) {
  const Enter level(*this);
  EachOnce([&](const Item&, std::uint64_t part) {
    if (part == "thickness"_word) Length(data.width);
    if (part == "arrow_length"_word) Length(data.arrow);
    if (part == "extension_height"_word) Length(data.extension);
    if (part == "extension_offset"_word) Length(data.offset);
    if (part == "arrow_direction"_word) data.inward = in_.Word("a direction").text == "inward";
  });
}

// `(crossbar (pts (xy ...) (xy ...)))`, of the oldest version.
void BoardPass::DimensionLine(Track& track) {
  EachOnce([&](const Item&, std::uint64_t key) {
    if (key != "pts"_word) return;
    const Outline outline = TakeOutline();
    if (outline.points.size() != 2 || !outline.is_plain) return;
    if (edits_) {
      PutOutline(outline, {track.data.p1, track.data.p2});
    } else {
      track.data.p1 = outline.points[0];
      track.data.p2 = outline.points[1];
    }
  });
}

}  // namespace Ketril::Editor
