#include "DLLs/Tools/Teardrops/TeardropCurves.h"

#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

void AddVertex(TContour& Contour, GeoPointType P) {
  Contour.Append(Round(P.x), Round(P.y));
}

void AddEdge(TContour& Contour, const TTeardropOptionsEx& Options, GeoPointType From, GeoPointType To,
             GeoPointType Ctrl) {
  if ((Options.Flags & TeardropFlag_Straight) == 0) {
    CurveToContour(Contour, From, Ctrl, To, 0.1);
  } else {
    AddVertex(Contour, From);
    AddVertex(Contour, To);
  }
}

void CurveToContour(TContour& Contour, GeoPointType From, GeoPointType Ctrl, GeoPointType To, double Step) {
  constexpr double kCosineOf3Degrees = 0.99862953475;
  AddVertex(Contour, From);
  GeoPointType last = From, direction;
  UnitVector(SubtractPoints(To, From), direction);
  for (double t = Step; t <= 1.0; t += Step) {
    const double s = 1 - t;
    const GeoPointType place =
        AddPoints(AddPoints(ScalePoint(From, s * s), ScalePoint(Ctrl, 2 * t * s)), ScalePoint(To, t * t));
    GeoPointType way;
    UnitVector(SubtractPoints(place, last), way);
    if (DotProduct(direction, way) >= kCosineOf3Degrees) continue;
    direction = way;
    AddVertex(Contour, place);
    last = place;
  }
  if (!PointsNear(last, To)) AddVertex(Contour, To);
}

GeoPointType CurveControlPoint(const LineType& Line, GeoPointType Tail, GeoPointType Foot, GeoPointType O) {
  const LineType edge = LineThroughPoint(Line, Tail);
  GeoPointType radius;
  UnitVector(SubtractPoints(O, Foot), radius);
  const LineType tangent = MakeLine(Foot, AddPoints(Foot, LeftNormal(radius)));
  GeoPointType meet;
  bool found = false;
  IntersectLines(tangent, edge, false, meet, found);
  return found && PointDistance(Tail, Foot) > PointDistance(Tail, meet) ? meet : Midpoint(Tail, Foot);
}

GeoPointType ArcCurveControlPoint(const ThinArcType& Arc, GeoPointType Tail, GeoPointType Foot,
                                  GeoPointType O) {
  const GeoPointType tangent = LeftNormal(SubtractPoints(Arc.Center(), Tail));
  return CurveControlPoint(MakeLine(Tail, AddPoints(Tail, tangent)), Tail, Foot, O);
}

}  // namespace Ketril::Tools
