#include "DLLs/Tools/Teardrops/TeardropUtils.h"

#include <algorithm>
#include <numbers>
#include <utility>

#include "DLLs/Tools/Frame/PrimitivesLines.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

LineType TrackToLine(const TPrimitive* ATrack, double Extension) {
  const auto* track = dynamic_cast<const TTrack*>(ATrack);
  if (!track) return {};
  LineType line = {double(track->x1()), double(track->y1()), double(track->x2()), double(track->y2())};
  if (Extension > 0) {
    GeoPointType way;
    UnitVector(SubtractPoints(line.P2(), line.P1()), way);
    way = ScalePoint(way, Extension * track->Width());
    line = MakeLine(SubtractPoints(line.P1(), way), AddPoints(line.P2(), way));
  }
  return line;
}

ThinArcType ArcToThinArc(const TPrimitive* AArc) {
  const auto* arc = dynamic_cast<const TArc*>(AArc);
  if (!arc) return {};
  return {double(arc->GetState_X()),
          double(arc->GetState_Y()),
          double(arc->Radius()),
          arc->Angle1(),
          arc->Angle2(),
          double(arc->SX()),
          double(arc->SY()),
          double(arc->EX()),
          double(arc->EY())};
}

std::int32_t TrackOrArcWidth(const TPrimitive* APrimitive) {
  if (const auto* track = dynamic_cast<const TTrack*>(APrimitive)) return track->Width();
  if (const auto* arc = dynamic_cast<const TArc*>(APrimitive)) return arc->LineWidth();
  return 0;
}

GeoPointType Midpoint(GeoPointType A, GeoPointType B) {
  return ScalePoint(AddPoints(A, B), 0.5);
}

GeoPointType LeftNormal(GeoPointType P) {
  return {-P.y, P.x};
}

void MoveAlongLine(GeoPointType& Pt, const LineType& Line, GeoPointType Ref, double Shift) {
  GeoPointType u;
  UnitVector(SubtractPoints(Line.P1(), Line.P2()), u);
  const double side = DotProduct(u, SubtractPoints(Pt, Ref));
  if (side > 0) {
    Pt = AddPoints(Pt, ScalePoint(u, std::min(PointDistance(Pt, Line.P1()), Shift)));
  } else if (side < 0) {
    Pt = SubtractPoints(Pt, ScalePoint(u, std::min(PointDistance(Pt, Line.P2()), Shift)));
  }
}

void MoveAlongArc(GeoPointType& Pt, const ThinArcType& Arc, GeoPointType Ref, double Shift) {
  if (Arc.Radius == 0) return;
  const GeoPointType c = Arc.Center();
  const double side = CrossProduct(SubtractPoints(Ref, c), SubtractPoints(Pt, c));
  double turn = (side > 0 ? 1 : side < 0 ? -1 : 0) * 180 * Shift / (Arc.Radius * std::numbers::pi);
  double sweep = Arc.Angle2 - Arc.Angle1;
  NormalizeAngle(sweep);
  const double end = Arc.Angle1 + sweep;
  double phi = AngleAtVertex({c.x + 1, c.y}, c, Pt);
  if (Arc.Angle1 > phi) phi += 360;
  if (phi + turn < Arc.Angle1) {
    turn = Arc.Angle1 - phi;
  } else if (phi + turn > end) {
    turn = end - phi;
  }
  TCoord x = Round(Pt.x), y = Round(Pt.y);
  RotateCoordAbout(x, y, Round(c.x), Round(c.y), turn);
  Pt = {double(x), double(y)};
}

void MovePointToward(GeoPointType& A, GeoPointType B, double Distance, bool Clamp) {
  const double length = std::max(1e-8, PointDistance(A, B));
  if (Clamp && Distance > length) {
    A = B;
  } else {
    A = AddPoints(A, ScalePoint(SubtractPoints(B, A), Distance / length));
  }
}

LineType LineThroughPoint(const LineType& Line, GeoPointType P) {
  GeoPointType u;
  UnitVector(SubtractPoints(Line.P2(), Line.P1()), u);
  GeoPointType foot;
  bool found = false;
  IntersectLines(Line, MakeLine(P, AddPoints(P, LeftNormal(u))), false, foot, found);
  if (!found) return Line;
  const GeoPointType way = SubtractPoints(P, foot);
  return MakeLine(AddPoints(Line.P1(), way), AddPoints(Line.P2(), way));
}

void LineEdgePoints(const LineType& Line, double Width, GeoPointType P, GeoPointType& E1, GeoPointType& E2) {
  GeoPointType u;
  UnitVector(SubtractPoints(Line.P2(), Line.P1()), u);
  const GeoPointType way = ScalePoint(LeftNormal(u), Width / 2);
  E1 = AddPoints(P, way);
  E2 = SubtractPoints(P, way);
}

void ArcEdgePoints(const ThinArcType& Arc, double Width, GeoPointType P, GeoPointType& E1, GeoPointType& E2) {
  GeoPointType r;
  UnitVector(SubtractPoints(P, Arc.Center()), r);
  const GeoPointType way = ScalePoint(r, Width / 2);
  E1 = AddPoints(P, way);
  E2 = SubtractPoints(P, way);
}

double ArcLengthBetween(GeoPointType A, GeoPointType B, const ThinArcType& Arc) {
  return Arc.Radius * std::numbers::pi * AngleAtVertex(A, Arc.Center(), B) / 180;
}

void OrderAroundCentre(GeoPointType& A, GeoPointType& B, GeoPointType O) {
  if (CrossProduct(SubtractPoints(O, A), SubtractPoints(B, A)) > 0) SwapPoints(A, B);
}

int KeepHitsOnArc(const ThinArcType& Arc, double Width, int Count, GeoPointType& Q1, GeoPointType& Q2) {
  if (Count == 2 && !IsPointOnArc(Q2.x, Q2.y, Arc, Width)) Count = 1;
  if (Count > 0 && !IsPointOnArc(Q1.x, Q1.y, Arc, Width)) {
    Q1 = Q2;
    --Count;
  }
  return Count;
}

int LineArcHits(const LineType& Line, const ThinArcType& Arc, GeoPointType& Q1, GeoPointType& Q2) {
  int count = 0;
  IntersectCircleLine(Arc.Circle(), Line, count, Q1, Q2, true);
  return KeepHitsOnArc(Arc, 100, count, Q1, Q2);
}

}  // namespace Ketril::Tools
