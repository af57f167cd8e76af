#include "Editor/Files/FileStyle.h"

#include <algorithm>

#include "Editor/Files/SExpression.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

namespace {

bool IsHex(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsStamp(std::string_view id) {
  return !id.empty() && id.size() <= 8 && std::ranges::all_of(id, IsHex);
}

bool IsUuid(std::string_view id) {
  constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
  return std::ranges::equal(id, kForm, [](char c, char form) { return form == 'x' ? IsHex(c) : c == form; });
}

// Lists of points are the bulk of a board, and have nothing but lists of numbers in them.
constexpr std::string_view kPoints = "(pts (xy ";

// Where the lists of an expression are, itself first, each before those within it; none within one of points.
struct List {
  std::size_t begin, end;
};

std::vector<List> ListsOf(std::string_view expression) {
  std::vector<List> lists;
  std::vector<std::size_t> open;
  bool quoted = false;
  for (std::size_t i = 0; i < expression.size(); ++i) {
    const char c = expression[i];
    if (c == '\\') {
      ++i;
    } else if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && c == '(') {
      const bool has_points = expression.substr(i).starts_with(kPoints);
      const std::size_t end = has_points ? expression.find("))", i) + 2 : expression.size();
      lists.push_back({i, end});
      has_points ? void(i = end - 1) : open.push_back(lists.size() - 1);
    } else if (!quoted && c == ')' && !open.empty()) {
      lists[open.back()].end = i + 1;
      open.pop_back();
    }
  }
  return lists;
}

// Lays the lists of an expression out, each on lines of its own.
class Layout {
 public:
  Layout(std::string& result, std::string_view expression, bool tabbed)
      : result_(result), expression_(expression), lists_(ListsOf(expression)), tabbed_(tabbed) {}

  // The next list, which begins behind `line`: a line break and blanks.
  void Put(const std::string& line) {
    constexpr std::size_t kOneLine = 240;
    const List list = lists_[next_++];
    const std::string_view text = expression_.substr(list.begin, list.end - list.begin);
    const std::string inner = line + (tabbed_ ? "\t" : "  ");
    if (!tabbed_ && text.size() < kOneLine) {
      while (IsNextIn(list)) ++next_;
      result_ += text;
      return;
    }
    if (text.starts_with(kPoints)) {
      PutPoints(text, inner);
    } else if (!IsNextIn(list)) {
      result_ += text;
      return;
    } else {
      const std::string_view head = expression_.substr(list.begin, lists_[next_].begin - list.begin);
      result_ += head.substr(0, head.find_last_not_of(' ') + 1);
      while (IsNextIn(list)) {
        result_ += inner;
        Put(inner);
      }
    }
    result_ += line;
    result_ += ')';
  }

 private:
  bool IsNextIn(const List& list) const { return next_ < lists_.size() && lists_[next_].begin < list.end; }

  // As many points to a line as go.
  void PutPoints(std::string_view points, const std::string& inner) {
    constexpr std::size_t kPointsLine = 99;
    result_ += "(pts";
    std::size_t width = kPointsLine;
    for (std::size_t open = kPoints.find('(', 1), end = 0; end + 1 < points.size(); open = end + 1) {
      end = points.find(')', open) + 1;
      const std::string_view point = points.substr(open, end - open);
      const bool fits = width + point.size() < kPointsLine;
      if (!fits) width = 0;
      fits ? void(result_ += ' ') : void(result_ += inner);
      result_ += point;
      width += point.size() + 1;
    }
  }

  std::string& result_;
  std::string_view expression_;
  std::vector<List> lists_;
  std::size_t next_ = 0;
  bool tabbed_;
};

}  // namespace

FileWords::FileWords(Board& board) : version(board.file.version), layers(board) {
  board.objects.ForEach({eNetObject}, [&](Primitive& net) {
    next_number_ = std::max(next_number_, static_cast<Net&>(net).data.number + 1);
  });
}

std::string FileWords::Name(std::string_view utf8) const {
  return QuoteWord(utf8, version.QuotesAll());
}

std::string FileWords::Text(const std::u16string& text) const {
  return Name(Platform::ToUtf8(text));
}

namespace {

// "~RESET~/A" as "~{RESET}/A": an overbar of the old writing ends at a tilde, a space, a closing bracket or
// the end; two tildes are one.
std::string WithBraces(std::string_view old) {
  std::string name;
  bool is_over = false;
  for (std::size_t i = 0; i < old.size(); ++i) {
    const char c = old[i];
    if (c == '~' && i + 1 < old.size() && old[i + 1] == '{') return std::string(old);  // has braces already
    if (c == '~' && i + 1 < old.size() && old[i + 1] == '~') {
      name += old[++i];
    } else if (c == '~') {
      name += is_over ? "}" : "~{";
      is_over = !is_over;
    } else {
      if (is_over && (c == ' ' || c == ')' || c == '}')) {
        name += '}';
        is_over = false;
      }
      name += c;
    }
  }
  return is_over ? name + '}' : name;
}

}  // namespace

std::string FileWords::ZoneNetName(const Net* net) const {
  if (!net) return "\"\"";
  const std::string name = Platform::ToUtf8(net->data.name);
  return Name(version.HasBracedOverbars() ? name : WithBraces(name));
}

std::string FileWords::LayerList(const std::vector<TV7_Layer>& list) const {
  const auto has = [&](TV7_Layer layer) { return std::ranges::find(list, layer) != list.end(); };
  struct Pair {
    const char* name;
    TV7_Layer front, back;
  };
  constexpr Pair kPairs[] = {{"*.Mask", eV6_TopSolder, eV6_BottomSolder},
                             {"*.Paste", eV6_TopPaste, eV6_BottomPaste},
                             {"*.SilkS", eV6_TopOverlay, eV6_BottomOverlay}};
  const bool all_copper = layers.Copper().size() > 1 && std::ranges::all_of(layers.Copper(), has);
  std::string text = "(layers";
  if (all_copper) text += " " + Name("*.Cu");
  for (const TV7_Layer layer : list) {
    const auto pair = std::ranges::find_if(kPairs, [&](const Pair& p) {
      return (layer == p.front || layer == p.back) && has(p.front) && has(p.back);
    });
    if (pair != std::end(kPairs)) {
      if (layer == pair->front) text += " " + Name(pair->name);
    } else if (!all_copper || !IsSignalLayer(layer)) {
      text += " " + Layer(layer);
    }
  }
  return text + ")";
}

std::string FileWords::Place(TCoordPoint place, const Placement& placement) const {
  std::string text;
  AppendPlace(text, place, placement);
  return text;
}

void FileWords::AppendPlace(std::string& text, TCoordPoint place, const Placement& placement) const {
  // A reader asks that of the place on the board, however near its group's is. Turning rounds.
  constexpr TCoord kFarthest = kMaxUnits - 2;
  if (std::abs(std::int64_t{place.x}) > kFarthest || std::abs(std::int64_t{place.y}) > kFarthest)
    throw LengthOutOfRange();
  Nanometres x = 0, y = 0;
  placement.ToFile(place, x, y);
  AppendMillimetres(text, x);
  text += ' ';
  AppendMillimetres(text, y);
}

std::int32_t FileWords::NetNumber(const Net* net) {
  if (!net) return 0;
  if (net->data.number != 0) return net->data.number;
  const auto [entry, is_new] = numbers_.try_emplace(net, next_number_);
  if (is_new) ++next_number_;
  return entry->second;
}

std::string FileWords::NetWithName(Net* net) {
  return "(net " + std::to_string(NetNumber(net)) + " " + (net ? Text(net->data.name) : "\"\"") + ")";
}

std::string FileWords::Identifier(Primitive& primitive) const {
  if (!version.HasUuids() && !NeedsIdentifier(primitive)) return {};
  std::string id = Platform::ToUtf8(primitive.UniqueId());
  if (version.HasUuids() ? !IsUuid(id) : !IsStamp(id)) {
    id = Platform::ToUtf8(NewIdentifier());
    if (!version.HasUuids()) id.resize(8);
    primitive.SetUniqueId(Platform::ToUtf16(id));
  }
  return version.IsTabbed() ? " (uuid \"" + id + "\")" : " (tstamp " + id + ")";
}

void FileWords::Prepare(Primitive& primitive) {
  NetNumber(primitive.GetNet());
  Identifier(primitive);
}

std::string FileWords::RandomIdentifier() const {
  if (!version.HasUuids()) return {};
  const std::string id = Platform::ToUtf8(NewIdentifier());
  return version.IsTabbed() ? " (uuid \"" + id + "\")" : " (tstamp " + id + ")";
}

std::string FileWords::Fill(bool filled) const {
  if (version.SaysYesForFills()) return filled ? "yes" : "no";
  return filled ? "solid" : "none";
}

bool FileWords::NeedsIdentifier(const Primitive& primitive) {
  return primitive.state.union_index != 0 ||
         (primitive.Has(kFlag_TearDrop) && (primitive.kind == eTrackObject || primitive.kind == eArcObject));
}

std::string FileWords::LayOut(const std::string& expression, std::string_view blanks) const {
  std::string result(blanks);
  const bool is_list = expression.starts_with('(');
  if (!is_list || blanks.find('\n') == std::string_view::npos) return result + expression;
  result.reserve(expression.size() + expression.size() / 4);
  Layout(result, expression, version.IsTabbed()).Put(std::string(blanks));
  return result;
}

}  // namespace Ketril::Editor
