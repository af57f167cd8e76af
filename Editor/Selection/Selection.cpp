#include "Editor/Selection/Selection.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "Editor/Rules/Rule.h"
#include "Platform/Text.h"

namespace Ketril::Editor {

enum class Test {
  All,
  Kind,
  Room,
  Free,
  Locked,
  Selected,
  TearDrop,
  Smd,
  Through,
  OnNet,
  OfClass,
  OnLayer,
  OfComponent,
  OfSheet,
  OfComponentClass,
  OfGroup,
  Named,
  Within,
  Not,
  And,
  Or,
};

struct Selection::Node {
  Test test = Test::All;
  TObjectId kind = eNoObject;
  std::u16string name;
  TCoordRect area;
  std::vector<std::unique_ptr<Node>> parts;
};

SelectionError::SelectionError(std::size_t column, const std::string& message)
    : std::runtime_error("selection, column " + std::to_string(column) + ": " + message), column_(column) {}

bool MatchesPattern(std::u16string_view name, std::u16string_view pattern) {
  // Greedy with one point to come back to: linear but for the last star.
  std::size_t n = 0, p = 0, star = std::u16string_view::npos, resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
      ++n, ++p;
    } else if (star != std::u16string_view::npos) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == u'*') ++p;
  return p == pattern.size();
}

namespace {

using Node = Selection::Node;
using NodePtr = std::unique_ptr<Node>;

constexpr int kDeepest = 200;  // of parentheses and `not`, so that no input exhausts the stack

struct Word {
  const char16_t* text;
  Test test;
  TObjectId kind;
};
constexpr std::array kWords{
    Word{u"all", Test::All, eNoObject},
    Word{u"free", Test::Free, eNoObject},
    Word{u"locked", Test::Locked, eNoObject},
    Word{u"selected", Test::Selected, eNoObject},
    Word{u"teardrop", Test::TearDrop, eNoObject},
    Word{u"smd", Test::Smd, eNoObject},
    Word{u"through", Test::Through, eNoObject},
    Word{u"track", Test::Kind, eTrackObject},
    Word{u"arc", Test::Kind, eArcObject},
    Word{u"via", Test::Kind, eViaObject},
    Word{u"pad", Test::Kind, ePadObject},
    Word{u"text", Test::Kind, eTextObject},
    Word{u"fill", Test::Kind, eFillObject},
    Word{u"region", Test::Kind, eRegionObject},
    Word{u"zone", Test::Kind, ePolyObject},
    Word{u"component", Test::Kind, eComponentObject},
    Word{u"net", Test::Kind, eNetObject},
    Word{u"dimension", Test::Kind, eDimensionObject},
    Word{u"rule", Test::Kind, eRuleObject},
    Word{u"room", Test::Room, eNoObject},
    Word{u"body", Test::Kind, eComponentBodyObject},
    Word{u"connection", Test::Kind, eConnectionObject},
};
constexpr std::array kKeys{
    Word{u"net", Test::OnNet, eNoObject},     Word{u"class", Test::OfClass, eNoObject},
    Word{u"layer", Test::OnLayer, eNoObject}, Word{u"component", Test::OfComponent, eNoObject},
    Word{u"sheet", Test::OfSheet, eNoObject}, Word{u"component-class", Test::OfComponentClass, eNoObject},
    Word{u"group", Test::OfGroup, eNoObject}, Word{u"name", Test::Named, eNoObject},
    Word{u"in", Test::Within, eNoObject},
};

template <class Table>
const Word* Find(const Table& table, std::u16string_view word) {
  for (const Word& entry : table) {
    if (Platform::EqualsIgnoringAsciiCase(entry.text, word)) return &entry;
  }
  return nullptr;
}

template <class Table>
std::string List(const Table& table) {
  std::string list;
  for (const Word& entry : table) list += (list.empty() ? "" : ", ") + Platform::ToUtf8(entry.text);
  return list;
}

class Parser {
 public:
  Parser(std::string_view text, LengthUnit unit) : text_(Platform::ToUtf16(text)), unit_(unit) {}

  NodePtr Parse() {
    NodePtr root = Either(0);
    SkipBlanks();
    if (at_ < text_.size()) Fail(at_, "an `and`, an `or` or the end is expected here");
    return root;
  }

 private:
  [[noreturn]] static void Fail(std::size_t at, const std::string& message) {
    throw SelectionError(at + 1, message);
  }

  void SkipBlanks() {
    while (at_ < text_.size() && text_[at_] <= u' ') ++at_;
  }

  bool TakeSign(char16_t sign) {
    SkipBlanks();
    if (at_ >= text_.size() || text_[at_] != sign) return false;
    ++at_;
    return true;
  }

  static bool EndsWord(char16_t c) {
    return c <= u' ' || std::u16string_view(u"()&|!:\"").find(c) != std::u16string_view::npos;
  }

  std::u16string_view PeekWord() {
    SkipBlanks();
    std::size_t end = at_;
    while (end < text_.size() && !EndsWord(text_[end])) ++end;
    return std::u16string_view(text_).substr(at_, end - at_);
  }

  bool TakeWord(std::u16string_view word) {
    if (!Platform::EqualsIgnoringAsciiCase(PeekWord(), word)) return false;
    at_ += word.size();
    return true;
  }

  NodePtr Chain(Test test, int depth, char16_t sign, std::u16string_view word, NodePtr (Parser::*part)(int)) {
    NodePtr first = (this->*part)(depth);
    NodePtr chain;
    while (TakeSign(sign) || TakeWord(word)) {
      if (!chain) {
        chain = std::make_unique<Node>();
        chain->test = test;
        chain->parts.push_back(std::move(first));
      }
      chain->parts.push_back((this->*part)(depth));
    }
    return chain ? std::move(chain) : std::move(first);
  }

  NodePtr Either(int depth) { return Chain(Test::Or, depth, u'|', u"or", &Parser::Both); }
  NodePtr Both(int depth) { return Chain(Test::And, depth, u'&', u"and", &Parser::Single); }

  NodePtr Single(int depth) {
    SkipBlanks();
    if (depth > kDeepest) Fail(at_, "more than 200 parentheses and `not`s within one another");
    if (TakeSign(u'!') || TakeWord(u"not")) {
      auto node = std::make_unique<Node>();
      node->test = Test::Not;
      node->parts.push_back(Single(depth + 1));
      return node;
    }
    const std::size_t start = at_;
    if (TakeSign(u'(')) {
      NodePtr inner = Either(depth + 1);
      if (!TakeSign(u')')) Fail(start, "this parenthesis is not closed");
      return inner;
    }
    return Simple();
  }

  NodePtr Simple() {
    const std::u16string_view word = PeekWord();
    const std::size_t start = at_;
    if (word.empty()) Fail(start, "a word is expected here: " + List(kWords));
    at_ += word.size();
    auto node = std::make_unique<Node>();
    if (at_ < text_.size() && text_[at_] == u':') {
      const Word* key = Find(kKeys, word);
      if (!key) Fail(start, "\"" + Platform::ToUtf8(word) + ":\" is not known; there are " + List(kKeys));
      ++at_;
      node->test = key->test;
      const std::size_t value_at = at_;
      node->name = Value();
      if (key->test == Test::Within) node->area = Area(node->name, value_at);
      return node;
    }
    const Word* entry = Find(kWords, word);
    if (!entry) Fail(start, "\"" + Platform::ToUtf8(word) + "\" is not known; there are " + List(kWords));
    node->test = entry->test;
    node->kind = entry->kind;
    return node;
  }

  std::u16string Value() {
    std::u16string value;
    const std::size_t start = at_;
    if (at_ < text_.size() && text_[at_] == u'"') {
      for (++at_; at_ < text_.size() && text_[at_] != u'"'; ++at_) {
        if (text_[at_] == u'\\' && at_ + 1 < text_.size()) ++at_;
        value += text_[at_];
      }
      if (at_ >= text_.size()) Fail(start, "this quote is not closed");
      ++at_;
      return value;
    }
    while (at_ < text_.size() && text_[at_] > u' ' && text_[at_] != u')' && text_[at_] != u'&' &&
           text_[at_] != u'|') {
      value += text_[at_++];
    }
    if (value.empty()) Fail(start, "a value is expected here");
    return value;
  }

  // In units, y up.
  TCoordRect Area(const std::u16string& value, std::size_t at) const {
    const std::string text = Platform::ToUtf8(value);
    std::array<double, 4> numbers{};
    std::size_t from = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      const std::size_t comma = std::min(text.find(',', from), text.size());
      const bool last = i + 1 == numbers.size();
      const auto length = ParseLength(std::string_view(text).substr(from, comma - from), unit_);
      if (!length || last != (comma == text.size())) {
        Fail(at, "four lengths are expected here, as in:10,10,25.4mm,1in");
      }
      numbers[i] = *length;
      from = comma + 1;
    }
    const auto unit = [](double v) {
      return static_cast<TCoord>(std::clamp(v, -2147483647.0, 2147483647.0));
    };
    return {unit(std::min(numbers[0], numbers[2])), unit(std::min(-numbers[1], -numbers[3])),
            unit(std::max(numbers[0], numbers[2])), unit(std::max(-numbers[1], -numbers[3]))};
  }

  std::u16string text_;
  LengthUnit unit_;
  std::size_t at_ = 0;
};

const Component* ComponentOf(const Primitive& object) {
  const Component* self = As<Component>(&object);
  return self ? self : object.OwnerAs<Component>();
}

bool IsAnyOf(const std::vector<std::u16string>& names, const std::u16string& pattern) {
  return std::ranges::any_of(names,
                             [&](const std::u16string& name) { return MatchesPattern(name, pattern); });
}

bool IsRoom(const Primitive& object) {
  const Rule* const rule = As<Rule>(&object);
  return rule && rule->data.rule_kind == eRule_ConfinementConstraint;
}

bool IsNamed(const Primitive& object, const std::u16string& pattern) {
  if (const Pad* pad = As<Pad>(&object)) return MatchesPattern(pad->data.name, pattern);
  if (const Net* net = As<Net>(&object)) return MatchesPattern(net->data.name, pattern);
  if (const Component* component = As<Component>(&object))
    return MatchesPattern(component->Designator(), pattern);
  if (const Text* text = As<Text>(&object)) return MatchesPattern(text->Shown(), pattern);
  if (const Polygon* zone = As<Polygon>(&object)) return MatchesPattern(zone->data.name, pattern);
  if (const Rule* rule = As<Rule>(&object)) return MatchesPattern(rule->data.name, pattern);
  return false;
}

bool StandsOn(const Primitive& object, const Board& board, const std::u16string& name) {
  const TV7_Layer layer = object.state.layer;
  const auto is = [&](std::u16string_view word) { return Platform::EqualsIgnoringAsciiCase(name, word); };
  if (is(u"top")) return layer == eV6_TopLayer;
  if (is(u"bottom")) return layer == eV6_BottomLayer;
  if (is(u"multi")) return layer == eV6_MultiLayer;
  const BoardLayer* entry = board.FindLayer(layer);
  return entry && (is(entry->user_name) || is(Platform::ToUtf16(entry->file_name)));
}

bool Matches(const Node& node, const Primitive& object, const Board& board) {
  const auto matches = [&](const NodePtr& part) { return Matches(*part, object, board); };
  switch (node.test) {
    case Test::All:
      return true;
    case Test::Kind:
      return object.kind == node.kind;
    case Test::Room:
      return IsRoom(object);
    case Test::Free:
      return object.Owner() == nullptr;
    case Test::Locked:
      return object.Has(kFlag_Locked);
    case Test::Selected:
      return object.Has(kFlag_Selected);
    case Test::TearDrop:
      return object.Has(kFlag_TearDrop);
    case Test::Smd:
      return object.kind == ePadObject && !(object.state.layer == eV6_MultiLayer);
    case Test::Through:
      return object.kind == ePadObject && object.state.layer == eV6_MultiLayer;
    case Test::OnNet:
      return object.GetNet() && MatchesPattern(object.GetNet()->data.name, node.name);
    case Test::OfClass: {
      const ObjectClass* net_class = object.GetNet() ? board.ClassOf(object.GetNet()) : nullptr;
      return net_class && MatchesPattern(net_class->data.name, node.name);
    }
    case Test::OnLayer:
      return StandsOn(object, board, node.name);
    case Test::OfComponent: {
      const Component* component = ComponentOf(object);
      return component && MatchesPattern(component->Designator(), node.name);
    }
    case Test::OfSheet:
    case Test::OfComponentClass:
    case Test::OfGroup: {
      const Component* component = ComponentOf(object);
      if (!component) return false;
      const ComponentOrigin& origin = component->origin;
      if (node.test == Test::OfSheet) return MatchesPattern(origin.sheet, node.name);
      return IsAnyOf(node.test == Test::OfGroup ? origin.groups : origin.classes, node.name);
    }
    case Test::Named:
      return IsNamed(object, node.name);
    case Test::Within: {
      const TCoordRect box = object.Bounds();
      return box.x1 >= node.area.x1 && box.y1 >= node.area.y1 && box.x2 <= node.area.x2 &&
             box.y2 <= node.area.y2;
    }
    case Test::Not:
      return !matches(node.parts.front());
    case Test::And:
      return std::all_of(node.parts.begin(), node.parts.end(), matches);
    case Test::Or:
      return std::any_of(node.parts.begin(), node.parts.end(), matches);
  }
  return false;
}

}  // namespace

Selection::Selection(std::string_view text, LengthUnit default_unit)
    : root_(Parser(text, default_unit).Parse()) {}
Selection::~Selection() = default;
Selection::Selection(Selection&&) noexcept = default;
Selection& Selection::operator=(Selection&&) noexcept = default;

bool Selection::Matches(const Primitive& object, const Board& board) const {
  return Editor::Matches(*root_, object, board);
}

std::size_t Selection::Apply(Board& board) const {
  std::size_t count = 0;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    // Judged by the selection as it was: `selected` may be part of the expression.
    const bool match = Matches(object, board);
    object.Set(kFlag_Selected, match);
    count += match ? 1 : 0;
  });
  board.SelectionChanged();
  return count;
}

}  // namespace Ketril::Editor
