// The ring itself: its vertices, their order, and how it is moved.
#include "DLLs/Tools/Geometry/AbstractPolygon.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "DLLs/Tools/Geometry/GeomUtils.h"
#include "DLLs/Tools/Geometry/PointUtils.h"
#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/RectUtils.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Geometry/VertexList.h"

namespace Ketril::Tools {

TAbstractPolygon* TAbstractPolygon::CreateFromPoly(const TAbstractPolygon& Poly) {
  auto* copy = new TAbstractPolygon;
  copy->AssignFromPoly(Poly);
  return copy;
}

TAbstractPolygon* TAbstractPolygon::CreateFromPoly(const Tgpc_polygon& Poly) {
  auto* polygon = new TAbstractPolygon;
  polygon->AssignFromGPCPoly(Poly);
  return polygon;
}

void TAbstractPolygon::AssignFromPoly(const TAbstractPolygon& Poly) {
  FPointArray.Assign(Poly.FPointArray);
  SetBoundRect();
}

void TAbstractPolygon::AssignFromGPCPoly(const Tgpc_polygon& Poly) {
  Clear();
  const Tgpc_vertex_list* outer = nullptr;
  for (std::int32_t i = 0; i < Poly.num_contours; ++i) {
    if (Poly.hole[i] != 0) continue;
    if (outer) return;
    outer = &Poly.contour[i];
  }
  for (std::int32_t i = 0; outer && i < outer->num_vertices; ++i) {
    FPointArray.Add({TGeomUtils::Nearest(outer->vertex[i].x), TGeomUtils::Nearest(outer->vertex[i].y)});
  }
  SetBoundRect();
}

Pgpc_vertex_list TAbstractPolygon::GetGPCContour() const {
  Pgpc_vertex_list contour = NewVertexList(PointCount());
  std::transform(FPointArray.begin(), FPointArray.end(), contour->vertex, [](TCoordPoint point) {
    return Tgpc_vertex{double(point.x), double(point.y)};
  });
  return contour;
}

Pgpc_polygon TAbstractPolygon::GetGPCPoly() const {
  const TVertexListOwner contour(GetGPCContour());
  TPolygonOwner polygon(NewPolygon());
  Tools::AddContour(polygon.get(), contour.get(), false);
  return polygon.release();
}

void TAbstractPolygon::SetBoundRect() {
  FBoundRect = {};
  if (PointCount() == 0) return;
  FBoundRect = {FPointArray.First().x, FPointArray.First().y, FPointArray.First().x, FPointArray.First().y};
  for (const TCoordPoint point : FPointArray) {
    FBoundRect.x1 = std::min(FBoundRect.x1, point.x);
    FBoundRect.y1 = std::min(FBoundRect.y1, point.y);
    FBoundRect.x2 = std::max(FBoundRect.x2, point.x);
    FBoundRect.y2 = std::max(FBoundRect.y2, point.y);
  }
}

void TAbstractPolygon::Clear() {
  FPointArray.Clear();
  FBoundRect = {};
}

bool TAbstractPolygon::GetPointByPos(TCoordPoint& Pt, std::int32_t Pos) const {
  if (Pos < 0 || Pos >= PointCount()) return false;
  Pt = FPointArray.Get(Pos);
  return true;
}

void TAbstractPolygon::SetPointByPos(TCoordPoint Pt, std::int32_t Pos) {
  FPointArray.Put(Pos, Pt);
  SetBoundRect();
}

bool TAbstractPolygon::AddPoint(TCoordPoint Point, std::int32_t Position) {
  if (Position < 0 || Position > PointCount()) return false;
  FPointArray.Insert(Position, Point);
  if (PointCount() == 1) {
    SetBoundRect();
  } else {
    FBoundRect = {std::min(FBoundRect.x1, Point.x), std::min(FBoundRect.y1, Point.y),
                  std::max(FBoundRect.x2, Point.x), std::max(FBoundRect.y2, Point.y)};
  }
  return true;
}

void TAbstractPolygon::DeletePoint(std::int32_t Position) {
  if (Position < 0 || Position >= PointCount()) return;
  FPointArray.Delete(Position);
  SetBoundRect();
}

bool TAbstractPolygon::Anchor(std::int32_t Index) {
  const std::int32_t count = PointCount();
  if (count == 0) return true;
  std::int32_t k = 0;
  if (Index == -1) {
    for (std::int32_t i = 1; i < count; ++i) {
      if (FPointArray.Get(i).x <= FPointArray.Get(k).x) k = i;
    }
  } else {
    k = (Index % count + count) % count;
  }
  if (count - k <= k) {
    FPointArray.RotateRight(k);
  } else {
    FPointArray.RotateLeft(k);
  }
  return true;
}

std::int32_t TAbstractPolygon::GetVertexIndex(TCoordPoint Vertex) const {
  const auto found = std::find(FPointArray.begin(), FPointArray.end(), Vertex);
  return found == FPointArray.end() ? -1 : static_cast<std::int32_t>(found - FPointArray.begin());
}

// The first turn from the lowest vertex on: while C, B and A are in line, A and B go on and C stays.
bool TAbstractPolygon::IsClockwise() const {
  const std::int32_t n = PointCount();
  std::int32_t lowest = 0;
  for (std::int32_t i = 1; i < n; ++i) {
    const TCoordPoint point = Ring(i), low = Ring(lowest);
    if (point.y < low.y || (point.y == low.y && point.x < low.x)) lowest = i;
  }
  const auto vector = [](TCoordPoint from, TCoordPoint to) {
    return TVector2D{double(to.x) - from.x, double(to.y) - from.y};
  };
  const auto slope_angle = [](TVector2D cb, TVector2D ab) {
    constexpr double kPi = std::numbers::pi;
    if (cb.x == 0 && ab.x == 0) return kPi;
    if (cb.x == 0) return std::asin(ab.x / TGeomUtils::VectorMagnitude(ab));
    if (ab.x == 0) return std::asin(cb.x / TGeomUtils::VectorMagnitude(cb));
    const double m1 = cb.y / cb.x, m2 = ab.y / ab.x;
    const double angle = std::atan2(m2 - m1, m1 * m2 + 1);
    return angle > kPi ? angle - 2 * kPi : angle;
  };
  for (std::int32_t attempt = 0; attempt < n - 2; ++attempt) {
    const TCoordPoint C = Ring(lowest - 1), A = Ring(lowest + attempt), B = Ring(lowest + attempt + 1);
    const TVector2D CB = vector(C, B), AB = vector(A, B);
    const double angle = slope_angle(CB, AB);
    if (angle <= -std::numbers::pi || angle >= std::numbers::pi || angle == 0) continue;
    // (C - B) x (A - B), of which the two negations cancel.
    return CB.x * AB.y - CB.y * AB.x < 0;
  }
  return false;
}

void TAbstractPolygon::ReverseRing() {
  const std::int32_t n = PointCount();
  for (std::int32_t i = 0; i < n / 2; ++i) FPointArray.Exchange(i, n - 1 - i);
}

void TAbstractPolygon::Clockwise() {
  if (!IsClockwise()) ReverseRing();
}

void TAbstractPolygon::Counterclockwise() {
  if (IsClockwise()) ReverseRing();
}

void TAbstractPolygon::RemoveNonEssentialPolyPoints() {
  for (std::int32_t i = 0; PointCount() >= 4 && i <= PointCount();) {
    const TCoordPoint before = Ring(i - 1), point = Ring(i), after = Ring(i + 1);
    if (point == before || point == after || TGeomUtils::IsPointOnLine(before, after, point, 0.0)) {
      FPointArray.Delete(i % PointCount());
    } else {
      ++i;
    }
  }
  SetBoundRect();
}

void TAbstractPolygon::Translate(TCoord DeltaX, TCoord DeltaY) {
  for (std::int32_t i = 0; i < PointCount(); ++i) {
    TCoordPoint point = FPointArray.Get(i);
    TPointUtils::Translate(point, DeltaX, DeltaY);
    FPointArray.Put(i, point);
  }
  SetBoundRect();
}

void TAbstractPolygon::Rotate(TCoordPoint OriginPt, double Angle) {
  for (std::int32_t i = 0; i < PointCount(); ++i) {
    TCoordPoint point = FPointArray.Get(i);
    TPointUtils::TranslateAboutPt(point, Angle, OriginPt);
    FPointArray.Put(i, point);
  }
  SetBoundRect();
}

void TAbstractPolygon::RotateBy90(TCoordPoint Origin, double Angle) {
  NormalizeAngle(Angle);
  if (Angle == 0 || PointCount() == 0) return;
  const std::int64_t ox = Origin.x, oy = Origin.y;
  for (std::int32_t i = 0; i < PointCount(); ++i) {
    const std::int64_t x = FPointArray.Get(i).x, y = FPointArray.Get(i).y;
    if (Angle == 90) FPointArray.Put(i, {WrapToCoord(ox + oy - y), WrapToCoord(x + oy - ox)});
    if (Angle == 180) FPointArray.Put(i, {WrapToCoord(2 * ox - x), WrapToCoord(2 * oy - y)});
    if (Angle == 270) FPointArray.Put(i, {WrapToCoord(y + ox - oy), WrapToCoord(oy - x + ox)});
  }
  SetBoundRect();
}

void TAbstractPolygon::CopyTo(TContainedObject* target, TCopyMode) const {
  if (auto* polygon = dynamic_cast<TAbstractPolygon*>(target)) polygon->AssignFromPoly(*this);
}

std::size_t TAbstractPolygon::MemoryUsed() const {
  return sizeof(TAbstractPolygon) + sizeof(TCoordPoint) * static_cast<std::size_t>(FPointArray.Capacity());
}

TCoord TAbstractPolygon::Height() const {
  return TRectUtils::GetHeight(FBoundRect);
}

TCoord TAbstractPolygon::Width() const {
  return TRectUtils::GetWidth(FBoundRect);
}

}  // namespace Ketril::Tools
