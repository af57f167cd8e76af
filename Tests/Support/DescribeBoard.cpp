#include "Tests/Support/DescribeBoard.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <set>
#include <sstream>

#include "Editor/Model/LayerFacts.h"
#include "Platform/Text.h"

namespace Ketril::Tests {

namespace {

using namespace Editor;

class Line {
 public:
  Line& operator<<(TCoordPoint point) { return *this << point.x << point.y; }
  Line& operator<<(TCoord value) {
    text_ << ' ' << value;
    return *this;
  }
  Line& operator<<(double value) {
    text_ << ' ' << std::llround(value * 1e3);
    return *this;
  }
  Line& operator<<(const char* text) {
    text_ << ' ' << text;
    return *this;
  }
  Line& operator<<(const std::u16string& text) {
    text_ << " \"" << Platform::ToUtf8(text) << '"';
    return *this;
  }
  Line& operator<<(TV7_Layer layer) {
    text_ << " L" << std::hex << layer.ID << std::dec;
    return *this;
  }
  Line& operator<<(const std::vector<TCoordPoint>& points) {
    for (const TCoordPoint point : points) *this << point;
    return *this << "|";
  }
  Line& operator<<(const std::vector<Ring>& rings) {
    for (const Ring& ring : rings) *this << (ring.hole ? "hole" : "ring") << ring.points;
    return *this;
  }
  std::string Text() const { return text_.str(); }

 private:
  std::ostringstream text_;
};

void Add(Line& line, const Pad& object) {
  const PadData& pad = object.data;
  line << pad.name << pad.center << pad.hole << pad.hole_width << pad.hole_rotation << pad.rotation
       << pad.mode << pad.plated << pad.remove_unused << pad.keep_end_layers << pad.mask.solder
       << pad.mask.paste << pad.mask.solder_mode << pad.mask.paste_mode << pad.paste_ratio << pad.clearance;
  for (const TV7_Layer layer : std::set<TV7_Layer>(pad.layers.begin(), pad.layers.end())) line << layer;
  for (const TV6_Layer layer : {eV6_TopLayer, eV6_MidLayer1, eV6_BottomLayer}) {
    const PadLayer& copper = object.On(layer);
    line << copper.shape << copper.x_size << copper.y_size << copper.offset
         << (copper.shape == eRoundedRectangular ? copper.corner_ratio : 0) << copper.chamfer_ratio
         << copper.chamfer_corners << copper.trapezoid;
    for (const std::vector<TCoordPoint>& polygon : copper.custom) line << polygon;
  }
}

void AddData(Line& line, const Primitive& object) {
  if (const auto* track = As<Track>(&object)) line << track->data.p1 << track->data.p2 << track->data.width;
  if (const auto* arc = As<Arc>(&object)) {
    const bool is_circle = arc->Sweep() == 360;
    line << arc->data.center << arc->data.radius << arc->data.width << arc->Sweep();
    if (!is_circle) line << arc->data.angle1;
  }
  if (const auto* via = As<Via>(&object)) {
    const ViaData& data = via->data;
    line << data.center << data.size << data.hole << data.low << data.high << data.mode << data.remove_unused
         << data.keep_end_layers;
    for (const TV7_Layer layer : SpannedLayers(via->board, data.low, data.high)) line << via->SizeOn(layer);
  }
  if (const auto* pad = As<Pad>(&object)) Add(line, *pad);
  if (const auto* text = As<Text>(&object)) {
    const TextData& data = text->data;
    line << data.string << data.anchor << data.size << data.letter_width << data.width << data.rotation
         << static_cast<int>(data.horizontal) << static_cast<int>(data.vertical) << data.mirrored
         << static_cast<int>(data.role);
  }
  if (const auto* fill = As<Fill>(&object)) {
    const TCoordRect& box = fill->data.box;
    line << box.Location1() << box.Location2() << fill->data.rotation;
  }
  if (const auto* region = As<Region>(&object)) {
    line << region->data.filled << region->data.closed << region->data.line_width << region->data.rings;
  }
  if (const auto* polygon = As<Polygon>(&object)) {
    const PolygonData& data = polygon->data;
    line << data.name << data.priority << data.clearance << data.min_thickness << data.relief_gap
         << data.relief_conductor << data.solid_connect << data.filled << data.keepout_tracks
         << data.keepout_vias << data.keepout_pads << data.keepout_copper << data.rings;
  }
  if (const auto* component = As<Component>(&object)) {
    const ComponentData& data = component->data;
    line << data.pattern << data.reference << data.rotation << data.kind << data.description;
  }
  if (const auto* net = As<Net>(&object)) line << net->data.name;
  if (const auto* dimension = As<Dimension>(&object)) line << dimension->data.style << dimension->data.points;
  if (const auto* net_class = As<ObjectClass>(&object)) {
    line << net_class->data.name << net_class->data.sizes.clearance << net_class->data.sizes.via_hole;
    for (const std::u16string& member : net_class->data.members) line << member;
  }
}

bool AreNear(const std::string& a, const std::string& b, double tolerance) {
  if (tolerance == 0) return a == b;
  std::istringstream left(a), right(b);
  std::string x, y;
  while (left >> x) {
    if (!(right >> y)) return false;
    char* end_x = nullptr;
    char* end_y = nullptr;
    const double difference = std::strtod(x.c_str(), &end_x) - std::strtod(y.c_str(), &end_y);
    const bool numbers = *end_x == '\0' && *end_y == '\0';
    if (numbers ? std::abs(std::remainder(difference, 360000)) > tolerance : x != y) return false;
  }
  return !(right >> y);
}

}  // namespace

std::string Describe(const Primitive& object) {
  Line line;
  line << KindName(object.kind) << object.state.layer
       << static_cast<TCoord>(object.state.flags & ~kScratchFlags) << object.state.union_index
       << (object.GetNet() ? object.GetNet()->data.name : u"-");
  AddData(line, object);
  return line.Text();
}

namespace {

// Those of the lines that the others have not, a few of them.
std::string Only(std::vector<std::string> lines, std::vector<std::string> others, const char* title) {
  std::ranges::sort(lines);
  std::ranges::sort(others);
  std::vector<std::string> only;
  std::ranges::set_difference(lines, others, std::back_inserter(only));
  std::string text;
  for (std::size_t i = 0; i < std::min<std::size_t>(only.size(), 5); ++i) text += title + only[i] + "\n";
  return text;
}

}  // namespace

std::string Differences(const std::vector<std::string>& expected, const std::vector<std::string>& actual,
                        double tolerance) {
  if (expected.size() != actual.size()) {
    return std::to_string(expected.size()) + " lines became " + std::to_string(actual.size()) + "\n" +
           Only(expected, actual, "only expected") + Only(actual, expected, "  only actual");
  }
  std::string text;
  int shown = 0;
  for (std::size_t i = 0; i < expected.size() && shown < 5; ++i) {
    if (AreNear(expected[i], actual[i], tolerance)) continue;
    ++shown;
    text += "expected" + expected[i] + "\n  actual" + actual[i] + "\n";
  }
  return text;
}

std::vector<std::string> DescribeBoard(const Board& board, bool sorted) {
  std::vector<std::string> lines;
  board.objects.ForEach(TObjectSet::All(),
                        [&](const Primitive& object) { lines.push_back(Describe(object)); });
  if (sorted) std::ranges::sort(lines);
  return lines;
}

}  // namespace Ketril::Tests
