#include "DLLs/Tools/Geometry/PolyTools.h"

#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

TCoordPoint ArcPoint(const TPolySegment& arc, double angle) {
  const double cosine = arc.Radius * CosDeg(angle), sine = arc.Radius * SinDeg(angle);
  return {WrapToCoord(std::int64_t{arc.cx} + Round(cosine)), WrapToCoord(std::int64_t{arc.cy} + Round(sine))};
}

}  // namespace

void AddArcPoints(const TPolySegment& arc, double ArcStep, std::vector<TCoordPoint>& points) {
  double step = std::abs(ArcStep);
  const TCoordPoint at1 = ArcPoint(arc, arc.Angle1), at2 = ArcPoint(arc, arc.Angle2);
  double start = arc.Angle1, end = arc.Angle2;
  if (start > end) end += 360;
  if (ManhattanDistance(arc.vx, arc.vy, at1.x, at1.y) >= ManhattanDistance(arc.vx, arc.vy, at2.x, at2.y)) {
    std::swap(start, end);
    step = -step;
  }
  // Steps that are lost beside the angle would never end, and a full turn is enough.
  constexpr double kMostSteps = 1e6;
  for (double count = 0; std::abs(end - start) > std::abs(step) && count < kMostSteps; ++count) {
    points.push_back(ArcPoint(arc, start));
    start += step;
  }
  points.push_back(ArcPoint(arc, end));
}

Ref<IPCB_RegionShape> TPolygonalShape::Shape() const {
  Ref<IPCB_RegionShape> shape = Probe<IPCB_RegionShape>(FOwner->IPrimitive());
  if (!shape) throw Exception("IPCB_RegionShape is not supported");
  return shape;
}

Ref<IPCB_RegionShape3> TPolygonalShape::Shape3() const {
  Ref<IPCB_RegionShape3> shape = Probe<IPCB_RegionShape3>(FOwner->IPrimitive());
  if (!shape) throw Exception("IPCB_RegionShape3 is not supported");
  return shape;
}

std::int32_t TPolygonalShape::PointCount() const {
  return On(Shape3()).Read(&IPCB_RegionShape3::GetState_PointCount);
}

void TPolygonalShape::SetState_PointCount(std::int32_t Value) {
  On(Shape3()).Call(&IPCB_RegionShape3::SetState_PointCount, Value);
}

void TPolygonalShape::IncrementPointCount() {
  On(Shape3()).Call(&IPCB_RegionShape3::IncrementPointCount);
}

void TPolygonalShape::DecrementPointCount() {
  On(Shape3()).Call(&IPCB_RegionShape3::DecrementPointCount);
}

TPolySegment TPolygonalShape::GetState_Segments(std::int32_t AIndex) const {
  return On(Shape()).Read(&IPCB_RegionShape::GetState_Segments, AIndex);
}

void TPolygonalShape::SetState_Segments(std::int32_t AIndex, const TPolySegment& AValue) {
  On(Shape()).Call(&IPCB_RegionShape::SetState_Segments, AIndex, AValue);
}

std::vector<TCoordPoint> PolygonalShapeToPoints(const TPolygonalShape& Shape, double ArcStep) {
  std::vector<TCoordPoint> points;
  if (!(std::abs(ArcStep) > 0)) return points;
  const std::int32_t count = Shape.PointCount();
  for (std::int32_t i = 0; i <= count; ++i) {
    const TPolySegment segment = Shape.GetState_Segments(i);
    if (i == count || segment.Kind == ePolySegmentLine) {
      points.push_back({segment.vx, segment.vy});
    } else {
      AddArcPoints(segment, ArcStep, points);
    }
  }
  return points;
}

double PolygonalShapeArea(const TPolygonalShape& Shape, double ArcStep) {
  if (Shape.PointCount() < 2) return 0;
  const std::vector<TCoordPoint> points = PolygonalShapeToPoints(Shape, ArcStep);
  if (points.size() < 4) return 0;
  const auto term = [](TCoordPoint a, TCoordPoint b) {
    return double(a.x) * double(b.y) - double(b.x) * double(a.y);
  };
  double sum = 0;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) sum += term(points[i], points[i + 1]);
  const TCoordPoint first = points.front(), last = points.back();
  if (first.x != last.x && first.y != last.y) sum += term(last, first);
  return sum / 2;
}

}  // namespace Ketril::Tools
