// Dimensions, and the lines that follow from their data.
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "Editor/Copper/Pieces.h"
#include "Editor/Model/Groups.h"

namespace Ketril::Editor {

namespace {

constexpr double kArrowAngle = 27.5 * std::numbers::pi / 180;  // of a head's lines from its shaft

Spot operator+(Spot a, Spot b) {
  return {a.x + b.x, a.y + b.y};
}
Spot operator*(Spot a, double factor) {
  return {a.x * factor, a.y * factor};
}
Spot SpotOf(TCoordPoint point) {
  return {double(point.x), double(point.y)};
}
// The direction of a way, 0, 0 of none.
Spot Along(Spot way) {
  const double length = std::hypot(way.x, way.y);
  return length > 0 ? way * (1 / length) : Spot{0, 0};
}
Spot Way(Spot from, Spot to) {
  return to + from * -1;
}
Spot Turned(Spot way, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {way.x * c - way.y * s, way.x * s + way.y * c};
}

class Drawing {
 public:
  Drawing(const DimensionData& data, const Text* text) : data_(data), text_(text) {}

  std::vector<TrackData> Draw() {
    if (data_.points.size() < 2) return {};
    const Spot start = SpotOf(data_.points[0]), end = SpotOf(data_.points[1]), way = Way(start, end);
    const double reach = std::abs(double(data_.height)), side = data_.height < 0 ? -1 : 1;
    if (data_.style == u"aligned") {
      const Spot out = Along({way.y * side, -way.x * side});
      DrawBar(start, end, start + out * reach, end + out * reach);
    } else if (data_.style == u"orthogonal") {
      // The file has y downwards.
      const Spot bar =
          data_.upright ? Spot{start.x + data_.height, end.y} : Spot{end.x, start.y - data_.height};
      DrawBar(start, end, data_.upright ? Spot{bar.x, start.y} : Spot{start.x, bar.y}, bar);
    } else if (data_.style == u"leader") {
      const Spot tip = start + Along(way) * data_.offset;
      Line(tip, end);
      Head(tip, Along(way));
      ToText(end);
    } else if (data_.style == u"radial") {
      Cross(start, {double(data_.arrow), 0});
      const Spot knee = end + Along(way) * data_.leader;
      Line(end, knee);
      Head(end, Along(way));
      ToText(knee);
    } else if (data_.style == u"center") {
      Cross(start, way);
    }
    return std::move(lines_);
  }

 private:
  void Line(Spot from, Spot to) {
    lines_.push_back({{ToCoord(from.x), ToCoord(from.y)}, {ToCoord(to.x), ToCoord(to.y)}, data_.width});
  }

  void Cross(Spot middle, Spot arm) {
    const Spot other = {-arm.y, arm.x};
    Line(middle + arm * -1, middle + arm);
    Line(middle + other * -1, middle + other);
  }

  void Head(Spot tip, Spot shaft) {
    for (const double angle : {kArrowAngle, -kArrowAngle})
      Line(tip, tip + Turned(shaft, angle) * data_.arrow);
  }

  // The crossbar, and the lines that lead to it from what is measured.
  void DrawBar(Spot start, Spot end, Spot bar_start, Spot bar_end) {
    for (const auto& [from, to] : {std::pair{start, bar_start}, std::pair{end, bar_end}}) {
      const Spot out = Along(Way(from, to));
      Line(from + out * data_.offset, to + out * data_.extension);
    }
    AroundText(bar_start, bar_end);
    const Spot bar = Along(Way(bar_start, bar_end)) * (data_.inward ? -1 : 1);
    Head(bar_start, bar);
    Head(bar_end, bar * -1);
    if (!data_.inward) return;
    Line(bar_start, bar_start + bar * (2.0 * data_.arrow));
    Line(bar_end, bar_end + bar * (-2.0 * data_.arrow));
  }

  void ToText(Spot from) {
    if (text_) AroundText(from, SpotOf(text_->data.anchor));
  }

  // The parts of the line from `from` that are outside of the text.
  void AroundText(Spot from, Spot to) {
    double enters = 0, leaves = 1;
    if (!text_ || !Clip(from, to, enters, leaves)) return Line(from, to);
    const Spot way = Way(from, to);
    if (enters > 0) Line(from, from + way * enters);
    if (leaves < 1) Line(from + way * leaves, to);
  }

  // Which part of the line is within the text, with a pen's width around it; false for none.
  bool Clip(Spot from, Spot to, double& enters, double& leaves) const {
    const Spot anchor = SpotOf(text_->data.anchor);
    const double turn = -text_->data.rotation * std::numbers::pi / 180;
    const Spot a = Turned(Way(anchor, from), turn) + anchor, b = Turned(Way(anchor, to), turn) + anchor;
    const TCoordRect box = text_->Box();
    const double room = data_.width;
    const struct {
      double from, way, low, high;
    } axes[] = {{a.x, b.x - a.x, box.x1 - room, box.x2 + room},
                {a.y, b.y - a.y, box.y1 - room, box.y2 + room}};
    for (const auto& axis : axes) {
      if (axis.way == 0) {
        if (axis.from < axis.low || axis.from > axis.high) return false;
        continue;
      }
      const double t1 = (axis.low - axis.from) / axis.way, t2 = (axis.high - axis.from) / axis.way;
      enters = std::max(enters, std::min(t1, t2));
      leaves = std::min(leaves, std::max(t1, t2));
    }
    return enters < leaves;
  }

  const DimensionData& data_;
  const Text* text_;
  std::vector<TrackData> lines_;
};

}  // namespace

Dimension::Dimension() = default;

std::vector<TrackData> Dimension::DrawnLines() const {
  const Text* text = nullptr;
  for (const Ref<Primitive>& member : Members()) {
    if (member->kind == eTrackObject) return {};
    if (const Text* found = As<Text>(member.Get())) text = found;
  }
  return Drawing(data, text).Draw();
}

std::vector<Primitive*> Dimension::ListMembers() const {
  const std::vector<TrackData> lines = DrawnLines();
  const auto is_same = [&](const Ref<Primitive>& line, const TrackData& wanted) {
    return static_cast<const Track&>(*line).data == wanted && line->state.layer == state.layer;
  };
  if (!std::ranges::equal(lines_, lines, is_same)) {
    lines_.clear();
    for (const TrackData& line : lines) {
      const Ref<Track> track = MakeHost<Track>();
      track->data = line;
      track->state.layer = state.layer;
      lines_.emplace_back(track.Get());
    }
  }
  std::vector<Primitive*> members = Group::ListMembers();
  for (const Ref<Primitive>& line : lines_) members.push_back(line.Get());
  return members;
}

Primitive* Dimension::MemberAt(std::int32_t index) const {
  const std::vector<Primitive*> members = ListMembers();
  const auto place = static_cast<std::size_t>(index);  // a negative one is beyond every end
  return place < members.size() ? members[place] : nullptr;
}

bool Dimension::HasMember(const Primitive& primitive) const {
  return Group::HasMember(primitive) ||
         std::ranges::find(lines_, &primitive, &Ref<Primitive>::Get) != lines_.end();
}

Extent Dimension::OwnExtent() const {
  Extent extent;
  const double pen = std::max(data.width, 0) / 2.0;
  for (const TCoordPoint& point : data.points) extent.Add(point, pen);
  for (const TrackData& line : DrawnLines()) {
    extent.Add(line.p1, pen);
    extent.Add(line.p2, pen);
  }
  return extent;
}

void Dimension::TransformSelf(const PlaneMap& map) {
  map.Apply(data.points);
  if (map.Mirrors() && (data.style == u"aligned" || data.upright))
    data.height = ToCoord(-double(data.height));
}

}  // namespace Ketril::Editor
