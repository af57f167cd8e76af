// `TAbstractPolygon`: a closed ring of whole coordinates.
//
// The integer half: exact but where an operation rounds, which it says. The tests differ in what counts on
// the border:
//                            a vertex     an edge      touching from outside
//   IsPointIn                out          out          -
//   IsPointOnOrIn            in           in           -
//   IsLineIn                 out          out          -
//   DoesSegmentIntersect     only where it goes on into the inside
//   DoesRectIntersect        in           in           in (by the corners and edges)
//   IsOverlappingPoly        by DoesSegmentIntersect of the other's edges; a box of no width or height: out
// Nothing raises, but for memory. An empty ring has nothing in or on it, and nothing reaches it; in a ring of
// no area nothing is in, and its vertices and edges are on it.
#pragma once

#include "DLLs/Tools/Geometry/PointList.h"
#include "DLLs/Tools/Geometry/Shape.h"
#include "Interfaces/PolygonRecords.h"

namespace Ketril::Tools {

// Edge i runs from vertex i to the next one; no vertex repeats the first. Either orientation.
class TAbstractPolygon final : public TAbstractShape {
 public:
  TAbstractPolygon() = default;
  static TAbstractPolygon* CreateFromPoly(const TAbstractPolygon& Poly);
  static TAbstractPolygon* CreateFromPoly(const Tgpc_polygon& Poly);  // see AssignFromGPCPoly
  ~TAbstractPolygon() override = default;

  void AssignFromPoly(const TAbstractPolygon& Poly);
  // The one contour that is no hole, rounded half away from zero; nothing when there are none or several.
  void AssignFromGPCPoly(const Tgpc_polygon& Poly);
  // New records, the caller's: the vertices, and a polygon of that one contour.
  Pgpc_vertex_list GetGPCContour() const;
  Pgpc_polygon GetGPCPoly() const;

  void SetBoundRect();
  void Clear();
  std::int32_t PointCount() const { return FPointArray.Count(); }
  bool GetPointByPos(TCoordPoint& Pt, std::int32_t Pos) const;  // false from the count on
  TCoordPoint GetPointByPos(std::int32_t Pos) const { return FPointArray.Get(Pos); }
  void SetPointByPos(TCoordPoint Pt, std::int32_t Pos);  // Pos is not checked
  void AddPoint(TCoordPoint Point) { AddPoint(Point, PointCount()); }
  bool AddPoint(TCoordPoint Point, std::int32_t Position);  // before Position; false beyond the count
  void DeletePoint(std::int32_t Position);                  // nothing from the count on
  // Brings a vertex to position 0: -1 the last of those with the smallest x, others cyclic. Always true.
  bool Anchor(std::int32_t Index);
  std::int32_t GetVertexIndex(TCoordPoint Vertex) const;  // of the first equal one, else -1
  bool IsPointOnVertex(TCoordPoint Pt) const { return GetVertexIndex(Pt) >= 0; }

  // Strictly inside. When the turns to the point are alike at all edges, it is in, crossings or not.
  bool IsPointIn(TCoordPoint Pt) const;
  bool IsPointOnOrIn(TCoordPoint Pt) const;
  bool IsLineIn(TCoordPoint Pt1, TCoordPoint Pt2) const;  // touching the border is not in
  // Does the segment reach the inside; with BoundaryEdgeOnly, does it cross the border. The ring is turned
  // round meanwhile when it is clockwise.
  bool DoesSegmentIntersect(TCoordPoint SegPoint0, TCoordPoint SegPoint1, bool BoundaryEdgeOnly);
  // A rectangle within the bounding rectangle does, without further test.
  bool DoesRectIntersect(const TCoordRect& Rect) const;
  // Does an edge of Pc reach the inside. One-sided: a polygon wholly within Pc is not met.
  bool IsOverlappingPoly(const TAbstractPolygon& Pc);
  // The ends of the first edge that holds PtHit exactly; the closing edge only with Polygon. HitSize has no
  // effect.
  bool GetEdgeHit(TCoordPoint& Pt1, TCoordPoint& Pt2, bool Polygon, TCoordPoint PtHit, TCoord HitSize) const;

  // By the first vertex that turns, from the lowest, then leftmost one on; false for a ring that has none.
  bool IsClockwise() const;
  void Clockwise();
  void Counterclockwise();
  // Takes out vertices that equal a neighbour or lie between theirs; stops below 4.
  void RemoveNonEssentialPolyPoints();
  void Translate(TCoord DeltaX, TCoord DeltaY);                // wraps to 32 bits
  void Rotate(TCoordPoint OriginPt, double Angle);             // each vertex rounded half away from zero
  void RotateBy90(TCoordPoint Origin, double Angle) override;  // nothing but at 90, 180 and 270

  TContainedObject* Create(TCopyMode) const override { return new TAbstractPolygon; }
  void CopyTo(TContainedObject* target, TCopyMode mode) const override;
  std::size_t MemoryUsed() const override;
  TAbstractShape* DeepCopy() const override { return CreateFromPoly(*this); }
  bool DoesShapeIntersect(TAbstractShape& Shape) override {
    return Shape.DoesAbstractPolygonIntersect(*this);
  }
  bool DoesAbstract45LineIntersect(const TLine45& Line) override {
    return DoesSegmentIntersect(Line.End1, Line.End2, false);
  }
  bool DoesAbstractRectangleIntersect(const TAbstractShape& Rectangle) override {
    return DoesRectIntersect(Rectangle.GetState_BoundingRectangle());
  }
  bool DoesAbstract45OctagonIntersect(TAbstractShape& Octagon) override {
    return Octagon.DoesAbstractPolygonIntersect(*this);
  }
  bool DoesAbstractPolygonIntersect(const TAbstractShape& Polygon) override;
  bool IsPointInShape(TCoordPoint Pt) const override { return IsPointIn(Pt); }
  bool IsPointOnOrInShape(TCoordPoint Pt) const override { return IsPointOnOrIn(Pt); }
  std::int32_t FindIntersectionPoints(const TLine45& Line, TCoordPoint& IntersectionPoint1,
                                      std::int32_t& SideIndex1, TCoordPoint& IntersectionPoint2,
                                      std::int32_t& SideIndex2) const override;
  bool GetLineSegment(std::int32_t, TLine45&) const override { return false; }
  bool GetVertex(std::int32_t VertexIndex, TCoordPoint& Vertex) const override {
    return GetPointByPos(Vertex, VertexIndex);
  }
  std::int32_t GetNumVertices() const override { return PointCount(); }
  TCoord Left() const override { return FBoundRect.left(); }
  TCoord Right() const override { return FBoundRect.right(); }
  TCoord Top() const override { return FBoundRect.top(); }
  TCoord Bottom() const override { return FBoundRect.bottom(); }
  TCoord Height() const override;
  TCoord Width() const override;

  // Vertex i of the ring, for any i of a ring that is not empty.
  TCoordPoint Ring(std::int32_t i) const {
    const std::int32_t n = PointCount();
    return FPointArray.Get((i % n + n) % n);
  }

 private:
  void ReverseRing();
  bool ReachesInside(TCoordPoint SegPoint0, TCoordPoint SegPoint1) const;

  TCoordRect FBoundRect;  // of the vertices; all zero without any
  TPointList FPointArray;
};

}  // namespace Ketril::Tools
