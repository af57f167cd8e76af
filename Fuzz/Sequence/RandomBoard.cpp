#include "Fuzz/Sequence/RandomBoard.h"

#include <vector>

#include "Editor/Model/Records.h"
#include "Editor/Rules/Rule.h"

namespace Ketril::Fuzz {

namespace {

std::string Number(double value) {
  std::string text = std::to_string(value);
  return text.substr(0, text.find('.') + 3);
}

constexpr const char* kNets[] = {"", "net A", "net B", "net GND"};
constexpr const char* kCopper[] = {"top", "top", "bottom", "mid1"};
constexpr const char* kLayers[] = {"top",   "bottom", "topoverlay", "bottomoverlay",
                                   "mech1", "mid1",   "topsolder",  "toppaste"};
constexpr const char* kShapes[] = {"round", "rect", "rounded", "octagon"};
constexpr const char* kAngles[] = {"0", "90", "180", "270", "45", "33.3", "359.99", "-90"};
constexpr int kWidths[] = {10, 6, 25, 1, 0, 100};

// A line of the text, word by word.
class Line {
 public:
  explicit Line(Bytes bytes) : bytes_(bytes) {}

  std::string Object(bool in_component) {
    const int kind = bytes_.Below(in_component ? 8 : 14);
    switch (kind) {
      case 0:
        return "track " + Place() + Place() + Width() + OneOf(kCopper) + Net();
      case 1:
        return "arc " + Place() + "r" + std::to_string(bytes_.Below(90)) + " " + OneOf(kAngles) + ".." +
               OneOf(kAngles) + " " + Width() + OneOf(kCopper) + Net();
      case 2:
        return "pad " + Place() + Pad() + Net();
      case 3:
        return "text " + Place() + "\"" + OneOf(kWords) + "\" h" + std::to_string(10 + bytes_.Below(90)) +
               " rot " + OneOf(kAngles) + " " + OneOf(kLayers) + Flags();
      case 4:
        return "fill " + Place() + Place() + "rot " + OneOf(kAngles) + " " + OneOf(kLayers) + Net();
      case 5:
        return "region " + Ring() + OneOf(kCopper) + Net();
      case 6:
        return "track " + Place() + Place() + Width() + OneOf(kLayers) + Flags();
      case 7:
        return "pad " + Place() + "60x60 rect " + OneOf(kCopper) + Net();
      case 8:
        return "via " + Place() + Via() + Net();
      case 9:
        return "zone " + Ring() + OneOf(kCopper) + Net() + " { region " + Ring() + "top }";
      case 10:
        return "dimension " + Place() + Place() + "mech1 { track " + Place() + Place() + "mech1 }";
      case 11:
        return "coordinate " + Place() + "mech1 { text " + Place() + "\"x\" mech1 }";
      case 12:
        return "edge 0,0 1000,0 1000,800 0,800";
      default:
        return "class Power A V*";
    }
  }

  // Up to the brace, which members follow.
  std::string Component(int number) {
    std::string text = "component ";
    text += OneOf(kNames) + std::to_string(number) + " at " + Place();
    if (bytes_.Flag()) text += "bottom ";
    return text + "rot " + OneOf(kAngles) + Flags();
  }

 private:
  static constexpr const char* kWords[] = {"Hello", "", "U1", "a|b=c", "\xC3\xA9\xE2\x82\xAC", ".Designator"};
  static constexpr const char* kNames[] = {"U", "R", "C1_"};

  template <std::size_t count>
  std::string OneOf(const char* const (&choices)[count]) {
    return bytes_.OneOf(choices);
  }
  std::string Place() {
    const TCoordPoint place = RandomPlace(bytes_);
    return Number(place.x / 1e4) + "," + Number(place.y / 1e4) + " ";
  }
  std::string Width() { return "w" + std::to_string(bytes_.OneOf(kWidths)) + " "; }
  std::string Net() { return " " + OneOf(kNets) + Flags(); }
  std::string Flags() {
    const int bits = bytes_.Take();
    std::string text;
    if (bits & 1) text += " selected";
    if ((bits & 14) == 14) text += " locked";
    if ((bits & 112) == 112) text += " union " + std::to_string(bits >> 6);
    if ((bits & 176) == 176) text += " teardrop";
    return text;
  }
  std::string Ring() {
    const TCoordPoint at = RandomPlace(bytes_);
    const int x = at.x / 10000, y = at.y / 10000, wide = 25 * (1 + bytes_.Below(40));
    const std::string low = std::to_string(y), high = std::to_string(y + wide), left = std::to_string(x),
                      right = std::to_string(x + wide), half = std::to_string(x + wide / 2);
    return left + "," + low + " " + right + "," + low + " " + half + "," + high + " ";
  }
  std::string Pad() {
    const int size = bytes_.Take(), form = bytes_.Take();
    std::string text = std::to_string(10 + size % 8 * 15) + "x" + std::to_string(10 + size / 8 % 8 * 15);
    text += std::string(" ") + kShapes[form % 4] + " rot " + kAngles[form / 4 % 8] + " name 1";
    if (form & 32) return text + " hole " + std::to_string(form / 4);
    return text + (form & 64 ? " top" : " bottom");
  }
  std::string Via() {
    constexpr const char* kSpans[] = {"", " top..mid1", " mid1..bottom", " top..bottom"};
    const int size = 5 * (1 + bytes_.Below(20));
    return std::to_string(size) + "/" + std::to_string(size / 2) + bytes_.OneOf(kSpans);
  }

  Bytes bytes_;
};

}  // namespace

std::string RandomBoardText(Bytes bytes) {
  std::string text = bytes.Flag() ? "layers 4\n" : "layers 3\n";
  bool open = false;
  for (int number = 1; !bytes.IsEmpty(); ++number) {
    Bytes object = bytes.Slice(kBytesPerObject);
    const int what = object.Below(8);
    const bool is_component = what < 2;
    if (open && (is_component || what < 4)) text += "}\n", open = false;
    text += is_component ? Line(object).Component(number) : Line(object).Object(open);
    text += is_component ? " {\n" : "\n";
    open |= is_component;
  }
  return text + (open ? "}\n" : "");
}

void AddRandomRules(Editor::Board& board, Bytes bytes) {
  constexpr TRuleKind kKinds[] = {eRule_ConfinementConstraint, eRule_Clearance, eRule_ComponentClearance};
  constexpr const char16_t* kScopes[] = {u"component:U*", u"all", u"", u"net:A", u"layer:top", u"no ( sense"};
  for (int number = 0; !bytes.IsEmpty(); ++number) {
    const Ref<Editor::Rule> rule = Editor::MakeRule(bytes.OneOf(kKinds));
    const TCoordPoint place = RandomPlace(bytes);
    const TCoord wide = RandomLength(bytes), high = RandomLength(bytes);
    Editor::RuleData& data = rule->data;
    data.name = u"Room" + std::u16string(1, static_cast<char16_t>(u'A' + number % 26));
    data.scope1 = bytes.OneOf(kScopes);
    data.gap = data.horizontal_gap = wide / 8;
    data.region_layer = bytes.Flag() ? eV6_BottomLayer : eV6_TopLayer;
    if (data.rule_kind == eRule_ConfinementConstraint) {
      data.region.points = {place, {place.x + wide, place.y}, {place.x + wide, place.y + high}};
      if (bytes.Flag()) data.region.points.push_back({place.x, place.y + high});
      rule->Set(Editor::kFlag_Selected, bytes.Flag());
      const auto channel = Editor::MakeHost<Editor::ObjectClass>();
      channel->data = {u"Channel" + data.name, eClassMemberKind_DesignChannel, {data.name}, {}, {}};
      board.Load(channel.Get());
    }
    board.Load(rule.Get());
  }
}

TCoordPoint RandomPlace(Bytes& bytes) {
  const auto along = [&] {
    constexpr TCoord kStep = 250000;
    const int byte = bytes.Take();
    const TCoord steps = byte & 63;
    switch (byte >> 6) {
      case 2:
        return (steps - 32) * kStep + 3700;
      case 3:
        return (steps - 32) * kStep * (steps > 40 ? 80 : 1);
      default:
        return steps * kStep;
    }
  };
  const TCoord x = along();
  return {x, along()};
}

TCoord RandomLength(Bytes& bytes, bool odd) {
  constexpr TCoord kOdd[] = {-1, -1000000, INT32_MAX, INT32_MIN, 1, 2000000000};
  const int byte = bytes.Take();
  if (odd && byte >= 240) return kOdd[byte % std::size(kOdd)];
  return byte * 50000;
}

Editor::Net* RandomNet(Editor::Board& board, Bytes& bytes) {
  return Editor::As<Editor::Net>(RandomObject(board, {eNetObject}, bytes));
}

Editor::Primitive* RandomObject(Editor::Board& board, TObjectSet kinds, Bytes& bytes) {
  std::vector<Editor::Primitive*> objects;
  board.objects.ForEach(kinds, [&](Editor::Primitive& object) { objects.push_back(&object); });
  const std::size_t chosen = bytes.Take();
  return chosen == 255 || objects.empty() ? nullptr : objects[chosen % objects.size()];
}

}  // namespace Ketril::Fuzz
