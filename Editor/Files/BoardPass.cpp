#include "Editor/Files/BoardPass.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "Editor/Files/BoardComposer.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

using namespace Literals;

namespace {

constexpr std::size_t kMostKeys = 64;  // of one list; no expression has as many
constexpr std::size_t kMostWarnings = 100;
// Words of one meaning, in this version and that, count as one.
constexpr std::uint64_t MeaningOf(std::uint64_t key) {
  switch (key) {
    case "layers"_word:
      return "layer"_word;
    case "stroke"_word:
    case "style"_word:
      return "width"_word;
    case "tstamp"_word:
      return "uuid"_word;
    case "remove_unused_layer"_word:
      return "remove_unused_layers"_word;
    case "solder_paste_ratio"_word:
      return "solder_paste_margin_ratio"_word;
    default:
      return key;
  }
}

}  // namespace

BoardPass::BoardPass(Board& board, FileWarnings* warnings)
    : board_(board), in_(board.file.text, board.file.path), warnings_(warnings) {}

void BoardPass::Warn(std::uint32_t position, const std::string& message) {
  if (!warnings_ || warnings_->size() >= kMostWarnings) return;
  try {
    in_.Fail(position, message);
  } catch (const FileError& error) {
    warnings_->push_back(error.what());
  }
}

bool BoardPass::IsFirst(std::uint64_t key) {
  key = MeaningOf(key);
  if (Seen(key) || seen_.size() - level_.first_key == kMostKeys) return false;
  seen_.push_back(key);
  return true;
}

bool BoardPass::Seen(std::uint64_t key) const {
  key = MeaningOf(key);
  return std::find(seen_.begin() + static_cast<std::ptrdiff_t>(level_.first_key), seen_.end(), key) !=
         seen_.end();
}

void BoardPass::Require(std::uint64_t key, const char* what) const {
  if (!Seen(key)) in_.Fail(level_.item.begin, std::string("this list has no ") + what);
}

Nanometres BoardPass::TakeNanometres(const SExpressionWord& word) const {
  Nanometres nm = 0;
  switch (ParseMillimetres(word.text, nm)) {
    case NumberError::None:
      return nm;
    case NumberError::OutOfRange:
      in_.Fail(word.begin, "the length " + std::string(word.text) + " is out of range, which is 2147 mm");
    case NumberError::NotANumber:
      break;
  }
  in_.Fail(word.begin, "a length is expected here, not '" + std::string(word.text) + "'");
}

double BoardPass::TakeNumber(const SExpressionWord& word) const {
  double value = 0;
  if (ParseNumber(word.text, value) != NumberError::None || std::abs(value) > 1e9) {
    in_.Fail(word.begin, "a number is expected here, not '" + std::string(word.text) + "'");
  }
  return value;
}

BoardPass::Measure BoardPass::TakeMeasure() {
  const SExpressionWord word = in_.Word("a length");
  return {ToUnits(TakeNanometres(word)), word};
}

BoardPass::Place BoardPass::TakePlace() {
  Place place;
  place.x = in_.Word("x");
  place.y = in_.Word("y");
  if (!placement_.ToBoard(TakeNanometres(place.x), TakeNanometres(place.y), place.at)) {
    if (edits_) throw LengthOutOfRange();  // its group was moved away
    in_.Fail(place.x.begin, "this place is out of range, which is 2147 mm");
  }
  return place;
}

BoardPass::Outline BoardPass::TakeOutline() {
  Outline outline;
  const Enter level(*this);
  outline.begin = in_.Position();
  const auto place = [&] {
    const Place taken = TakePlace();
    if (edits_) outline.places.push_back(taken);
    return taken.at;
  };
  Each([&](const Item&, std::uint64_t key) {
    if (key == "xy"_word) {
      outline.points.push_back(place());
    } else if (key == "arc"_word) {
      outline.is_plain = false;
      TCoordPoint ends[3];
      const Enter arc(*this);
      EachOnce([&](const Item&, std::uint64_t part) {
        if (part == "start"_word) ends[0] = place();
        if (part == "mid"_word) ends[1] = place();
        if (part == "end"_word) ends[2] = place();
      });
      outline.points.push_back(ends[0]);
      AddArcPoints(ends[0], ends[1], ends[2], outline.points);
    }
  });
  outline.end = in_.Position() - 1;
  return outline;
}

void BoardPass::PutPlace(const Place& place, TCoordPoint wanted) {
  if (!edits_ || placement_.IsAt(place.at, wanted)) return;
  Nanometres x = 0, y = 0;
  placement_.ToFile(wanted, x, y);
  if (!placement_.IsPlain() || place.at.x != wanted.x) Put(place.x, FormatMillimetres(x));
  if (!placement_.IsPlain() || place.at.y != wanted.y) Put(place.y, FormatMillimetres(y));
}

void BoardPass::PutOutline(const Outline& outline, const std::vector<TCoordPoint>& wanted) {
  if (!edits_) return;
  const bool same_size = outline.points.size() == wanted.size();
  if (same_size && std::ranges::equal(outline.points, wanted,
                                      [&](TCoordPoint a, TCoordPoint b) { return placement_.IsAt(a, b); })) {
    return;
  }
  if (same_size && outline.is_plain) {
    for (std::size_t i = 0; i < wanted.size(); ++i) PutPlace(outline.places[i], wanted[i]);
    return;
  }
  std::string text;
  for (const TCoordPoint point : wanted) text += " (xy " + words_->Place(point, placement_) + ")";
  edits_->Replace(outline.begin, outline.end, text);
}

void BoardPass::PutMeasure(const Measure& measure, TCoord wanted) {
  if (edits_ && measure.value != wanted) Put(measure.word, FileWords::Length(wanted));
}

void BoardPass::Measured(const Measure& measure, TCoord& field) {
  if (edits_) {
    PutMeasure(measure, field);
  } else {
    field = measure.value;
  }
}

void BoardPass::Placed(const Place& place, TCoordPoint& field) {
  if (edits_) {
    PutPlace(place, field);
  } else {
    field = place.at;
  }
}

void BoardPass::Offset(TCoordPoint& field) {
  const Placement outer = std::exchange(placement_, Placement());
  Point(field);
  placement_ = outer;
}

void BoardPass::Number(double& field) {
  const SExpressionWord word = in_.Word("a number");
  const double value = TakeNumber(word);
  if (!edits_) {
    field = value;
  } else if (value != field) {
    Put(word, FormatNumber(field));
  }
}

std::int32_t BoardPass::TakeInteger(SExpressionWord& word) {
  word = in_.Word("a whole number");
  std::int32_t value = 0;
  const char* const end = word.text.data() + word.text.size();
  const auto [stop, error] = std::from_chars(word.text.data(), end, value);
  if (error != std::errc() || stop != end) {
    in_.Fail(word.begin, "a whole number is expected here, not '" + std::string(word.text) + "'");
  }
  return value;
}

void BoardPass::Integer(std::int32_t& field) {
  SExpressionWord word;
  const std::int32_t value = TakeInteger(word);
  if (!edits_) {
    field = value;
  } else if (value != field) {
    Put(word, std::to_string(field));
  }
}

void BoardPass::Angle(double& field) {
  const SExpressionWord word = in_.Word("an angle");
  const double value = NormalAngle(TakeNumber(word));
  if (!edits_) {
    field = value;
  } else if (!IsSameAngle(value, field)) {
    Put(word, FormatNumber(NormalAngle(field)));
  }
}

void BoardPass::PlaceAndAngle(TCoordPoint& field, double& angle) {
  const Place place = TakePlace();
  Placed(place, field);
  double value = 0;
  SExpressionCursor ahead = in_;
  if (ahead.HasWord() && ParseNumber(ahead.Word("an angle").text, value) == NumberError::None) {
    Angle(angle);
  } else if (edits_ && !IsSameAngle(angle, 0)) {
    InsertWord(place.y.end, FormatNumber(NormalAngle(angle)));
  }
}

std::u16string BoardPass::Resolved(const SExpressionWord& word) {
  const bool has_escapes = word.quoted && word.text.find('\\') != std::string_view::npos;
  return has_escapes ? Platform::ToUtf16(ResolveEscapes(word.text)) : Platform::ToUtf16(word.text);
}

void BoardPass::Worded(const SExpressionWord& word, std::u16string& field) {
  std::u16string value = Resolved(word);
  if (!edits_) {
    field = std::move(value);
  } else if (value != field) {
    Put(word, words_->Text(field));
  }
}

void BoardPass::Layer(TV7_Layer& field) {
  const SExpressionWord word = in_.Word("a layer");
  const TV7_Layer layer = layers_.Find(word.text);
  if (!edits_) {
    if (layer == TV7_Layer(eV6_NoLayer)) {
      Warn(word.begin, "the layer '" + std::string(word.text) + "' is not known");
    }
    field = layer;
  } else if (layer != field) {
    Put(word, words_->Layer(field));
  }
}

bool BoardPass::TakeFill() {
  if (!in_.HasWord()) return false;
  const std::string_view word = in_.Word("a fill").text;
  return word != "none" && word != "no";
}

void BoardPass::Flag(const Item& item, bool& field) {
  const bool has_word = item.is_list && in_.HasWord();
  const SExpressionWord word = has_word ? in_.Word("yes or no") : SExpressionWord{};
  const bool value = !has_word || word.text != "no";
  if (!edits_) {
    field = value;
  } else if (value != field) {
    has_word ? Put(word, field ? "yes" : "no") : DropItem(item);
  }
}

void BoardPass::Outlined(std::vector<TCoordPoint>& field) {
  Outline outline = TakeOutline();
  if (edits_) {
    PutOutline(outline, field);
  } else {
    field = std::move(outline.points);
  }
}

void BoardPass::InsertList(const std::string& expression) {
  const std::uint32_t at = level_.last_end > 0 ? level_.last_end : in_.Position() - 1;
  std::string blanks(level_.last_end > 0 ? edits_->BlanksBefore(level_.last_begin) : " ");
  edits_->Insert(at, words_->LayOut(expression, blanks));
}

void BoardPass::InsertList(Primitive& object) {
  for (const std::string& expression : BoardComposer(*words_, placement_).Expressions(object)) {
    InsertList(expression);
  }
}

std::string BoardPass::Anew(Primitive& object, std::string_view blanks) {
  std::string text;
  for (const std::string& expression : BoardComposer(*words_, placement_).Expressions(object))
    text += words_->LayOut(expression, blanks);
  return text.empty() ? text : text.substr(blanks.size());
}

void BoardPass::DropItem(const Item& item) {
  if (item.is_list) in_.Leave(in_.Depth() - 1);
  edits_->Drop(item.begin, item.is_list ? in_.Position() : item.word.end);
}

}  // namespace Ketril::Editor
