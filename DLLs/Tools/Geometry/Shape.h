// `TAbstractShape`: what shapes of whole coordinates have in common.
#pragma once

#include "DLLs/Tools/Frame/ContainedObject.h"

namespace Ketril::Tools {

// A segment along an axis or a diagonal.
struct TLine45 {
  enum TKind : std::uint8_t { Horizontal, Vertical, Rising, Falling };
  TCoordPoint End1, End2;
  TKind Kind = Horizontal;
  TCoord Intercept = 0;  // its y at x = 0, of the infinite line; not of a vertical one

  TCoord Left() const { return End1.x < End2.x ? End1.x : End2.x; }
  TCoord Right() const { return End1.x < End2.x ? End2.x : End1.x; }
  TCoord Bottom() const { return End1.y < End2.y ? End1.y : End2.y; }
  TCoord Top() const { return End1.y < End2.y ? End2.y : End1.y; }
};

class TAbstractShape;

// A vertex or a foot on the edge of a shape.
struct TPolyEdgePoint {
  TCoordPoint Point;
  std::int32_t EdgeIndex = 0;
  bool IsVertex = false;
};

// The integer half: all exact. Which places on the border count is told at each operation of a class.
// Intersection is double dispatch: a shape asks the other one through the operation for its own kind. Owned
// by its maker, freed by `Free`.
class TAbstractShape : public TContainedObject {
 public:
  virtual TAbstractShape* DeepCopy() const = 0;
  virtual void RotateBy90(TCoordPoint Origin, double Angle) = 0;
  virtual bool DoesShapeIntersect(TAbstractShape& Shape) = 0;
  virtual bool DoesAbstract45LineIntersect(const TLine45& Line) = 0;
  virtual bool DoesAbstractRectangleIntersect(const TAbstractShape& Rectangle) = 0;
  virtual bool DoesAbstract45OctagonIntersect(TAbstractShape& Octagon) = 0;
  virtual bool DoesAbstractPolygonIntersect(const TAbstractShape& Polygon) = 0;
  virtual bool IsPointInShape(TCoordPoint Pt) const = 0;
  virtual bool IsPointOnOrInShape(TCoordPoint Pt) const = 0;
  // How many of the two places were found; the index of a side that was not is -1.
  virtual std::int32_t FindIntersectionPoints(const TLine45& Line, TCoordPoint& IntersectionPoint1,
                                              std::int32_t& SideIndex1, TCoordPoint& IntersectionPoint2,
                                              std::int32_t& SideIndex2) const = 0;
  virtual bool GetLineSegment(std::int32_t LineSegmentIndex, TLine45& Line) const = 0;
  virtual bool GetVertex(std::int32_t VertexIndex, TCoordPoint& Vertex) const = 0;
  virtual std::int32_t GetNumVertices() const = 0;
  virtual TCoord Left() const = 0;
  virtual TCoord Right() const = 0;
  virtual TCoord Top() const = 0;
  virtual TCoord Bottom() const = 0;
  virtual TCoord Height() const = 0;
  virtual TCoord Width() const = 0;

  TCoordRect GetState_BoundingRectangle() const override { return {Left(), Bottom(), Right(), Top()}; }

  bool FVisited = false;
};

}  // namespace Ketril::Tools
