#include "Tests/Support/BoardFromText.h"

#include <charconv>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Editor/Files/LayerNames.h"
#include "Editor/Model/ObjectFactory.h"
#include "Platform/Text.h"

namespace Ketril::Tests {

namespace {

using namespace Editor;

struct Word {
  std::string_view text;
  int line;
};

std::vector<Word> Split(std::string_view text) {
  std::vector<Word> words;
  int line = 1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t begin = i;
    const char c = text[i];
    if (c == '#') {
      while (i + 1 < text.size() && text[i + 1] != '\n') ++i;
    } else if (c == '\n' || c == ';') {
      words.push_back({";", line});
      line += c == '\n' ? 1 : 0;
    } else if (c == '{' || c == '}') {
      words.push_back({text.substr(i, 1), line});
    } else if (c == '"') {
      while (i + 1 < text.size() && text[++i] != '"') {
      }
      words.push_back({text.substr(begin + 1, i - begin - 1), line});
    } else if (c != ' ') {
      while (i + 1 < text.size() && std::string_view(" \n;{}").find(text[i + 1]) == std::string_view::npos)
        ++i;
      words.push_back({text.substr(begin, i + 1 - begin), line});
    }
  }
  return words;
}

std::optional<TV7_Layer> LayerNamed(std::string_view name) {
  struct Named {
    std::string_view name;
    TV6_Layer layer;
  };
  static constexpr Named kNames[] = {{"top", eV6_TopLayer},
                                     {"bottom", eV6_BottomLayer},
                                     {"multi", eV6_MultiLayer},
                                     {"topoverlay", eV6_TopOverlay},
                                     {"bottomoverlay", eV6_BottomOverlay},
                                     {"toppaste", eV6_TopPaste},
                                     {"bottompaste", eV6_BottomPaste},
                                     {"topsolder", eV6_TopSolder},
                                     {"bottomsolder", eV6_BottomSolder}};
  for (const Named& named : kNames) {
    if (named.name == name) return named.layer;
  }
  const auto numbered = [&](std::string_view prefix, int first, int count) -> std::optional<TV7_Layer> {
    int n = 0;
    if (!name.starts_with(prefix)) return {};
    const auto result = std::from_chars(name.data() + prefix.size(), name.data() + name.size(), n);
    if (result.ptr != name.data() + name.size() || n < 1 || n > count) return {};
    return static_cast<TV6_Layer>(first + n - 1);
  };
  if (const auto mid = numbered("mid", eV6_MidLayer1, 30)) return mid;
  return numbered("mech", eV6_Mechanical1, 16);
}

class Builder {
 public:
  explicit Builder(std::string_view text) : words_(Split(text)) {}

  Ref<Board> Build() {
    board_->setup.display_unit = eImperial;
    MakeLayers(2);
    while (at_ < words_.size()) Statement(nullptr);
    return board_;
  }

 private:
  [[noreturn]] void Fail(const std::string& message) const {
    const Word& word = words_[std::min(at_, words_.size() - 1)];
    throw std::runtime_error("board text, line " + std::to_string(word.line) + ", \"" +
                             std::string(word.text) + "\": " + message);
  }

  bool Ends() const {
    return at_ >= words_.size() || words_[at_].text == ";" || words_[at_].text == "{" ||
           words_[at_].text == "}";
  }
  std::string_view Peek() const { return Ends() ? std::string_view() : words_[at_].text; }
  std::string_view Take() {
    if (Ends()) Fail("a word is missing");
    return words_[at_++].text;
  }
  bool TakeIf(std::string_view word) {
    if (Peek() != word) return false;
    ++at_;
    return true;
  }
  double Number(std::string_view text) const {
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) Fail("a number is expected");
    return value;
  }
  // Two numbers around a separator, as "100,100".
  std::optional<std::pair<double, double>> PeekPair(std::string_view separator) const {
    const std::size_t cut = Peek().find(separator);
    if (cut == std::string_view::npos || cut == 0) return {};
    return std::pair{Number(Peek().substr(0, cut)), Number(Peek().substr(cut + separator.size()))};
  }
  std::pair<double, double> TakePair(std::string_view separator) {
    const auto pair = PeekPair(separator);
    if (!pair) Fail("two numbers with \"" + std::string(separator) + "\" are expected");
    ++at_;
    return *pair;
  }
  TCoordPoint TakePoint() {
    const auto [x, y] = TakePair(",");
    return {Mil(x), Mil(y)};
  }
  TCoord TakeLength(char prefix) {
    if (Peek().empty() || Peek()[0] != prefix) Fail(std::string("a length after ") + prefix + " is expected");
    return Mil(Number(Take().substr(1)));
  }
  bool PeekIsPoint() const { return !Ends() && Peek().find(',') != std::string_view::npos; }

  void MakeLayers(int copper) {
    board_->layers.clear();
    const auto add = [&](TV7_Layer id) {
      BoardLayer layer;
      layer.id = id;
      layer.file_name = NameOfLayer(id);
      layer.file_number = NumberOfLayer(id, false);
      layer.kind = IsCopper(id) ? "signal" : "user";
      board_->layers.push_back(std::move(layer));
    };
    add(eV6_TopLayer);
    for (int n = 0; n < copper - 2; ++n) add(static_cast<TV6_Layer>(eV6_MidLayer1 + n));
    add(eV6_BottomLayer);
    for (int n = eV6_TopOverlay; n <= eV6_BottomSolder; ++n) add(static_cast<TV6_Layer>(n));
    for (int n = eV6_Mechanical1; n < eV6_Mechanical1 + 12; ++n) add(static_cast<TV6_Layer>(n));
  }

  Net* NetNamed(std::string_view name) {
    const std::u16string wide = Platform::ToUtf16(name);
    if (Net* net = board_->FindNet(wide)) return net;
    const Ref<Net> net = MakeHost<Net>();
    net->data.name = wide;
    board_->Load(net.Get());
    return net.Get();
  }

  // What every object may say. False when the word is none of it.
  bool Common(Primitive& object) {
    struct Flag {
      std::string_view word;
      std::uint32_t flag;
    };
    static constexpr Flag kFlags[] = {{"selected", kFlag_Selected},
                                      {"locked", kFlag_Locked},
                                      {"keepout", kFlag_KeepOut},
                                      {"teardrop", kFlag_TearDrop}};
    for (const Flag& flag : kFlags) {
      if (!TakeIf(flag.word)) continue;
      object.Set(flag.flag, true);
      return true;
    }
    if (TakeIf("net")) {
      object.SetNet(NetNamed(Take()));
    } else if (TakeIf("union")) {
      object.state.union_index = static_cast<std::int32_t>(Number(Take()));
    } else if (const auto layer = LayerNamed(Peek())) {
      ++at_;
      object.ChangeLayer(*layer);
    } else {
      return false;
    }
    return true;
  }

  template <class T, class Own>
  Ref<Primitive> Rest(const Ref<T>& object, Own&& own) {
    while (!Ends()) {
      if (!own() && !Common(*object)) Fail("this word is not known here");
    }
    return Ref<Primitive>(object.Get());
  }
  template <class T>
  Ref<Primitive> Rest(const Ref<T>& object) {
    return Rest(object, [] { return false; });
  }
  bool TakeRotation(double& rotation) {
    if (!TakeIf("rot")) return false;
    rotation = Number(Take());
    return true;
  }

  Ref<Primitive> MakeTrack() {
    const auto track = MakeHost<Track>();
    track->data.p1 = TakePoint();
    track->data.p2 = TakePoint();
    return Rest(track, [&] {
      if (Peek()[0] != 'w') return false;
      track->data.width = TakeLength('w');
      return true;
    });
  }

  Ref<Primitive> MakeArc() {
    const auto arc = MakeHost<Arc>();
    arc->data.center = TakePoint();
    arc->data.radius = TakeLength('r');
    std::tie(arc->data.angle1, arc->data.angle2) = TakePair("..");
    return Rest(arc, [&] {
      if (Peek()[0] != 'w') return false;
      arc->data.width = TakeLength('w');
      return true;
    });
  }

  Ref<Primitive> MakeVia() {
    const auto via = MakeHost<Via>();
    via->data.center = TakePoint();
    const auto [size, hole] = TakePair("/");
    via->data.size = Mil(size);
    via->data.hole = Mil(hole);
    return Rest(via, [&] {
      const std::size_t dots = Peek().find("..");
      if (dots == std::string_view::npos) return false;
      const auto low = LayerNamed(Peek().substr(0, dots)), high = LayerNamed(Peek().substr(dots + 2));
      if (!low || !high) Fail("two layers are expected");
      via->data.low = *low;
      via->data.high = *high;
      ++at_;
      return true;
    });
  }

  Ref<Primitive> MakePad() {
    const auto pad = MakeHost<Pad>();
    PadLayer& copper = pad->data.stack.front();
    pad->data.center = TakePoint();
    const auto [x, y] = TakePair("x");
    copper.x_size = Mil(x);
    copper.y_size = Mil(y);
    copper.corner_ratio = 0.25;
    struct Named {
      std::string_view name;
      TShape shape;
    };
    static constexpr Named kShapes[] = {{"round", eRounded},
                                        {"rect", eRectangular},
                                        {"octagon", eOctagonal},
                                        {"rounded", eRoundedRectangular}};
    return Rest(pad, [&] {
      for (const Named& named : kShapes) {
        if (!TakeIf(named.name)) continue;
        copper.shape = named.shape;
        return true;
      }
      if (TakeIf("hole")) {
        pad->data.hole = Mil(Number(Take()));
        return true;
      }
      if (TakeIf("name")) {
        pad->data.name = Platform::ToUtf16(Take());
        return true;
      }
      return TakeRotation(pad->data.rotation);
    });
  }

  Ref<Primitive> MakeText() {
    const auto text = MakeHost<Text>();
    text->data.anchor = TakePoint();
    text->data.string = Platform::ToUtf16(Take());
    return Rest(text, [&] {
      if (Peek()[0] == 'h') {
        text->data.size = text->data.letter_width = TakeLength('h');
        return true;
      }
      if (TakeIf("designator") || TakeIf("comment")) {
        text->data.role = words_[at_ - 1].text == "comment" ? TextRole::Comment : TextRole::Designator;
        return true;
      }
      return TakeRotation(text->data.rotation);
    });
  }

  Ref<Primitive> MakeFill() {
    const auto fill = MakeHost<Fill>();
    const TCoordPoint low = TakePoint(), high = TakePoint();
    fill->data.box = {low.x, low.y, high.x, high.y};
    return Rest(fill, [&] { return TakeRotation(fill->data.rotation); });
  }

  template <class T>
  Ref<Primitive> MakeRing() {
    const auto object = MakeHost<T>();
    Ring& ring = object->data.rings.emplace_back();
    while (PeekIsPoint()) ring.points.push_back(TakePoint());
    return Rest(object);
  }

  void MakeEdge() {
    std::vector<TCoordPoint> points;
    while (PeekIsPoint()) points.push_back(TakePoint());
    for (std::size_t i = 0; i < points.size(); ++i) {
      const auto line = MakeHost<Track>();
      line->data.p1 = points[i];
      line->data.p2 = points[(i + 1) % points.size()];
      line->state.layer = kEdgeLayer;
      board_->Load(line.Get());
    }
  }

  void MakeClass() {
    const auto net_class = MakeHost<ObjectClass>();
    net_class->data.name = Platform::ToUtf16(Take());
    while (!Ends()) net_class->data.patterns.push_back(Platform::ToUtf16(Take()));
    board_->Load(net_class.Get());
  }

  void MakeComponent() {
    const auto component = MakeHost<Component>();
    const auto name = MakeHost<Text>();
    name->data.string = Platform::ToUtf16(Take());
    name->data.role = TextRole::Designator;
    name->data.anchor = {0, Mil(100)};
    component->AddMember(name.Get());
    if (!TakeIf("at")) Fail("\"at\" is expected");
    const TCoordPoint place = TakePoint();
    double rotation = 0;
    Rest(component, [&] {
      if (TakeIf("pattern")) {
        component->data.pattern = Platform::ToUtf16(Take());
        return true;
      }
      return TakeRotation(rotation);
    });
    const TV7_Layer side = std::exchange(component->state.layer, eV6_TopLayer);
    TakeMembers(*component);
    board_->Load(component.Get());  // turning it over asks the board for its layers
    if (side == eV6_BottomLayer) component->Flip();
    component->Rotate({0, 0}, rotation - component->data.rotation);
    component->Transform(PlaneMap::Translation(place.x, place.y));
    component->AfterWrite();
  }

  Ref<Primitive> MakeDimension() {
    const auto dimension = MakeHost<Dimension>();
    while (PeekIsPoint()) dimension->data.points.push_back(TakePoint());
    return Rest(dimension);
  }

  Ref<Primitive> MakeCoordinate() {
    const auto coordinate = MakeHost<Coordinate>();
    coordinate->data.location = TakePoint();
    return Rest(coordinate);
  }

  // In braces, where they follow.
  void TakeMembers(Group& group) {
    if (at_ >= words_.size() || words_[at_].text != "{") return;
    for (++at_; at_ < words_.size() && words_[at_].text != "}";) Statement(&group);
    if (at_++ >= words_.size()) Fail("a brace is not closed");
  }

  Ref<Primitive> MakeNamed(std::string_view kind) {
    if (kind == "track") return MakeTrack();
    if (kind == "arc") return MakeArc();
    if (kind == "via") return MakeVia();
    if (kind == "pad") return MakePad();
    if (kind == "text") return MakeText();
    if (kind == "fill") return MakeFill();
    if (kind == "region") return MakeRing<Region>();
    if (kind == "zone") return MakeRing<Polygon>();
    if (kind == "dimension") return MakeDimension();
    if (kind == "coordinate") return MakeCoordinate();
    Fail("this kind of object is not known");
  }

  // One object, into a group or, with null, onto the board.
  void Statement(Group* group) {
    if (words_[at_].text == ";") {
      ++at_;
      return;
    }
    const std::string_view kind = Take();
    if (kind == "layers") {
      MakeLayers(static_cast<int>(Number(Take())));
    } else if (kind == "net") {
      NetNamed(Take());
    } else if (kind == "class") {
      MakeClass();
    } else if (kind == "edge") {
      MakeEdge();
    } else if (kind == "component") {
      MakeComponent();
    } else {
      const Ref<Primitive> object = MakeNamed(kind);
      if (object->MemberList()) TakeMembers(static_cast<Group&>(*object));
      if (!group) {
        board_->Load(object.Get());
      } else {
        group->AddMember(object.Get());
      }
    }
  }

  const std::vector<Word> words_;
  std::size_t at_ = 0;
  const Ref<Board> board_ = MakeHost<Board>();
};

}  // namespace

Ref<Board> BoardFromText(std::string_view text) {
  return Builder(text).Build();
}

}  // namespace Ketril::Tests
