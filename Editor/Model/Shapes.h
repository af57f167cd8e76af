// Texts, fills and regions.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/GeometricPolygon.h"
#include "Editor/Model/PrimitiveObject.h"

namespace Ketril::Editor {

// What a text is to its owner.
enum class TextRole : std::uint8_t { Free, Designator, Comment };
enum class TextAlign : std::int8_t {
  Low = -1,
  Center = 0,
  High = 1
};  // left or bottom, middle, right or top

// A text is a box about its anchor: the box follows from the letters' size and the alignment.
struct TextData {
  TCoordPoint anchor;
  std::u16string string;         // as stored; what is shown follows from it
  TCoord size = 600000;          // height of a letter
  TCoord letter_width = 600000;  // nominal width of a letter
  TCoord width = 100000;         // of the stroke
  double rotation = 0;           // of the board, about the anchor, degrees
  TextAlign horizontal = TextAlign::Center;
  TextAlign vertical = TextAlign::Center;
  bool mirrored = false;  // left to right, about the anchor, before the rotation
  bool keeps_upright =
      false;  // the format's programs turn it by 180 degrees where it would stand on its head
  TextRole role = TextRole::Free;
  friend bool operator==(const TextData&, const TextData&) = default;
};

// As it is drawn: turned by 180 degrees where a text that keeps upright would stand on its head.
double ShownRotation(const TextData& text);

// A box with a rotation about its centre.
struct FillData {
  TCoordRect box;
  double rotation = 0;
  friend bool operator==(const FillData&, const FillData&) = default;
};

// A filled area, or, with `filled` false, the drawn outline of one: a rectangle, a polygon, a curve.
struct RegionData {
  std::vector<Ring> rings;
  TRegionKind kind = eRegionKind_Copper;
  bool filled = true;
  bool closed = true;     // false for a drawn curve that is open
  TCoord line_width = 0;  // of the pen along the outline, 0 for none
  friend bool operator==(const RegionData&, const RegionData&) = default;
};

class Text final : public PrimitiveObject<Text, Primitive, IPCB_Text3> {
 public:
  static constexpr TObjectId kKind = eTextObject;
  TextData data;

  Text();
  // With ${REFERENCE}, ${VALUE}, ${LAYER}, ${FOOTPRINT_NAME} and ${FOOTPRINT_LIBRARY}, and the %R and %V of
  // the oldest files, put in from its component. The names of others stay as they are.
  std::u16string Shown() const;
  // Before rotation about the anchor, with the stroke. Lines are 1.6 letters apart.
  TCoordRect Box() const;
  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override { return data.anchor; }
  void Transform(const PlaneMap& map) override;
  void MirrorLayers() override;              // turns the writing over as well
  Ref<Primitive> FreeCopy() const override;  // says what the component's text shows, and has no role
  std::u16string Identifier() const override { return Shown(); }

  // The corners of the box. It has the size of its letters: writing a corner moves the text there.
  KETRIL_HOST_PAIR(IPCB_RectangularPrimitive, TCoord, X1, Box().x1, MoveBy(std::int64_t{value} - Box().x1, 0))
  KETRIL_HOST_PAIR(IPCB_RectangularPrimitive, TCoord, Y1, Box().y1, MoveBy(0, std::int64_t{value} - Box().y1))
  KETRIL_HOST_PAIR(IPCB_RectangularPrimitive, TCoord, X2, Box().x2, MoveBy(std::int64_t{value} - Box().x2, 0))
  KETRIL_HOST_PAIR(IPCB_RectangularPrimitive, TCoord, Y2, Box().y2, MoveBy(0, std::int64_t{value} - Box().y2))
  KETRIL_HOST_PROPERTY(IPCB_RectangularPrimitive, double, Rotation, data.rotation)
  KETRIL_HOST_PAIR(IPCB_Text, std::u16string, Text, Shown(), Write([&] { data.string = value; }))
  KETRIL_HOST_PAIR(IPCB_Text, TCoord, Size, data.size, Write([&] { SetSize(value); }))
  KETRIL_HOST_PROPERTY(IPCB_Text, TCoord, Width, data.width)
  KETRIL_HOST_PROPERTY(IPCB_Text, TCoord, AnchorX, data.anchor.x)
  KETRIL_HOST_PROPERTY(IPCB_Text, TCoord, AnchorY, data.anchor.y)
  KETRIL_HOST_PROPERTY(IPCB_Text, bool, Mirrored, data.mirrored)
  KETRIL_HOST_PROPERTY(IPCB_Text2, std::u16string, String, data.string)
  KETRIL_HOST_READ(IPCB_Text3, TCoordRect, TextRectangle, Bounds())
  KETRIL_HOST_READ(IPCB_Text3, TCoordPoint, TextReference, data.anchor)

 private:
  void SetSize(TCoord size);  // the width of the letters follows
};

class Fill final : public PrimitiveObject<Fill, Primitive, IPCB_Fill> {
 public:
  static constexpr TObjectId kKind = eFillObject;
  FillData data;

  Fill();
  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override;  // the centre
  void Transform(const PlaneMap& map) override;

  KETRIL_HOST_PROPERTY(IPCB_RectangularPrimitive, TCoord, X1, data.box.x1)
  KETRIL_HOST_PROPERTY(IPCB_RectangularPrimitive, TCoord, Y1, data.box.y1)
  KETRIL_HOST_PROPERTY(IPCB_RectangularPrimitive, TCoord, X2, data.box.x2)
  KETRIL_HOST_PROPERTY(IPCB_RectangularPrimitive, TCoord, Y2, data.box.y2)
  KETRIL_HOST_PROPERTY(IPCB_RectangularPrimitive, double, Rotation, data.rotation)
};

TCoordRect BoundsOf(const RegionData& region);
double AreaOf(const std::vector<Ring>& rings);  // in square units, holes taken off

// What regions and bodies share.
template <class Self, class... Interfaces>
class AreaObject : public PrimitiveObject<Self, Primitive, Interfaces...> {
 public:
  TCoordRect Bounds() const override { return BoundsOf(Area()); }
  TCoordPoint Reference() const override {
    return Area().rings.empty() || Area().rings.front().points.empty() ? TCoordPoint{}
                                                                       : Area().rings.front().points.front();
  }
  void Transform(const PlaneMap& map) override {
    for (Ring& ring : Area().rings) map.Apply(ring.points);
  }

  KETRIL_HOST_PAIR(IPCB_Region, Ref<IPCB_GeometricPolygon>, RegionData,
                   MakeHost<GeometricPolygon>(Area().rings), AssignRings(value))
  KETRIL_HOST_PROPERTY(IPCB_Region, TRegionKind, Kind, Area().kind)
  KETRIL_HOST_READ(IPCB_Region2, double, Area, AreaOf(Area().rings))

 protected:
  RegionData& Area() { return static_cast<Self&>(*this).data; }
  const RegionData& Area() const { return static_cast<const Self&>(*this).data; }

 private:
  Status AssignRings(IPCB_GeometricPolygon* polygon) {
    std::vector<Ring> rings;
    if (const Status status = ReadRings(polygon, rings); Failed(status)) return status;
    this->Write([&] { Area().rings = std::move(rings); });
    return Status::Ok;
  }
};

class Region final : public AreaObject<Region, IPCB_Region2, IPCB_RegionShape3> {
 public:
  static constexpr TObjectId kKind = eRegionObject;
  RegionData data;

  Region();
  // The poured copper of a zone is drawn with a pen: by itself it is the area that the pen covers.
  Ref<Primitive> FreeCopy() const override;
  // The segments are the edges of the first ring, all of them lines. Once they are taken over from the area
  // the one that closes the ring counts too, until the count is written.
  KETRIL_HOST_METHOD(IPCB_RegionShape, GetState_Segments, (std::int32_t index, TPolySegment& segment),
                     SegmentAt(index, segment))
  KETRIL_HOST_METHOD(IPCB_RegionShape, SetState_Segments, (std::int32_t index, const TPolySegment& segment),
                     PutSegmentAt(index, segment))
  KETRIL_HOST_PAIR(IPCB_RegionShape3, std::int32_t, PointCount, PointCount(), PutPointCount(value))
  KETRIL_HOST_METHOD(IPCB_RegionShape3, IncrementPointCount, (), PutPointCount(PointCount() + 1))
  KETRIL_HOST_METHOD(IPCB_RegionShape3, DecrementPointCount, (), PutPointCount(PointCount() - 1))
  KETRIL_HOST_METHOD(IPCB_RegionShape, RemoveRedundantVertices, (), Write([&] { Tidy(); }))
  // The rings are the shape and the area in one, so these two have no vertices to bring over.
  KETRIL_HOST_METHOD(IPCB_RegionShape, SynchronizeGPCPolyFromShape, (bool), AfterWrite())
  KETRIL_HOST_METHOD(IPCB_RegionShape, SynchronizeShapeFromGPCPoly, (), CountClosing())

 private:
  void Tidy();
  void CountClosing();
  std::int32_t PointCount() const;
  Status SegmentAt(std::int32_t index, TPolySegment& segment) const;
  Status PutSegmentAt(std::int32_t index, const TPolySegment& segment);
  Status PutPointCount(std::int32_t count);

  bool closing_counts_ = false;
};

struct ComponentBodyData : RegionData {
  std::u16string model;
  TCoord height = 0;
  friend bool operator==(const ComponentBodyData&, const ComponentBodyData&) = default;
};
class ComponentBody final : public AreaObject<ComponentBody, IPCB_ComponentBody2> {
 public:
  static constexpr TObjectId kKind = eComponentBodyObject;
  ComponentBodyData data;

  ComponentBody();
  std::u16string Identifier() const override { return data.model; }

  KETRIL_HOST_PROPERTY(IPCB_ComponentBody, std::u16string, ModelName, data.model)
  KETRIL_HOST_PROPERTY(IPCB_ComponentBody2, TCoord, OverallHeight, data.height)
};

}  // namespace Ketril::Editor
