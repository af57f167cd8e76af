// Outlines of copper.
#pragma once

#include "Interfaces/Primitives.h"

namespace Ketril {

// Makes outlines of objects. A maker keeps its resolution; who asks for one gets a new one.
class IPCB_ContourMaker : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_ContourMaker"};

  // How far a chord may run inside the arc that it stands for, in units; 1 and less count as 1. The ends of
  // the chords lie on the arc. No chord spans more than 45 degrees, and a turn has at most 4096 of them.
  KETRIL_PROPERTY(std::int32_t, ArcResolution);

  // The outline of the object's copper on the layer, grown by `expansion` units to all sides, with round
  // corners, or shrunk by a negative one. Empty when the object has no copper there, or none is left.
  //
  // Outer rings run counter-clockwise, holes clockwise; vertices are whole units, none is repeated at the
  // end. The ring of a track begins at the left side of its left end, looking to the right end: half of the
  // vertices go round the left end, the other half round the right one. The left end is the one with the
  // smaller x, of equal ones with the smaller y. The microstrip tool relies on this order.
  virtual Status MakeContour(IPCB_Primitive* primitive, TCoord expansion, TV7_Layer layer,
                             Ref<IPCB_GeometricPolygon>& outline) noexcept = 0;
};

}  // namespace Ketril
