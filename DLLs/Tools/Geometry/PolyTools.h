// The outline of a region as segments, and its chord points and area. The integer half: without tolerance.
#pragma once

#include <vector>

#include "DLLs/Tools/Frame/HostLink.h"
#include "Interfaces/Primitives.h"

namespace Ketril::Tools {

class TPrimitive;

// Reads and writes the segments of an object of the editor that has a region. Raises Exception
// "IPCB_RegionShape is not supported" or "IPCB_RegionShape3 is not supported" when it has none, and
// EHostError.
class TPolygonalShape {
 public:
  explicit TPolygonalShape(TPrimitive* AOwner) : FOwner(AOwner) {}  // not owned

  std::int32_t PointCount() const;
  void SetState_PointCount(std::int32_t Value);
  void IncrementPointCount();
  void DecrementPointCount();
  TPolySegment GetState_Segments(std::int32_t AIndex) const;
  void SetState_Segments(std::int32_t AIndex, const TPolySegment& AValue);

 private:
  Ref<IPCB_RegionShape> Shape() const;
  Ref<IPCB_RegionShape3> Shape3() const;

  TPrimitive* FOwner;
};

// Chord points of an arc segment in steps of |ArcStep| degrees, from the end that is nearer to where the
// segment begins (of two as near, the one at Angle2) to the other one. Whole coordinates, a half to the even
// one. The last step may be up to twice as long; an arc of no more than a step gives its far end alone.
void AddArcPoints(const TPolySegment& arc, double ArcStep, std::vector<TCoordPoint>& points);

// Chord points of all segments; that behind the last one is read too, as a line. An ArcStep of 0 or that is
// no number gives none.
std::vector<TCoordPoint> PolygonalShapeToPoints(const TPolygonalShape& Shape, double ArcStep);

// In square units, positive when counter-clockwise; 0 with fewer than 2 segments or 4 points. What closes the
// ring counts only where its ends differ in both x and y.
double PolygonalShapeArea(const TPolygonalShape& Shape, double ArcStep);

}  // namespace Ketril::Tools
