// The copper that is written for a region which stands in the file as a zone of its own, and how it is told
// apart again.
#pragma once

#include <vector>

#include "Editor/Model/Shapes.h"

namespace Ketril::Editor {

// What the rings cover: an outline may cross itself, but a fill that does so breaks other programs.
std::vector<Ring> Covered(const std::vector<Ring>& rings);

// The same, with a tie. The programs of the format's versions before teardrops take a zone for connected
// only when a track of its net ends in it, or the middle of a pad or via lies in it, and a teardrop on the
// way between has none of these. It gets a thin strip that runs within the copper of the track, via or pad
// that it touches to the nearest such place, so that the copper of the board stays as it is. The region
// itself, which must be on a board, is not changed.
std::vector<Ring> TiedFill(const Region& region);

// What a pen of kRegionPen draws the fill of a region with, where fills have a pen. A fill with a strip, and
// one of which nothing would be left, stays as it is.
constexpr TCoord kRegionPen = 10000;  // 1 mil, the least that the format's programs take
std::vector<Ring> WithinPen(const Region& region, std::vector<Ring> fill);

// True when the fills are what these functions make of the outlines: then the outlines are the region. A fill
// with a strip reaches out of them, as no poured copper does, and is looked for when `may_be_tied`.
bool IsMadeFrom(const std::vector<Ring>& fills, const std::vector<Ring>& outlines, bool may_be_tied);

}  // namespace Ketril::Editor
