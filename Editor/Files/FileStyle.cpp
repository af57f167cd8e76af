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

// The first words of an expression, and the lists that follow them.
struct Parts {
  std::string_view head;  // with the opening parenthesis
  std::vector<std::string_view> lists;
};

// Lists of points are the bulk of a board, and have nothing but lists of numbers in them.
constexpr std::string_view kPoints = "(pts (xy ";

Parts Split(std::string_view expression) {
  Parts parts;
  unsigned depth = 0;
  std::size_t begin = 0;
  bool quoted = false;
  for (std::size_t i = 1; i + 1 < expression.size(); ++i) {
    const char c = expression[i];
    if (c == '"') quoted = !quoted;
    if (c == '\\') ++i;
    if (quoted) continue;
    if (c == '(' && depth++ == 0) {
      if (parts.lists.empty()) parts.head = expression.substr(0, expression.find_last_not_of(' ', i - 1) + 1);
      begin = i;
    }
    const bool has_points = c == '(' && expression.substr(i).starts_with(kPoints);
    if (has_points) i = expression.find("))", i) + 1;
    if ((c == ')' || has_points) && --depth == 0)
      parts.lists.push_back(expression.substr(begin, i + 1 - begin));
  }
  return parts;
}

// As many points to a line as go.
void LayOutPoints(std::string& result, std::string_view expression, const std::string& inner) {
  constexpr std::size_t kPointsLine = 99;
  result += "(pts";
  std::size_t width = kPointsLine, open = 4;
  while ((open = expression.find('(', open + 1)) != std::string_view::npos) {
    const std::string_view point = expression.substr(open, expression.find(')', open) + 1 - open);
    const bool fits = width + point.size() < kPointsLine;
    if (!fits) width = 0;
    fits ? void(result += ' ') : void(result += inner);
    result += point;
    width += point.size() + 1;
    open += point.size() - 1;
  }
}

void LayOutInto(std::string& result, std::string_view expression, const std::string& line, bool tabbed) {
  constexpr std::size_t kOneLine = 240;
  const bool is_short = !tabbed && expression.size() < kOneLine;
  const bool has_points = !is_short && expression.starts_with(kPoints);
  const Parts parts = is_short || has_points ? Parts{} : Split(expression);
  if (parts.lists.empty() && !has_points) {
    result += expression;
    return;
  }
  const std::string inner = line + (tabbed ? "\t" : "  ");
  if (has_points) {
    LayOutPoints(result, expression, inner);
  } else {
    result += parts.head;
    for (const std::string_view list : parts.lists) LayOutInto(result += inner, list, inner, tabbed);
  }
  result += line;
  result += ')';
}

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
  if (blanks.find('\n') == std::string_view::npos) return result + expression;
  result.reserve(expression.size() + expression.size() / 4);
  LayOutInto(result, expression, std::string(blanks), version.IsTabbed());
  return result;
}

}  // namespace Ketril::Editor
