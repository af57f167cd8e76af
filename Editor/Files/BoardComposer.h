// Expressions of objects that the board file does not have yet, or not in the form that they need now: each
// on one line, in the words of the file's version.
//
// What the format cannot say is said as nearly as it can: a copper arc before version 20200119 becomes lines,
// an octagonal pad a rectangle with cut corners, a via or pad with sizes of its own on some layers, before
// version 20241229, one with a single size. Objects that a board file never holds give nothing.
#pragma once

#include <string>
#include <vector>

#include "Editor/Files/FileStyle.h"

namespace Ketril::Editor {

class BoardComposer {
 public:
  // `placement`: of the footprint that the object goes into.
  BoardComposer(FileWords& words, const Placement& placement) : words_(words), placement_(placement) {}

  // One expression as a rule. A member of a component is written for that footprint, of a polygon for that
  // zone. Gives the object an identifier.
  std::vector<std::string> Expressions(Primitive& object);
  // True when Expressions, for an object that the words were prepared for, changes nothing that another
  // object's expressions need, so that several threads may compose at once.
  static bool CanShareWords(const Primitive* object);

  // Parts of expressions.
  static std::string Justify(const TextData& text);  // empty for what is customary
  static std::string ViaStack(const FileWords& words, const ViaData& via);
  static std::string PadHole(const PadData& pad);        // "0.8", "oval 0.6 1.2", empty
  static std::string PadOffset(const PadLayer& copper);  // both empty when there is none
  static std::string PadTrapezoid(const PadLayer& copper);
  static std::string PadType(const PadData& pad);
  static std::string PadShape(const FileWords& words, const PadLayer& copper);
  static std::vector<std::string> PadCorners(const FileWords& words, const PadLayer& copper);
  static std::string PadChamfer(const PadLayer& copper);
  static std::string PadPrimitives(const PadLayer& copper);
  static std::string PadStack(const FileWords& words, const Pad& pad);
  static std::string PadLayers(const FileWords& words, const Pad& pad);
  // The layers of a pad that names none.
  static std::vector<TV7_Layer> ImpliedPadLayers(TV7_Layer layer, const std::vector<TV7_Layer>& copper);

 private:
  bool InFootprint(const Primitive& object) const;
  std::string Place(TCoordPoint place) const { return words_.Place(place, placement_); }
  std::string PlaceAndAngle(TCoordPoint place, double angle) const;  // `(at x y angle)`
  std::string Layer(const Primitive& object) const {
    return " (layer " + words_.Layer(object.state.layer) + ")";
  }
  std::string Pen(TCoord width) const;
  std::string LayerAndPen(const Primitive& object, TCoord width) const;  // in the version's order
  std::string NetOf(const Primitive& object) {
    return " (net " + std::to_string(words_.NetNumber(object.GetNet())) + ")";
  }
  std::string LockedWord(const Primitive& object) const;          // " locked" behind the keyword
  std::string LockedList(const Primitive& object) const;          // " (locked yes)"
  std::string PointList(const std::vector<TCoordPoint>& points);  // `(pts ...)`

  std::string Line(Primitive& object, TCoordPoint p1, TCoordPoint p2, TCoord width);
  std::vector<std::string> ArcLines(Arc& arc);
  std::string DrawnArc(Arc& arc);
  std::string TrackArc(Arc& arc, double from, double to);  // parts of the sweep
  std::string ViaText(Via& via);
  std::string TextText(Text& text);
  std::vector<std::string> RegionText(Region& region);
  std::string RegionZone(Region& region);
  std::vector<std::string> Shapes(Primitive& object, const std::vector<Ring>& rings, bool filled, TCoord pen);
  std::string PolygonZone(Polygon& polygon);
  std::string PlacementText(const PlacementArea& area) const;
  // As the copper of a zone, on the region's layer.
  std::vector<std::string> Fills(const Region& region, const std::vector<Ring>& rings);
  std::string Footprint(Component& component);
  std::string FreePad(Pad& pad);
  std::string PadText(Pad& pad, bool is_free);
  std::string NetClass(const ObjectClass& net_class) const;

  FileWords& words_;
  Placement placement_;
  // The first list of points: the copper of a zone is mostly its outline over again.
  struct {
    std::vector<TCoordPoint> points;
    std::string text;
    std::vector<std::size_t> begins;  // of the points in the text, and the end of the last
  } first_list_;
};

}  // namespace Ketril::Editor
