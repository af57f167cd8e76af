// Outlines of copper as rings of whole-number vertices. Arcs become chords whose ends lie on the arc.
#pragma once

#include <vector>

#include "Editor/Copper/Forms.h"
#include "Editor/Model/GeometricPolygon.h"

namespace Ketril::Editor {

// As coarse as chords get.
constexpr double kCoarsest = 1e10;

// How many chords stand for an arc of so many degrees, so that they run inside it by no more than `error`:
// none spans more than 45 degrees, and a turn has at most 4096.
int ChordCount(double radius, double degrees, double error);

// The border of a hull, all discs grown by `growth`, which takes no radius below 0: counter-clockwise from
// where the border comes to the first disc. Of one disc: from its top. Half of the spots of a hull of two
// equal discs are round the first one.
Spots HullRing(const Hull& hull, double growth, double error);

// The outline of the union of the forms, grown by `growth` to all sides with round corners, or shrunk by a
// negative one; chords run inside arcs by no more than `error`. Outer rings run counter-clockwise, holes
// clockwise, rings without area are left out. One hull begins as HullRing does.
std::vector<Ring> Outline(const std::vector<Form>& forms, double growth, double error);

}  // namespace Ketril::Editor
