#include "Editor/Model/Shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Editor/Copper/Outline.h"
#include "Editor/Model/Component.h"
#include "Editor/Model/LayerFacts.h"
#include "Editor/Model/Polygon.h"

namespace Ketril::Editor {

namespace {

constexpr double kLinePitch = 1.6;

// The value of a variable of a component's text; false for a name that is not known.
bool Look(const Component& component, const Text& text, std::u16string_view name, std::u16string& value) {
  const auto text_of = [](const Text* other) { return other ? other->data.string : std::u16string(); };
  const std::u16string& pattern = component.data.pattern;
  const std::size_t colon = pattern.find(u':');
  if (name == u"REFERENCE") {
    value = text_of(component.NameText());
  } else if (name == u"VALUE") {
    value = text_of(component.CommentText());
  } else if (name == u"LAYER") {
    value = text.LayerText();
  } else if (name == u"FOOTPRINT_NAME") {
    value = colon == std::u16string::npos ? pattern : pattern.substr(colon + 1);
  } else if (name == u"FOOTPRINT_LIBRARY") {
    value = colon == std::u16string::npos ? std::u16string() : pattern.substr(0, colon);
  } else {
    return false;
  }
  return true;
}

}  // namespace

Text::Text() {
  state.layer = eV6_TopOverlay;
}

std::u16string Text::Shown() const {
  const std::u16string& stored = data.string;
  const Component* component = OwnerAs<Component>();
  if (!component || stored.find_first_of(u"$%") == std::u16string::npos) return stored;
  std::u16string shown, value;
  for (std::size_t i = 0; i < stored.size(); ++i) {
    const std::size_t close = stored.compare(i, 2, u"${") == 0 ? stored.find(u'}', i) : std::u16string::npos;
    if (close != std::u16string::npos &&
        Look(*component, *this, std::u16string_view(stored).substr(i + 2, close - i - 2), value)) {
      shown += value;
      i = close;
    } else if (stored.compare(i, 2, u"%R") == 0 || stored.compare(i, 2, u"%V") == 0) {
      Look(*component, *this, stored[i + 1] == u'R' ? u"REFERENCE" : u"VALUE", value);
      shown += value;
      ++i;
    } else {
      shown += stored[i];
    }
  }
  return shown;
}

TCoordRect Text::Box() const {
  std::size_t lines = 1, longest = 0, letters = 0;
  for (const char16_t c : Shown()) {
    const bool second_half = c >= 0xdc00 && c <= 0xdfff;
    if (c == u'\n') {
      ++lines;
      letters = 0;
    } else if (!second_half) {
      longest = std::max(longest, ++letters);
    }
  }
  const double size = std::max(data.size, 0), pen = std::max(data.width, 0) / 2.0;
  const double width = static_cast<double>(longest) * std::max(data.letter_width, 0);
  const double height = size * (1 + kLinePitch * static_cast<double>(lines - 1));
  // Aligned low it begins at the anchor, aligned high it ends there.
  const double share_x = (static_cast<int>(data.horizontal) + 1) / 2.0;
  const double share_y = (static_cast<int>(data.vertical) + 1) / 2.0;
  const double x1 = data.mirrored ? (share_x - 1) * width : -share_x * width;
  Extent extent;
  extent.Add(data.anchor.x + x1, data.anchor.y - share_y * height, pen);
  extent.Add(data.anchor.x + x1 + width, data.anchor.y + (1 - share_y) * height, pen);
  return extent.Rect();
}

TCoordRect Text::Bounds() const {
  const TCoordRect box = Box();
  const Direction turn = DirectionOf(data.rotation);
  Extent extent;
  for (const TCoord corner_x : {box.x1, box.x2}) {
    for (const TCoord corner_y : {box.y1, box.y2}) {
      const double x = double{1} * corner_x - data.anchor.x, y = double{1} * corner_y - data.anchor.y;
      extent.Add(data.anchor.x + turn.cos * x - turn.sin * y, data.anchor.y + turn.sin * x + turn.cos * y);
    }
  }
  return extent.Rect();
}

void Text::Transform(const PlaneMap& map) {
  data.anchor = map(data.anchor);
  data.rotation = map.MirroredShapeAngle(data.rotation);
}

void Text::MirrorLayers() {
  const TV7_Layer before = state.layer;
  Primitive::MirrorLayers();
  if (!(before == state.layer)) data.mirrored = !data.mirrored;
}

double ShownRotation(const TextData& text) {
  const double turn = std::remainder(text.rotation, 360);
  const bool stands_on_head = text.keeps_upright && (turn > 90 || turn <= -90);
  return stands_on_head ? std::fmod(CleanAngle(turn + 180), 360) : text.rotation;
}

Ref<Primitive> Text::FreeCopy() const {
  Ref<Primitive> copy = Copy();
  if (OwnerAs<Component>()) {
    TextData& free = As<Text>(copy.Get())->data;
    free.string = Shown();
    free.role = TextRole::Free;
    // Only a footprint's text is turned when it is shown.
    free.rotation = ShownRotation(free);
    free.keeps_upright = false;
  }
  return copy;
}

void Text::SetSize(TCoord size) {
  data.letter_width = data.size > 0 ? ToCoord(double{1} * data.letter_width / data.size * size) : size;
  data.size = size;
}

Fill::Fill() = default;

TCoordRect Fill::Bounds() const {
  const double x = (double{1} * data.box.x1 + data.box.x2) / 2,
               y = (double{1} * data.box.y1 + data.box.y2) / 2;
  const double hx = data.box.x2 - x, hy = data.box.y2 - y;
  const Direction turn = DirectionOf(data.rotation);
  const double reach_x = std::abs(turn.cos * hx) + std::abs(turn.sin * hy);
  const double reach_y = std::abs(turn.sin * hx) + std::abs(turn.cos * hy);
  Extent extent;
  extent.Add(x - reach_x, y - reach_y);
  extent.Add(x + reach_x, y + reach_y);
  return extent.Rect();
}

TCoordPoint Fill::Reference() const {
  return {ToCoord((std::int64_t{data.box.x1} + data.box.x2) / 2),
          ToCoord((std::int64_t{data.box.y1} + data.box.y2) / 2)};
}

void Fill::Transform(const PlaneMap& map) {
  if (map.KeepsBoxes()) {
    data.box = map.Box(data.box);
    if (map.Mirrors()) data.rotation = 0 - data.rotation;
    return;
  }
  const TCoordPoint from = Reference(), to = map(from);
  data.box = PlaneMap::Translation(std::int64_t{to.x} - from.x, std::int64_t{to.y} - from.y).Box(data.box);
  data.rotation = map.Angle(data.rotation);
}

TCoordRect BoundsOf(const RegionData& region) {
  Extent extent;
  for (const Ring& ring : region.rings) {
    for (const TCoordPoint& point : ring.points) extent.Add(point, std::max(region.line_width, 0) / 2.0);
  }
  return extent.Rect();
}

double AreaOf(const std::vector<Ring>& rings) {
  double area = 0;
  for (const Ring& ring : rings) area += (ring.hole ? -1 : 1) * std::abs(AreaOf(ring));
  return area;
}

Region::Region() = default;

Ref<Primitive> Region::FreeCopy() const {
  constexpr double kError = 200;  // by which chords run inside of what the pen rounds
  Ref<Primitive> copy = Copy();
  if (!OwnerAs<Polygon>() || data.line_width <= 0) return copy;
  std::vector<Ring> covered = Outline(FormsOf(*this, state.layer), 0, kError);
  if (covered.empty()) return copy;
  std::ranges::stable_sort(covered, {}, &Ring::hole);  // outer rings first
  RegionData& area = As<Region>(copy.Get())->data;
  area.rings = std::move(covered);
  area.line_width = 0;
  return copy;
}

std::int32_t Region::PointCount() const {
  const std::size_t count = data.rings.empty() ? 0 : data.rings.front().points.size();
  return static_cast<std::int32_t>(count + (closing_counts_ && count > 0 ? 1 : 0));
}

Status Region::SegmentAt(std::int32_t index, TPolySegment& segment) const {
  if (data.rings.empty()) return Status::InvalidArgument;
  return SegmentOf(data.rings.front(), closing_counts_ && index == PointCount() ? 0 : index, segment);
}

Status Region::PutSegmentAt(std::int32_t index, const TPolySegment& segment) {
  if (data.rings.empty()) return Status::InvalidArgument;
  Status status = Status::Ok;
  Write([&] { status = PutSegment(data.rings.front(), index, segment); });
  return status;
}

Status Region::PutPointCount(std::int32_t count) {
  if (count < 0) return Status::InvalidArgument;
  Write([&] {
    if (data.rings.empty()) data.rings.emplace_back();
    std::vector<TCoordPoint>& points = data.rings.front().points;
    if (std::exchange(closing_counts_, false) && !points.empty()) points.push_back(points.front());
    points.resize(static_cast<std::size_t>(count));
  });
  return Status::Ok;
}

void Region::CountClosing() {
  closing_counts_ = true;
  AfterWrite();
}

void Region::Tidy() {
  closing_counts_ = false;
  for (Ring& ring : data.rings) Editor::RemoveRedundantVertices(ring);
  std::erase_if(data.rings, [](const Ring& ring) { return ring.points.empty(); });
}

ComponentBody::ComponentBody() = default;

}  // namespace Ketril::Editor
