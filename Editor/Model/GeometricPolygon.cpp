#include "Editor/Model/GeometricPolygon.h"

#include <utility>

namespace Ketril::Editor {

namespace {

__extension__ using Wide = __int128;  // products of differences of coordinates need 67 bits

bool IsRedundant(TCoordPoint before, TCoordPoint point, TCoordPoint after) {
  const std::int64_t ax = std::int64_t{point.x} - before.x, ay = std::int64_t{point.y} - before.y;
  const std::int64_t bx = std::int64_t{after.x} - point.x, by = std::int64_t{after.y} - point.y;
  return Wide{ax} * by == Wide{ay} * bx;
}

template <class T>
const T* At(const std::vector<T>& items, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < items.size()
             ? &items[static_cast<std::size_t>(index)]
             : nullptr;
}

Status ReadPoints(IPCB_Contour* contour, std::vector<TCoordPoint>& points) {
  std::int32_t count = 0;
  if (!contour) return Status::InvalidArgument;
  if (const Status status = contour->GetState_Count(count); Failed(status)) return status;
  for (std::int32_t i = 0; i < count; ++i) {
    TCoordPoint point;
    if (const Status status = contour->GetState_PointX(i, point.x); Failed(status)) return status;
    if (const Status status = contour->GetState_PointY(i, point.y); Failed(status)) return status;
    points.push_back(point);
  }
  return Status::Ok;
}

}  // namespace

bool IsInside(const std::vector<TCoordPoint>& points, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
    const TCoordPoint a = points[i], b = points[j];
    if ((a.y > y) == (b.y > y)) continue;
    const double t = (y - a.y) / (static_cast<double>(b.y) - a.y);
    if (x < a.x + t * (static_cast<double>(b.x) - a.x)) inside = !inside;
  }
  return inside;
}

double AreaOf(const Ring& ring) {
  double twice = 0;
  for (std::size_t i = 0, last = ring.points.size() - 1; i < ring.points.size(); last = i++) {
    const TCoordPoint a = ring.points[last], b = ring.points[i], origin = ring.points.front();
    twice += (double{1} * a.x - origin.x) * (double{1} * b.y - origin.y) -
             (double{1} * b.x - origin.x) * (double{1} * a.y - origin.y);
  }
  return twice / 2;
}

void RemoveRedundantVertices(Ring& ring) {
  std::vector<TCoordPoint> kept;
  kept.reserve(ring.points.size());
  const auto drop_last = [&](TCoordPoint next) {
    while (kept.size() >= 2 && IsRedundant(kept[kept.size() - 2], kept.back(), next)) kept.pop_back();
    if (kept.size() == 1 && kept.back() == next) kept.pop_back();
  };
  for (const TCoordPoint& point : ring.points) {
    drop_last(point);
    kept.push_back(point);
  }
  // Where the end meets the beginning either side may be redundant, again and again.
  std::size_t first = 0;
  while (kept.size() - first >= 3) {
    if (IsRedundant(kept[kept.size() - 2], kept.back(), kept[first])) {
      kept.pop_back();
    } else if (IsRedundant(kept.back(), kept[first], kept[first + 1])) {
      ++first;
    } else {
      break;
    }
  }
  if (kept.size() - first < 3) first = kept.size();
  ring.points.assign(kept.begin() + static_cast<std::ptrdiff_t>(first), kept.end());
}

Status SegmentOf(const Ring& ring, std::int32_t index, TPolySegment& segment) {
  const auto count = static_cast<std::int32_t>(ring.points.size());
  if (index < 0 || index > count || count == 0) return Status::InvalidArgument;
  const TCoordPoint start = ring.points[static_cast<std::size_t>(index % count)];
  segment = {};
  segment.vx = start.x;
  segment.vy = start.y;
  return Status::Ok;
}

Status PutSegment(Ring& ring, std::int32_t index, const TPolySegment& segment) {
  const std::size_t count = ring.points.size();
  const auto at = static_cast<std::size_t>(index);
  if (index < 0 || at > count || segment.Kind != ePolySegmentLine) return Status::InvalidArgument;
  const TCoordPoint start{segment.vx, segment.vy};
  if (at == count) return count > 0 && ring.points.front() == start ? Status::Ok : Status::InvalidArgument;
  ring.points[at] = start;
  return Status::Ok;
}

Contour::Contour(const std::vector<TCoordPoint>& points) {
  vertices_.reserve(points.size());
  for (const TCoordPoint point : points) vertices_.push_back({double(point.x), double(point.y)});
}

std::vector<TCoordPoint> Contour::Points() const {
  std::vector<TCoordPoint> points;
  points.reserve(vertices_.size());
  for (const Tgpc_vertex& vertex : vertices_) points.push_back({ToCoord(vertex.x), ToCoord(vertex.y)});
  return points;
}

Status Contour::Insert(std::int32_t index, TCoord x, TCoord y) {
  if (index < 0 || static_cast<std::size_t>(index) > vertices_.size()) return Status::InvalidArgument;
  vertices_.insert(vertices_.begin() + index, {double(x), double(y)});
  return Status::Ok;
}

void Contour::Delete(std::int32_t index) {
  if (index >= 0 && static_cast<std::size_t>(index) < vertices_.size())
    vertices_.erase(vertices_.begin() + index);
}

Status Contour::Append(IPCB_Contour* contour, std::int32_t first, std::int32_t last) {
  if (!contour) return Status::InvalidArgument;
  std::int32_t count = 0;
  if (const Status status = contour->GetState_Count(count); Failed(status)) return status;
  const std::int64_t end = last < first ? std::int64_t{last} + count : last;
  std::int64_t i = first;
  do {
    TCoord x = 0, y = 0;
    if (const Status status = contour->GetState_PointX(static_cast<std::int32_t>(i), x); Failed(status))
      return status;
    if (const Status status = contour->GetState_PointY(static_cast<std::int32_t>(i), y); Failed(status))
      return status;
    vertices_.push_back({double(x), double(y)});
  } while (++i <= end);
  return Status::Ok;
}

void Contour::Apply(const PlaneMap& map) {
  for (Tgpc_vertex& vertex : vertices_) {
    const TCoordPoint point = map({ToCoord(vertex.x), ToCoord(vertex.y)});
    vertex = {double(point.x), double(point.y)};
  }
}

void Contour::GiveList(Pgpc_vertex_list& list) {
  list_ = {static_cast<std::int32_t>(vertices_.size()), vertices_.data()};
  list = &list_;
}

Status GeometricPolygon::ContourAt(std::int32_t index, Ref<IPCB_Contour>& contour) const {
  const Ring* ring = At(rings, index);
  if (!ring) return Status::InvalidArgument;
  contour = MakeHost<Contour>(ring->points);
  return Status::Ok;
}

Status GeometricPolygon::IsHoleAt(std::int32_t index, bool& hole) const {
  const Ring* ring = At(rings, index);
  if (!ring) return Status::InvalidArgument;
  hole = ring->hole;
  return Status::Ok;
}

Status GeometricPolygon::Append(IPCB_Contour* contour, bool hole) {
  Ring ring{{}, hole};
  if (const Status status = ReadPoints(contour, ring.points); Failed(status)) return status;
  rings.push_back(std::move(ring));
  return Status::Ok;
}

Status ReadRings(IPCB_GeometricPolygon* polygon, std::vector<Ring>& rings) {
  if (!polygon) return Status::InvalidArgument;
  if (const auto own = Probe<RingList>(polygon)) {
    rings = own->rings;
    return Status::Ok;
  }
  std::int32_t count = 0;
  if (const Status status = polygon->GetState_Count(count); Failed(status)) return status;
  for (std::int32_t i = 0; i < count; ++i) {
    Ring ring;
    Ref<IPCB_Contour> contour;
    if (const Status status = polygon->GetState_IsHole(i, ring.hole); Failed(status)) return status;
    if (const Status status = polygon->GetState_Contour(i, contour); Failed(status)) return status;
    if (const Status status = ReadPoints(contour.Get(), ring.points); Failed(status)) return status;
    rings.push_back(std::move(ring));
  }
  return Status::Ok;
}

}  // namespace Ketril::Editor
