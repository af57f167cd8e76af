// Texts, fills and regions.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/PrimitiveObject.h"

namespace Ketril::Editor {

// What a text is to its owner.
enum class TextRole : std::uint8_t { Free, Designator, Comment };
enum class TextAlign : std::int8_t { Low = -1, Center = 0, High = 1 };  // left or bottom, middle, right or top

// A text is a box about its anchor: the box follows from the letters' size and the alignment.
struct TextData {
  TCoordPoint anchor;
  std::u16string string;  // as stored; what is shown follows from it
  TCoord size = 600000;         // height of a letter
  TCoord letter_width = 600000; // nominal width of a letter
  TCoord width = 100000;        // of the stroke
  double rotation = 0;          // of the board, degrees
  TextAlign horizontal = TextAlign::Center;
  TextAlign vertical = TextAlign::Center;
  bool mirrored = false;
  TextRole role = TextRole::Free;
};

// A box with a rotation about its centre.
struct FillData {
  TCoordRect box;
  double rotation = 0;
};

// A ring of vertices; `hole` rings are taken off the others.
struct Ring {
  std::vector<TCoordPoint> points;
  bool hole = false;
};

// A filled area, or, with `filled` false, the drawn outline of one: a rectangle, a polygon, a curve.
struct RegionData {
  std::vector<Ring> rings;
  TRegionKind kind = eRegionKind_Copper;
  bool filled = true;
  bool closed = true;     // false for a drawn curve that is open
  TCoord line_width = 0;  // of the pen along the outline, 0 for none
};

class Text final : public PrimitiveObject<Text, Primitive, IPCB_Text2> {
 public:
  static constexpr TObjectId kKind = eTextObject;
  TextData data;
  std::u16string Shown() const;  // with ${REFERENCE}, ${VALUE} and the like of its component put in
  TCoordRect Box() const;        // before rotation about the anchor
};

class Fill final : public PrimitiveObject<Fill, Primitive, IPCB_Fill> {
 public:
  static constexpr TObjectId kKind = eFillObject;
  FillData data;
};

class Region final : public PrimitiveObject<Region, Primitive, IPCB_Region2, IPCB_RegionShape> {
 public:
  static constexpr TObjectId kKind = eRegionObject;
  RegionData data;
};

struct ComponentBodyData : RegionData {
  std::u16string model;
  TCoord height = 0;
};
class ComponentBody final : public PrimitiveObject<ComponentBody, Primitive, IPCB_ComponentBody2> {
 public:
  static constexpr TObjectId kKind = eComponentBodyObject;
  ComponentBodyData data;
};

}  // namespace Ketril::Editor
