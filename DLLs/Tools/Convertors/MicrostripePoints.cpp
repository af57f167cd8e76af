#include "DLLs/Tools/Convertors/MicrostripePoints.h"

#include <cmath>

#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

// Reflects the points of the right end in the line across the middle of the track.
void AddLeftPoints(const TMicrostripeFrame& track, TMicrostripePoints& points) {
  const double half = (track.Right.x - track.Turned().x) / 2;
  for (std::size_t i = 0; i < 5; ++i) {
    points[5 + i] = points[i];
    TransformPoint(points[5 + i], track.Right.x - half, track.Right.y, 180, true, track.Right.y);
  }
}

}  // namespace

TCoord CutToCoord(double value) {
  return SaturateToCoord(std::trunc(value));
}

void TransformPoint(GeoPointType& Point, double CentreX, double CentreY, double Angle, bool Mirror,
                    double AxisY) {
  TCoord x = CutToCoord(Point.x), y = CutToCoord(Point.y);
  if (Mirror) MirrorCoord(x, y, CutToCoord(AxisY), 1);
  if (Angle != 0) RotateCoordAbout(x, y, CutToCoord(CentreX), CutToCoord(CentreY), std::trunc(Angle));
  Point = {double(x), double(y)};
}

int TMicrostripeFrame::Angle() const {
  return static_cast<int>(PointAngle(Right.x, Right.y, Left.x, Left.y));
}

double TMicrostripeFrame::HalfWidth() const {
  const TCoord half = CutToCoord(Width) / 2;
  return half;
}

GeoPointType TMicrostripeFrame::Turned() const {
  GeoPointType left = {double(Left.x), double(Left.y)};
  TransformPoint(left, Right.x, Right.y, -Angle(), false, 0);
  return left;
}

TMicrostripePoints BendPoints(const TMicrostripeFrame& Track, double AOutsideMiter, double AInsideMiter) {
  const double x = Track.Right.x, y = Track.Right.y, W = Track.Width, H = Track.HalfWidth();
  // What the outer cut leaves of the diagonal, and where the cut's line meets the inner edges: both legs of
  // the half square over it.
  const double diagonal = std::sqrt(2 * W * W);
  const double rest = diagonal - diagonal * AOutsideMiter;
  const double C = 2 * std::sqrt(rest * rest / 2);

  TMicrostripePoints points;
  points[0] = {x - H - W * AInsideMiter, y - H};
  points[1] = {x - H, y - H - W * AInsideMiter};
  points[3] = C <= 2 * H ? GeoPointType{x - H + C, y - H} : GeoPointType{x + H, y - 3 * H + C};
  points[2] = {points[3].x, y - H};
  points[4] = {x - 3 * H + C, y + H};
  AddLeftPoints(Track, points);
  return points;
}

TMicrostripePoints SquarePoints(const TMicrostripeFrame& Track) {
  const double x = Track.Right.x, y = Track.Right.y, H = Track.HalfWidth();
  TMicrostripePoints points;
  points.fill({x, y + H});
  points[0] = {x, y - H};
  AddLeftPoints(Track, points);
  return points;
}

}  // namespace Ketril::Tools
