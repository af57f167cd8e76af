#include "Editor/Copper/Pieces.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Editor/Model/PlaneMap.h"

namespace Ketril::Editor {

namespace {

double Cross(Spot origin, Spot a, Spot b) {
  return (a.x - origin.x) * (b.y - origin.y) - (a.y - origin.y) * (b.x - origin.x);
}

double Squared(Spot a, Spot b) {
  const double dx = a.x - b.x, dy = a.y - b.y;
  return dx * dx + dy * dy;
}

// Where along the segment, 0 to 1 between its ends, the spot's foot on its line is; 0 for a point.
double FootShare(Spot spot, const Segment& segment) {
  const double length = Squared(segment.a, segment.b);
  if (length == 0) return 0;
  return ((spot.x - segment.a.x) * (segment.b.x - segment.a.x) +
          (spot.y - segment.a.y) * (segment.b.y - segment.a.y)) /
         length;
}

Spot Along(const Segment& segment, double share) {
  return {segment.a.x + share * (segment.b.x - segment.a.x),
          segment.a.y + share * (segment.b.y - segment.a.y)};
}

double SquaredDistance(Spot spot, const Segment& segment) {
  return Squared(spot, Along(segment, std::clamp(FootShare(spot, segment), 0.0, 1.0)));
}

bool DoCross(const Segment& s, const Segment& t) {
  const auto parts = [](const Segment& line, const Segment& ends) {
    return (Cross(line.a, line.b, ends.a) < 0) != (Cross(line.a, line.b, ends.b) < 0);
  };
  return parts(s, t) && parts(t, s);
}

}  // namespace

ArcLine::ArcLine(Spot center, double radius, double start, double sweep)
    : center(center),
      radius(radius),
      start(std::isfinite(start) ? std::fmod(start, 360) : 0),
      sweep(sweep),
      a(At(this->start)),
      b(At(this->start + sweep)) {}

Spot ArcLine::At(double degrees) const {
  const Direction direction = DirectionOf(degrees);
  return {center.x + radius * direction.cos, center.y + radius * direction.sin};
}

bool ArcLine::Sees(Spot spot) const {
  if (sweep >= 360) return true;
  const double angle = std::atan2(spot.y - center.y, spot.x - center.x) * 180 / std::numbers::pi;
  double behind = std::fmod(angle - start, 360);
  if (behind < 0) behind += 360;
  return behind <= sweep;
}

double Distance(Spot a, Spot b) {
  return std::sqrt(Squared(a, b));
}

double Distance(Spot spot, const Segment& segment) {
  return std::sqrt(SquaredDistance(spot, segment));
}

double Distance(Spot spot, const ArcLine& arc) {
  if (arc.Sees(spot)) return std::abs(Distance(spot, arc.center) - arc.radius);
  return std::sqrt(std::min(Squared(spot, arc.a), Squared(spot, arc.b)));
}

// Where a sign of the crossing test is lost in rounding, an end of one is as near to the other as that.
double Distance(const Segment& s, const Segment& t) {
  if (DoCross(s, t)) return 0;
  return std::sqrt(std::min(std::min(SquaredDistance(s.a, t), SquaredDistance(s.b, t)),
                            std::min(SquaredDistance(t.a, s), SquaredDistance(t.b, s))));
}

// Nearest places are ends, crossings, or the foot of the centre and what it sees on the arc. Each candidate
// is a distance of two places of the pieces, so one too many does no harm.
double Distance(const Segment& segment, const ArcLine& arc) {
  const double share = FootShare(arc.center, segment), length = Distance(segment.a, segment.b);
  const Spot foot = Along(segment, share);
  const double height = Distance(foot, arc.center);
  if (length > 0 && height <= arc.radius) {
    const double half = std::sqrt((arc.radius - height) * (arc.radius + height)) / length;
    for (const double crossing : {share - half, share + half}) {
      if (crossing >= 0 && crossing <= 1 && arc.Sees(Along(segment, crossing))) return 0;
    }
  }
  return std::min({Distance(segment.a, arc), Distance(segment.b, arc), Distance(arc.a, segment),
                   Distance(arc.b, segment), Distance(Along(segment, std::clamp(share, 0.0, 1.0)), arc)});
}

// Nearest places are ends, crossings, or lie on the line through the centres. Of arcs about one centre an end
// of one lies in the sweep of the other, where they overlap.
double Distance(const ArcLine& s, const ArcLine& t) {
  double best = std::min({Distance(s.a, t), Distance(s.b, t), Distance(t.a, s), Distance(t.b, s)});
  const double apart = Distance(s.center, t.center);
  if (apart == 0) return best;
  const Spot to{(t.center.x - s.center.x) / apart, (t.center.y - s.center.y) / apart};
  for (const double side : {-1.0, 1.0}) {
    const Spot on_s{s.center.x + side * s.radius * to.x, s.center.y + side * s.radius * to.y};
    const Spot on_t{t.center.x + side * t.radius * to.x, t.center.y + side * t.radius * to.y};
    if (s.Sees(on_s)) best = std::min(best, Distance(on_s, t));
    if (t.Sees(on_t)) best = std::min(best, Distance(on_t, s));
  }
  if (apart > s.radius + t.radius || apart < std::abs(s.radius - t.radius)) return best;
  const double x = (apart + (s.radius - t.radius) * ((s.radius + t.radius) / apart)) / 2;
  const double y = std::sqrt(std::max((s.radius - x) * (s.radius + x), 0.0));
  for (const double side : {-y, y}) {
    const Spot crossing{s.center.x + x * to.x - side * to.y, s.center.y + x * to.y + side * to.x};
    if (s.Sees(crossing) && t.Sees(crossing)) return 0;
  }
  return best;
}

}  // namespace Ketril::Editor
