// Rings of vertices, and the objects by which tools hand areas over and take them.
#pragma once

#include <vector>

#include "Editor/HostObject.h"
#include "Editor/Model/HostProperty.h"
#include "Interfaces/Primitives.h"

namespace Ketril::Editor {

// A ring of vertices; `hole` rings are taken off the others.
struct Ring {
  std::vector<TCoordPoint> points;
  bool hole = false;
  friend bool operator==(const Ring&, const Ring&) = default;
};

double AreaOf(const Ring& ring);  // in square units, positive when counter-clockwise
// Takes out vertices that repeat their neighbour or lie on the straight line through their neighbours; what
// is left with fewer than three has no area and becomes empty.
void RemoveRedundantVertices(Ring& ring);

class Contour final : public HostObject<IPCB_Contour> {
 public:
  explicit Contour(std::vector<TCoordPoint> points = {}) : points(std::move(points)) {}
  std::vector<TCoordPoint> points;

  KETRIL_HOST_READ(IPCB_Contour, std::int32_t, Count, static_cast<std::int32_t>(points.size()))
  KETRIL_HOST_METHOD(IPCB_Contour, GetState_Point, (std::int32_t index, TCoordPoint& point),
                     PointAt(index, point))
  KETRIL_HOST_METHOD(IPCB_Contour, AddPoint, (TCoord x, TCoord y), void(points.push_back({x, y})))
  KETRIL_HOST_METHOD(IPCB_Contour, Clear, (), points.clear())

 private:
  Status PointAt(std::int32_t index, TCoordPoint& point) const;
};

// The part of a geometric polygon that the editor knows its own by.
class RingList : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"Ketril::Editor::RingList"};
  std::vector<Ring> rings;
};

class GeometricPolygon final : public HostObject<IPCB_GeometricPolygon, RingList> {
 public:
  explicit GeometricPolygon(std::vector<Ring> rings = {}) { this->rings = std::move(rings); }

  KETRIL_HOST_READ(IPCB_GeometricPolygon, std::int32_t, Count, static_cast<std::int32_t>(rings.size()))
  // A copy of the ring.
  KETRIL_HOST_METHOD(IPCB_GeometricPolygon, GetState_Contour,
                     (std::int32_t index, Ref<IPCB_Contour>& contour), ContourAt(index, contour))
  KETRIL_HOST_METHOD(IPCB_GeometricPolygon, GetState_IsHole, (std::int32_t index, bool& hole),
                     IsHoleAt(index, hole))
  KETRIL_HOST_METHOD(IPCB_GeometricPolygon, AddContour, (IPCB_Contour * contour, bool hole),
                     Append(contour, hole))
  KETRIL_HOST_METHOD(IPCB_GeometricPolygon, Clear, (), rings.clear())
  KETRIL_HOST_METHOD(IPCB_GeometricPolygon, Replicate, (Ref<IPCB_GeometricPolygon> & replica),
                     void(replica = MakeHost<GeometricPolygon>(rings)))

 private:
  Status ContourAt(std::int32_t index, Ref<IPCB_Contour>& contour) const;
  Status IsHoleAt(std::int32_t index, bool& hole) const;
  Status Append(IPCB_Contour* contour, bool hole);
};

// Reads a polygon of any maker; the first failing status ends it.
Status ReadRings(IPCB_GeometricPolygon* polygon, std::vector<Ring>& rings);

}  // namespace Ketril::Editor
