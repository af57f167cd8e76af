#include "DLLs/Tools/Teardrops/LegacyTeardropGeometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {

namespace {

constexpr double kNormalLength = 1000;
constexpr double kFootReach = 100;      // of the foot from the segment, besides the kit's own tolerance
constexpr double kArcEndReach = 10;     // a crossing this near an arc's end is the end
constexpr double kReachInWidths = 3;    // of a chord beyond the crossing
constexpr double kMostThrough = 90;     // sweep of a chord of an arc that goes through the pad
constexpr double kMostFromTheEnd = 30;  // and of one that ends in it

double Distance(TCoordPoint p, TCoordPoint q) {
  return CoordDistance(p.x, p.y, q.x, q.y);
}

GeoPointType ToGeo(TCoordPoint p) {
  return {double(p.x), double(p.y)};
}

TCoordPoint Rounded(GeoPointType p) {
  return {Round(p.x), Round(p.y)};
}

// The end with the smaller x first; of the same x, the one with the smaller y.
LineType InOrder(const LineType& line) {
  const bool swaps = line.x1 > line.x2 || (line.x1 == line.x2 && line.y1 > line.y2);
  return swaps ? MakeLine(line.P2(), line.P1()) : line;
}

TCoordPoint TurnedAbout(TCoordPoint point, TCoordPoint center, double angle) {
  RotateCoordAbout(point.x, point.y, center.x, center.y, angle);
  return point;
}

// The sweep whose chord is that long, at most `most`.
double ChordSweep(double length, double radius, double most) {
  if (length >= 2 * radius) return most;
  return std::min(RadToDeg(2 * std::asin(length * 0.5 / radius)), most);
}

// The unit vector of the long axis of a pad.
GeoPointType LongAxis(TCoord W, TCoord H, double Rotation) {
  const double cos = CosDeg(Rotation), sin = SinDeg(Rotation);
  return W > H ? GeoPointType{cos, sin} : GeoPointType{-sin, cos};
}

// The place that counts of where T meets an edge of an elongated pad.
bool MeetEdge(const LineType& edge, const std::variant<LineType, ThinArcType>& T, GeoPointType& place) {
  if (const auto* line = std::get_if<LineType>(&T)) {
    bool found = false;
    IntersectLines(edge, *line, true, place, found);
    return found;
  }
  GeoPointType hits[2];
  int count = 0;
  IntersectArcLine(std::get<ThinArcType>(T), edge, hits[0], hits[1], count);
  if (count > 0) place = hits[count - 1];
  return count > 0;
}

// Moves a place on an edge across to the spine, which is half a width away.
void MoveOntoSpine(GeoPointType& place, const LineType& edge, const LineType& spine, TCoord half) {
  double dx = 0, dy = 0;
  PerpendicularOffset(edge.x1, edge.y1, edge.x2, edge.y2, half, dx, dy, false);
  const auto sign = [](double value) { return value > 0 ? 1 : value < 0 ? -1 : 0; };
  place.x += sign(spine.x1 - edge.x1) * std::abs(dx);
  place.y += sign(spine.y1 - edge.y1) * std::abs(dy);
}

}  // namespace

LineType NormalThroughPoint(const LineType& Line, GeoPointType Point) {
  double dx = 0, dy = 0;
  PerpendicularOffset(Line.x1, Line.y1, Line.x2, Line.y2, kNormalLength, dx, dy, true);
  return MakeLine(Point, {Point.x + dx, Point.y + dy});
}

bool FootOnSegment(GeoPointType Pt, const LineType& Line, GeoPointType& F) {
  GeoPointType u;
  UnitVector(SubtractPoints(Line.P2(), Line.P1()), u);
  bool found = false;
  IntersectLines(Line, MakeLine(Pt, AddPoints(Pt, LeftNormal(u))), false, F, found);
  return found && IsPointNearSegment(F.x, F.y, Line.x1, Line.y1, Line.x2, Line.y2, kFootReach);
}

std::array<LineType, 4> TPadBox::Sides() const {
  return {MakeLine(bl, tl), MakeLine(tl, tr), MakeLine(br, tr), MakeLine(bl, br)};
}

TPadBox MakePadBox(GeoPointType Center, TCoord W, TCoord H, double Rotation) {
  const auto corner = [&](int right, int top) {
    GeoPointType p;
    RotateVector(Rotation, right * W / 2.0, top * H / 2.0, p.x, p.y);
    return ToGeo(Rounded(AddPoints(Center, p)));
  };
  return {corner(-1, -1), corner(-1, 1), corner(1, 1), corner(1, -1)};
}

bool FindBoxCrossing(const TPadBox& Box, const LineType& Way, GeoPointType& Pnt) {
  for (const LineType& side : Box.Sides()) {
    GeoPointType place;
    bool found = false;
    IntersectLines(InOrder(Way), InOrder(side), true, place, found);
    if (!found) continue;
    Pnt = place;
    return true;
  }
  return false;
}

std::vector<TCoordPoint> ArcHitsOnBox(const ThinArcType& Arc, const TPadBox& Box) {
  std::vector<TCoordPoint> hits;
  for (const LineType& side : Box.Sides()) {
    GeoPointType places[2];
    int count = 0;
    IntersectArcLine(Arc, side, places[0], places[1], count);
    if (count == 2) return {};
    if (count == 1 && std::ranges::find(hits, Rounded(places[0])) == hits.end())
      hits.push_back(Rounded(places[0]));
  }
  if (hits.size() > 1) {
    std::erase_if(hits, [&](TCoordPoint hit) {
      return CoordDistance(hit.x, hit.y, Arc.Sx, Arc.Sy) <= kArcEndReach ||
             CoordDistance(hit.x, hit.y, Arc.Ex, Arc.Ey) <= kArcEndReach;
    });
  }
  return hits;
}

bool IsAngleBetween(double a1, double a2, double t) {
  NormalizeAngle(a1);
  NormalizeAngle(a2);
  NormalizeAngle(t);
  return a2 >= a1 ? t >= a1 && a2 >= t : t >= a1 || a2 >= t;
}

double ArcMiddleAngle(const ThinArcType& Arc, TCoordPoint& p0, TCoordPoint& p1) {
  const double a = PointAngle(p0.x, p0.y, Arc.Cx, Arc.Cy);
  const double b = PointAngle(p1.x, p1.y, Arc.Cx, Arc.Cy);
  const bool one_side = (a >= Arc.Angle1 && b >= Arc.Angle1) || (a <= Arc.Angle2 && b <= Arc.Angle2);
  if (Arc.Angle2 > Arc.Angle1 || one_side || a == b) {
    if (a > b) std::swap(p0, p1);
    return (a + b) * 0.5;
  }
  // The points lie on either side of 0: the higher angle comes first.
  const auto [low, high] = std::minmax(a, b);
  double mid = high + (360 - (high - low)) * 0.5;
  NormalizeAngle(mid);
  if (b > a) std::swap(p0, p1);
  return mid;
}

std::vector<TChord> ArcToChords(const ThinArcType& Arc, TCoord Width, std::vector<TCoordPoint> Hits,
                                TCoordPoint PadCenter) {
  const TCoordPoint center = Rounded(Arc.Center());
  const TCoordPoint start = Rounded({Arc.Sx, Arc.Sy}), end = Rounded({Arc.Ex, Arc.Ey});
  const auto sweep_to = [&](TCoordPoint from, TCoordPoint hit, double most) {
    return ChordSweep(Distance(from, hit) + kReachInWidths * Width, Arc.Radius, most);
  };
  if (Hits.size() == 2) {
    const double mid = ArcMiddleAngle(Arc, Hits[0], Hits[1]);
    const TCoordPoint M =
        TurnedAbout({Round(Arc.Cx + Arc.Radius), center.y}, center, mid);  // the middle of the arc within
    const double back = sweep_to(M, Hits[0], kMostThrough), on = sweep_to(M, Hits[1], kMostThrough);
    return {{IsAngleBetween(Arc.Angle1, mid, mid - back) ? TurnedAbout(M, center, -back) : start, M},
            {M, IsAngleBetween(mid, Arc.Angle2, mid + on) ? TurnedAbout(M, center, on) : end}};
  }
  if (Hits.size() != 1) return {};
  const bool start_is_near = Distance(start, PadCenter) < Distance(end, PadCenter);
  const TCoordPoint near = start_is_near ? start : end;
  const double sweep = sweep_to(near, Hits[0], kMostFromTheEnd);
  if (start_is_near) {
    const bool fits = IsAngleBetween(Arc.Angle1, Arc.Angle2, Arc.Angle1 + sweep);
    return {{start, fits ? TurnedAbout(start, center, sweep) : end}};
  }
  if (IsAngleBetween(Arc.Angle1, Arc.Angle2, Arc.Angle2 - sweep))
    return {{TurnedAbout(end, center, -sweep), end}};
  return {{end, start}};
}

LineType TPadSpine::Line() const {
  return MakeLine(ToGeo(First), ToGeo(Second));
}

TPadSpine MakePadSpine(TCoordPoint Center, TCoord W, TCoord H, double Rotation) {
  const auto [smaller, larger] = std::minmax(W, H);
  const GeoPointType way = ScalePoint(LongAxis(W, H, Rotation), (larger - smaller) / 2);
  return {Rounded(SubtractPoints(ToGeo(Center), way)), Rounded(AddPoints(ToGeo(Center), way)), smaller};
}

int ElongatedPadCrossings(const TPadSpine& Spine, const std::variant<LineType, ThinArcType>& T,
                          GeoPointType& p1, GeoPointType& p2) {
  const LineType spine = Spine.Line();
  const TCoord half = Spine.Width / 2;
  LineType left = spine, right = spine;
  OffsetLine(left, half, true);
  OffsetLine(right, half, false);
  GeoPointType places[2];
  const LineType* edges[2];
  int n = 0;
  for (const LineType* edge : {&left, &right}) {
    if (!MeetEdge(*edge, T, places[n])) continue;
    edges[n++] = edge;
  }
  for (int i = 0; i < n; ++i) {
    MoveOntoSpine(places[i], *edges[i], spine, half);
    (i == 0 ? p1 : p2) = places[i];
  }
  if (n > 0) return n;
  GeoPointType ignored;
  if (MeetEdge(MakeLine(left.P1(), right.P1()), T, ignored)) {
    p1 = spine.P1();
    n = 1;
  }
  if (MeetEdge(MakeLine(left.P2(), right.P2()), T, ignored)) {
    p2 = spine.P2();
    if (n == 0) p1 = p2;
    ++n;
  }
  return n;
}

bool IsPointInElongatedPad(TCoordPoint Point, TCoordPoint Center, TCoord W, TCoord H, double Rotation) {
  const auto [smaller, larger] = std::minmax(W, H);
  const double reach = (larger - smaller) / 2, across = smaller / 2;
  const TCoordPoint turned = TurnedAbout(Point, Center, -Rotation);
  const double x = std::abs(double{1} * turned.x - Center.x), y = std::abs(double{1} * turned.y - Center.y);
  if (W > H ? x <= reach && y <= across : y <= reach && x <= across) return true;
  const TPadSpine spine = MakePadSpine(Center, W, H, Rotation);
  return Distance(Point, spine.First) <= across || Distance(Point, spine.Second) <= across;
}

}  // namespace Ketril::Tools
