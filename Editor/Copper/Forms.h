// What the copper of the board's objects is made of. Everything that works on copper (gaps, outlines, areas)
// starts from these few forms, so that a kind of object is known in one place. Lengths are in units.
#pragma once

#include <optional>
#include <variant>
#include <vector>

#include "Editor/Copper/Pieces.h"
#include "Editor/Model/GeometricPolygon.h"
#include "Editor/Model/Pad.h"
#include "Editor/Model/Via.h"

namespace Ketril::Editor {

using Spots = std::vector<Spot>;

// The convex hull of discs, which are in the order of its corners, counter-clockwise. Never empty.
struct Hull {
  std::vector<Disc> discs;
};

// What a round pen of that radius draws along an arc.
struct DrawnArc {
  ArcLine line;
  double pen = 0;
};

// Rings whose inside is filled and whose sides a round pen draws along. What is inside an outer ring and
// inside no hole is filled. The pen alone draws when `filled` is false, and leaves the last side of each ring
// out when `closed` is false. No ring is empty.
struct Area {
  std::vector<Spots> outer, holes;
  double pen = 0;
  bool filled = true;
  bool closed = true;
};

Area AreaOfRings(const std::vector<Ring>& rings);

using Form = std::variant<Hull, DrawnArc, Area>;

// The kinds whose objects are copper themselves, where a group's members are.
constexpr TObjectSet kCopperKinds = {eArcObject, eTrackObject, ePadObject,
                                     eViaObject, eFillObject,  eRegionObject};

// True when the object has copper on the layer, or, where the layer is no copper layer, ink that stands on
// it. Objects of eV6_MultiLayer are on all copper layers. Of groups: when a member has.
bool HasCopperOn(const Primitive& primitive, TV7_Layer layer);

// The copper of an object on a layer is the union of these; empty where it has none. Texts count as boxes,
// groups as their members, holes as filled. Where a pad's or via's ring was taken away its plated hole
// remains. Bodies, connections, cut-outs, hidden objects and what has no place have no copper. The disc of a
// track's left end (smaller x, then smaller y) is the first of its hull.
std::vector<Form> FormsOf(const Primitive& primitive, TV7_Layer layer);

// A straight line or a dot that a round pen draws.
struct Stroke {
  Segment line;
  double pen = 0;
};

// The copper of a track or a via on a layer, which is a single stroke, for those who ask often; nothing where
// there is none, and for other kinds.
std::optional<Stroke> StrokeOf(const Primitive& primitive, TV7_Layer layer);

// What is drilled through a pad or via; no discs without a hole.
Hull HoleOf(const Pad& pad);
Hull HoleOf(const Via& via);

}  // namespace Ketril::Editor
