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
    if (const Status status = contour->GetState_Point(i, point); Failed(status)) return status;
    points.push_back(point);
  }
  return Status::Ok;
}

}  // namespace

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

Status Contour::PointAt(std::int32_t index, TCoordPoint& point) const {
  const TCoordPoint* found = At(points, index);
  if (!found) return Status::InvalidArgument;
  point = *found;
  return Status::Ok;
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
