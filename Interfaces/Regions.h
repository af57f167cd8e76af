// Rings of vertices, areas of them, and the objects of a board that have such a shape.
#pragma once

#include "Interfaces/Interface.h"
#include "Interfaces/PolygonRecords.h"
#include "Interfaces/PrimitiveBase.h"
#include "Interfaces/Types.h"

namespace Ketril {

// A ring of vertices, as the tools hand outlines over and take them. Vertices are kept in doubles and read
// rounded, a half to the even neighbour. Indexes are cyclic: the count is vertex 0 again, -1 the last vertex;
// a vertex of an empty ring is a failure.
class IPCB_Contour : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_Contour"};
  // Writing it cuts the ring, or leaves the vertices beyond the old count undefined.
  KETRIL_PROPERTY(std::int32_t, Count);
  // In square units, of either orientation.
  KETRIL_READ(double, Area);
  virtual Status GetState_PointX(std::int32_t index, TCoord& x) noexcept = 0;
  virtual Status GetState_PointY(std::int32_t index, TCoord& y) noexcept = 0;
  virtual Status SetState_PointX(std::int32_t index, TCoord x) noexcept = 0;
  virtual Status SetState_PointY(std::int32_t index, TCoord y) noexcept = 0;
  // By degrees about the origin, by a way, by degrees about a place; whole coordinates all the way.
  virtual Status Rotate(double angle) noexcept = 0;
  virtual Status Translate(TCoord dx, TCoord dy) noexcept = 0;
  virtual Status RotateAboutPoint(double angle, TCoord x, TCoord y) noexcept = 0;
  virtual Status Clear() noexcept = 0;
  virtual Status AddPoint(TCoord x, TCoord y) noexcept = 0;
  virtual Status InsertPoint(std::int32_t index, TCoord x, TCoord y) noexcept = 0;
  virtual Status DeletePoint(std::int32_t index) noexcept = 0;
  // Appends the vertices `first` to `last` of another ring; a `last` below `first` means one in the next
  // turn. At least one vertex is read.
  virtual Status AddContourRange(IPCB_Contour* contour, std::int32_t first, std::int32_t last) noexcept = 0;
  virtual Status AddContour(IPCB_Contour* contour) noexcept = 0;  // all of it
  // A new ring with the same vertices.
  virtual Status Replicate(Ref<IPCB_Contour>& replica) noexcept = 0;
  // The vertices themselves, the ring's own. Who changes them does so behind its back.
  virtual Status GetState_VertexList(Pgpc_vertex_list& list) noexcept = 0;
  virtual Status EnsureCapacity(std::int32_t count) noexcept = 0;
};

// An area of outer rings and holes.
class IPCB_GeometricPolygon : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_GeometricPolygon"};
  KETRIL_READ(std::int32_t, Count);
  virtual Status GetState_Contour(std::int32_t index, Ref<IPCB_Contour>& contour) noexcept = 0;
  virtual Status GetState_IsHole(std::int32_t index, bool& hole) noexcept = 0;
  // Takes a copy of the contour.
  virtual Status AddContour(IPCB_Contour* contour, bool hole) noexcept = 0;
  virtual Status Clear() noexcept = 0;
  virtual Status Replicate(Ref<IPCB_GeometricPolygon>& replica) noexcept = 0;
};

class IPCB_Region : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Region"};
  // The area; reading gives a copy.
  KETRIL_PROPERTY(Ref<IPCB_GeometricPolygon>, RegionData);
  KETRIL_PROPERTY(TRegionKind, Kind);
};

class IPCB_Region2 : public IPCB_Region {
 public:
  using Base = IPCB_Region;
  static constexpr InterfaceId Id{"IPCB_Region2"};
  KETRIL_READ(double, Area);  // in square units, holes taken off
};

// A region of the board itself: one part of a board with its own layer stack.
class IPCB_BoardRegion : public IPCB_Region2 {
 public:
  using Base = IPCB_Region2;
  static constexpr InterfaceId Id{"IPCB_BoardRegion"};
  KETRIL_READ(std::u16string, Name);
};

class IPCB_ComponentBody : public IPCB_Region2 {
 public:
  using Base = IPCB_Region2;
  static constexpr InterfaceId Id{"IPCB_ComponentBody"};
  KETRIL_PROPERTY(std::u16string, ModelName);
};

class IPCB_ComponentBody2 : public IPCB_ComponentBody {
 public:
  using Base = IPCB_ComponentBody;
  static constexpr InterfaceId Id{"IPCB_ComponentBody2"};
  KETRIL_PROPERTY(TCoord, OverallHeight);
};

// The outline of a region as segments. An object that has it offers it beside its own chain.
class IPCB_RegionShape : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_RegionShape"};
  // One segment of the first outline, 0 to the count. The one at the count closes the outline: it begins
  // where segment 0 does, and can be written only so.
  virtual Status GetState_Segments(std::int32_t index, TPolySegment& segment) noexcept = 0;
  virtual Status SetState_Segments(std::int32_t index, const TPolySegment& segment) noexcept = 0;
  // Takes out vertices that repeat their neighbour or lie in line with both.
  virtual Status RemoveRedundantVertices() noexcept = 0;
  virtual Status SynchronizeGPCPolyFromShape(bool conserve_existing_holes) noexcept = 0;
  // Takes the segments from the area's first outline, in the order of its vertices. The closing one is then
  // among those that count; who wants it at the count, behind them, takes one off.
  virtual Status SynchronizeShapeFromGPCPoly() noexcept = 0;
};

// Adds the count of the segments.
class IPCB_RegionShape3 : public IPCB_RegionShape {
 public:
  using Base = IPCB_RegionShape;
  static constexpr InterfaceId Id{"IPCB_RegionShape3"};
  KETRIL_PROPERTY(std::int32_t, PointCount);
  virtual Status IncrementPointCount() noexcept = 0;
  virtual Status DecrementPointCount() noexcept = 0;
};

}  // namespace Ketril
