// Distances between points, segments and circular arcs of the plane, in closed form. All values are doubles
// in units; nothing overflows for 32-bit coordinates, and no degenerate piece gives NaN.
#pragma once

namespace Ketril::Editor {

struct Spot {
  double x = 0, y = 0;
  friend bool operator==(const Spot&, const Spot&) = default;
};

struct Segment {
  Spot a, b;
};

// Counter-clockwise from `a`, which is `start` degrees from the centre, over `sweep` degrees, 0 to 360, to
// `b`.
struct ArcLine {
  Spot center;
  double radius = 0;
  double start = 0, sweep = 0;
  Spot a, b;

  ArcLine(Spot center, double radius, double start, double sweep);
  Spot At(double degrees) const;
  bool Sees(Spot spot) const;  // the ray from the centre to the spot meets the arc
};

double Distance(Spot a, Spot b);
double Distance(Spot spot, const Segment& segment);
double Distance(Spot spot, const ArcLine& arc);
double Distance(const Segment& s, const Segment& t);
double Distance(const Segment& segment, const ArcLine& arc);
double Distance(const ArcLine& s, const ArcLine& t);

}  // namespace Ketril::Editor
