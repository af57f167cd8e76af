// Boolean operations and offsets of rings, by Clipper. Coordinates of results are whole units, outer rings
// run counter-clockwise, holes clockwise.
#pragma once

#include <vector>

#include "Editor/Copper/Forms.h"
#include "Editor/Model/GeometricPolygon.h"

namespace Ketril::Editor {

// What the rings cover, less what the others cover: a place counts as covered by a list when its rings, each
// the way round it is, wind about it.
std::vector<Ring> Difference(const std::vector<Ring>& rings, const std::vector<Ring>& less);

// The rings of an area and what is within `reach` of them, of a filled one without what is within -`reach` of
// the outside when that is negative; with round corners, whose chords run inside arcs by no more than
// `error`. A line that is not closed has round ends.
std::vector<Ring> Offset(const std::vector<Ring>& rings, double reach, double error, bool filled = true,
                         bool closed = true);

}  // namespace Ketril::Editor
