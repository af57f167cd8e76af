// The double half: values, points, vectors, angles and rotations.
//
// Nothing here raises. What is no number gives no number; comparisons with it are false.
#pragma once

#include <cmath>

#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

void SwapValues(double& a, double& b);
void SwapPoints(GeoPointType& p, GeoPointType& q);
double MinValue(double a, double b);
double MaxValue(double a, double b);
// Is a - b within plus or minus `Tolerance`, both ends included.
bool IsEqual(double a, double b, double Tolerance);
// Less than 100 units apart.
bool ValuesNear(double a, double b);
bool PointsNear(GeoPointType p, GeoPointType q);  // both coordinates near

inline GeoPointType AddPoints(GeoPointType p, GeoPointType q) {
  return {p.x + q.x, p.y + q.y};
}
inline GeoPointType SubtractPoints(GeoPointType p, GeoPointType q) {
  return {p.x - q.x, p.y - q.y};
}
// x by x, y by y.
inline GeoPointType MultiplyPoints(GeoPointType p, GeoPointType q) {
  return {p.x * q.x, p.y * q.y};
}
inline GeoPointType ScalePoint(GeoPointType p, double s) {
  return {p.x * s, p.y * s};
}
inline double DotProduct(GeoPointType p, GeoPointType q) {
  return p.x * q.x + p.y * q.y;
}
inline double CrossProduct(GeoPointType p, GeoPointType q) {
  return p.x * q.y - p.y * q.x;
}
inline double PointLengthSquared(GeoPointType p) {
  return DotProduct(p, p);
}
inline double PointLength(GeoPointType p) {
  return std::sqrt(PointLengthSquared(p));
}
inline double PointDistanceSquared(GeoPointType p, GeoPointType q) {
  return PointLengthSquared(SubtractPoints(p, q));
}
inline double PointDistance(GeoPointType p, GeoPointType q) {
  return PointLength(SubtractPoints(p, q));
}
double CoordDistance(double x1, double y1, double x2, double y2);
// Of whole coordinates: the sum of the absolute differences, wrapped to 32 bits.
TCoord ManhattanDistance(TCoord x1, TCoord y1, TCoord x2, TCoord y2);
// A zero vector stays zero.
inline void UnitVector(GeoPointType p, GeoPointType& q) {
  const double length = PointLength(p);
  q = length > 0 ? ScalePoint(p, 1 / length) : p;
}
void UnitVector(GeoPointType& p);

double DegToRad(double a);
double RadToDeg(double a);
double CosDeg(double a);
double SinDeg(double a);
void SinCosDeg(double a, double& Sin, double& Cos);

// Into 0 to 360, both included: 360 and 720 become 360. Beyond 720 either way the whole part is first taken
// modulo 360, so 1080 becomes 0. From 2147483646 on, either way, 0.
void NormalizeAngle(double& a);
// 1 to 4, of the normalised angle. An axis begins its quadrant, but 360 is in quadrant 4.
int AngleQuadrant(double a);
// Degrees of the point seen from the centre: at least 0, below 360. Exactly above is 90; exactly below, and
// the centre itself, 270.
double PointAngle(double px, double py, double cx, double cy);
// The angle of the direction (dx, dy) in units of which `full_turn` make a turn, given the arc tangent of
// dy / dx as `acute`, of any sign; vertical directions do not read it. A zero vector points down.
double AngleInQuadrant(double dx, double dy, double acute, double full_turn);
// Does the counter-clockwise sweep from a1 to a2 hold t, by 0.001 degrees at either end. A sweep passes 0
// when a1 > a2; equal angles are no full turn. The angles are compared as they are: 0 is not 360.
bool IsAngleInSweep(double a1, double a2, double t);
// Degrees between the ways from the vertex to the two points, 0 to 180; 360 less that when p1 is the higher
// of the two. 0 when either way is shorter than 1e-12.
double AngleAtVertex(GeoPointType p1, GeoPointType vertex, GeoPointType p2);

// By degrees about the origin, unrounded.
void RotateVector(double a, double x, double y, double& outX, double& outY);
// Whole coordinates about the origin, x negated first when `Mirror`. 0, 90, 180 and 270 are exact; other
// angles, 360 and -90 among them, are rounded, a half to the even neighbour, and kept in range. Negating the
// lowest coordinate wraps.
void RotateCoord(TCoord& x, TCoord& y, double Angle, bool Mirror);
// Normalises the angle, then turns about (cx, cy). Ways that do not fit a coordinate wrap.
void RotateCoordAbout(TCoord& x, TCoord& y, TCoord cx, TCoord cy, double Angle);
// Mode 0 reflects x about the vertical line at `Axis`, mode 1 y about the horizontal one; others do nothing.
// Wraps to 32 bits.
void MirrorCoord(TCoord& x, TCoord& y, TCoord Axis, int Mode);

}  // namespace Ketril::Tools
