// What counts as equal, in one place. An operation not named here compares exactly or takes its tolerance
// from the caller.
#pragma once

#include <numbers>

namespace Ketril::Tools {

// Two values or two points that count as one differ by less than this (`ValuesNear`, `PointsNear`). A point
// on a segment, in a box or in a circle, and one near a stroke, may be off by this much, the end included. In
// coordinate units: 0.01 mil. A line is tangent to a circle when the squares of the radius and of its
// distance differ by less than this.
constexpr double kNearDistance = 100.0;
// Degrees by which an angle may miss a sweep, the end included (`IsAngleInSweep`).
constexpr double kSweepTolerance = 0.001;
// Up to this much, a delta-x counts as vertical and a difference of slopes as parallel
// (`IntersectInfiniteLines`).
constexpr double kSlopeTolerance = 1e-8;
// A direction with an x below this counts as vertical (`TGeomUtils::Intersection` of positions and
// directions).
constexpr double kVerticalDirection = 1e-10;
// A length below this counts as zero (`AngleAtVertex`).
constexpr double kZeroLength = 1e-12;
// How far a rounded point may lie from its edge of a polygon: half the diagonal of a unit.
constexpr double kRoundedPointFuzz = std::numbers::sqrt2 / 2;

}  // namespace Ketril::Tools
