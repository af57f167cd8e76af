// Tracks, arcs, vias and pads.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/PrimitiveObject.h"

namespace Ketril::Editor {

// A straight line with round ends; on a copper layer a track, on another one a drawn line.
struct TrackData {
  TCoordPoint p1, p2;
  TCoord width = 100000;
};

// An arc with round ends, counter-clockwise from angle1 to angle2 (degrees). Equal angles modulo 360 of a
// nonzero sweep, as 0 and 360, make a full circle.
struct ArcData {
  TCoordPoint center;
  TCoord radius = 0;
  double angle1 = 0;
  double angle2 = 0;
  TCoord width = 100000;
};

// Openings in the masks: how far they reach beyond the copper.
struct MaskData {
  TCoord solder = 0;
  TCoord paste = 0;
  TMaskExpansionMode solder_mode = eMaskExpansion_FromRule;
  TMaskExpansionMode paste_mode = eMaskExpansion_FromRule;
};

struct LayerSize {
  TV7_Layer layer;
  TCoord size = 0;
};

struct ViaData {
  TCoordPoint center;
  TCoord hole = 280000;
  TCoord size = 500000;
  TV7_Layer low = eV6_TopLayer;
  TV7_Layer high = eV6_BottomLayer;
  TPadMode mode = ePadMode_Simple;
  bool remove_unused = false;    // copper only where something connects
  bool keep_end_layers = false;  // but always on the first and the last layer
  std::vector<LayerSize> sizes;  // of the layers that differ from `size`, outside simple mode
  std::vector<TV7_Layer> removed;  // layers whose copper was taken away
  std::vector<TV7_Layer> straddling;
  MaskData mask;
  std::uint16_t high_bits = 0;
};

// A pad's copper on one layer, about its centre before rotation.
struct PadLayer {
  TV7_Layer layer = eV6_MultiLayer;  // eV6_MultiLayer: on every layer that has no entry of its own
  TCoord x_size = 600000;
  TCoord y_size = 600000;
  TShape shape = eRounded;
  TCoordPoint offset;             // of the copper from the hole
  double corner_ratio = 0;        // of a rounded rectangle: radius over the smaller side, 0 to 0.5
  double chamfer_ratio = 0;       // of a chamfered corner: side of the cut over the smaller side
  std::uint8_t chamfer_corners = 0;  // bits: 1 top left, 2 top right, 4 bottom left, 8 bottom right
  TCoordPoint trapezoid;          // of a trapezoid: how much the sides differ in x and in y
  // Of a custom shape: filled polygons about the pad's centre, united with the anchor of the shape above.
  std::vector<std::vector<TCoordPoint>> custom;
};

struct PadData {
  std::u16string name;
  TCoordPoint center;  // of the hole
  TCoord hole = 0;     // 0: no hole
  TCoord hole_width = 0;  // the longer side of a slot
  TExtendedHoleType hole_type = eRoundHole;
  double hole_rotation = 0;  // of the slot's longer side against the pad's x axis, degrees
  double rotation = 0;       // of the board, the component's included
  bool plated = true;
  TPadMode mode = ePadMode_Simple;
  bool remove_unused = false;
  bool keep_end_layers = false;
  std::vector<PadLayer> stack{PadLayer{}};  // never empty
  std::vector<TV7_Layer> layers;            // copper, mask and paste layers that the pad opens or fills
  std::vector<TV7_Layer> removed;
  std::vector<TV7_Layer> straddling;
  MaskData mask;
  double paste_ratio = 0;
  TCoord clearance = 0;  // 0: from the rules
  std::uint16_t high_bits = 0;
};

class Track final : public PrimitiveObject<Track, Primitive, IPCB_Track> {
 public:
  static constexpr TObjectId kKind = eTrackObject;
  TrackData data;

  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override;
  void Move(TCoord dx, TCoord dy) override;

  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, X1, data.p1.x)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, Y1, data.p1.y)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, X2, data.p2.x)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, Y2, data.p2.y)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, Width, data.width)
};

}  // namespace Ketril::Editor
