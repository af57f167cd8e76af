// Gaps between the copper of objects, from their exact shapes. Lengths are doubles in units, never NaN.
#pragma once

#include <limits>
#include <optional>
#include <vector>

#include "Editor/Copper/CopperShape.h"

namespace Ketril::Editor {

constexpr double kNoLimit = std::numeric_limits<double>::infinity();
// Smaller gaps count as touching: rounding to whole units may part what touches.
constexpr double kTouchGap = 1;

// The gap between two shapes: 0 when they touch or overlap, one within the other included. Exact below
// `limit`; otherwise `limit` itself, found sooner the smaller it is. An empty shape is beyond every limit.
// Nearest pieces are found through the trees of boxes of both shapes, so a large one costs little more than a
// small one.
double Gap(const CopperShape& a, const CopperShape& b, double limit = kNoLimit);

// The layers on which both have copper, from top to bottom, as far as their shapes differ there: of two pads
// that look alike on all layers one layer stands for all. Not for groups.
std::vector<TV7_Layer> SharedLayers(const Primitive& a, const Primitive& b);

// The least gap of two objects over the layers that they share. Groups stand for their members.
double Gap(const Primitive& a, const Primitive& b, double limit = kNoLimit);
// The same on one layer.
double Gap(const Primitive& a, const Primitive& b, TV7_Layer layer, double limit = kNoLimit);

// The same for the pairs that are most of what is asked, from their data alone: two of tracks and vias, and
// one of these with a region that has a vertex on it. Nothing for all others.
std::optional<double> QuickGap(const Primitive& a, const Primitive& b, TV7_Layer layer, double limit);

inline bool Touch(const Primitive& a, const Primitive& b) {
  return Gap(a, b, kTouchGap) < kTouchGap;
}

}  // namespace Ketril::Editor
