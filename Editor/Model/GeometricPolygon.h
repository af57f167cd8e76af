// Rings of vertices, and the objects by which tools hand areas over and take them.
#pragma once

#include <cmath>
#include <vector>

#include "Editor/HostObject.h"
#include "Editor/Model/HostProperty.h"
#include "Editor/Model/PlaneMap.h"
#include "Interfaces/Primitives.h"

namespace Ketril::Editor {

// A ring of vertices; `hole` rings are taken off the others.
struct Ring {
  std::vector<TCoordPoint> points;
  bool hole = false;
  friend bool operator==(const Ring&, const Ring&) = default;
};

// By the even-odd rule; on the line either answer. No vertices hold nothing.
bool IsInside(const std::vector<TCoordPoint>& points, double x, double y);
double AreaOf(const Ring& ring);  // in square units, positive when counter-clockwise
// Takes out vertices that repeat their neighbour or lie on the straight line through their neighbours; what
// is left with fewer than three has no area and becomes empty.
void RemoveRedundantVertices(Ring& ring);

// The ring as segments, all of them lines, as IPCB_RegionShape has them; behind the last one comes the first
// again, and there nothing else can be put.
Status SegmentOf(const Ring& ring, std::int32_t index, TPolySegment& segment);
Status PutSegment(Ring& ring, std::int32_t index, const TPolySegment& segment);

// A ring that is handed over, a copy of its own. Its vertex list may be read and its vertices changed, but
// not made longer, by who asks for it.
class Contour final : public HostObject<IPCB_Contour> {
 public:
  explicit Contour(const std::vector<TCoordPoint>& points = {});
  std::vector<TCoordPoint> Points() const;

  KETRIL_HOST_PAIR(IPCB_Contour, std::int32_t, Count, static_cast<std::int32_t>(vertices_.size()),
                   vertices_.resize(value < 0 ? 0 : static_cast<std::size_t>(value)))
  KETRIL_HOST_READ(IPCB_Contour, double, Area, std::abs(AreaOf(Ring{Points(), false})))
  KETRIL_HOST_METHOD(IPCB_Contour, GetState_PointX, (std::int32_t index, TCoord& x),
                     OnVertex(index, [&](Tgpc_vertex& vertex) { x = ToCoord(vertex.x); }))
  KETRIL_HOST_METHOD(IPCB_Contour, GetState_PointY, (std::int32_t index, TCoord& y),
                     OnVertex(index, [&](Tgpc_vertex& vertex) { y = ToCoord(vertex.y); }))
  KETRIL_HOST_METHOD(IPCB_Contour, SetState_PointX, (std::int32_t index, TCoord x),
                     OnVertex(index, [&](Tgpc_vertex& vertex) { vertex.x = x; }))
  KETRIL_HOST_METHOD(IPCB_Contour, SetState_PointY, (std::int32_t index, TCoord y),
                     OnVertex(index, [&](Tgpc_vertex& vertex) { vertex.y = y; }))
  KETRIL_HOST_METHOD(IPCB_Contour, Rotate, (double angle), Apply(PlaneMap::Rotation({}, angle)))
  KETRIL_HOST_METHOD(IPCB_Contour, Translate, (TCoord dx, TCoord dy), Apply(PlaneMap::Translation(dx, dy)))
  KETRIL_HOST_METHOD(IPCB_Contour, RotateAboutPoint, (double angle, TCoord x, TCoord y),
                     Apply(PlaneMap::Rotation({x, y}, angle)))
  KETRIL_HOST_METHOD(IPCB_Contour, Clear, (), vertices_.clear())
  KETRIL_HOST_METHOD(IPCB_Contour, AddPoint, (TCoord x, TCoord y),
                     void(vertices_.push_back({double(x), double(y)})))
  KETRIL_HOST_METHOD(IPCB_Contour, InsertPoint, (std::int32_t index, TCoord x, TCoord y), Insert(index, x, y))
  KETRIL_HOST_METHOD(IPCB_Contour, DeletePoint, (std::int32_t index), Delete(index))
  KETRIL_HOST_METHOD(IPCB_Contour, AddContourRange,
                     (IPCB_Contour * contour, std::int32_t first, std::int32_t last),
                     Append(contour, first, last))
  KETRIL_HOST_METHOD(IPCB_Contour, AddContour, (IPCB_Contour * contour), Append(contour, 0, -1))
  KETRIL_HOST_METHOD(IPCB_Contour, Replicate, (Ref<IPCB_Contour> & replica),
                     void(replica = MakeHost<Contour>(Points())))
  KETRIL_HOST_METHOD(IPCB_Contour, GetState_VertexList, (Pgpc_vertex_list & list), GiveList(list))
  KETRIL_HOST_METHOD(IPCB_Contour, EnsureCapacity, (std::int32_t count),
                     vertices_.reserve(static_cast<std::size_t>(count < 0 ? 0 : count)))

 private:
  template <class Visit>
  Status OnVertex(std::int32_t index, Visit visit) {
    const auto count = static_cast<std::int64_t>(vertices_.size());
    if (count == 0) return Status::InvalidArgument;
    visit(vertices_[static_cast<std::size_t>((index % count + count) % count)]);
    return Status::Ok;
  }
  Status Insert(std::int32_t index, TCoord x, TCoord y);
  void Delete(std::int32_t index);
  Status Append(IPCB_Contour* contour, std::int32_t first, std::int32_t last);
  void Apply(const PlaneMap& map);
  void GiveList(Pgpc_vertex_list& list);

  std::vector<Tgpc_vertex> vertices_;
  Tgpc_vertex_list list_;  // of them, as of the last time it was asked for
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
