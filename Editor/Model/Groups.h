// Objects that hold others.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/Component.h"
#include "Editor/Model/Copper.h"
#include "Editor/Model/Group.h"
#include "Editor/Model/Net.h"
#include "Editor/Model/Polygon.h"

namespace Ketril::Editor {

struct DimensionData {
  std::vector<TCoordPoint> points;
  std::u16string style;  // the format's word for its kind: aligned, leader, center, orthogonal, radial
  TCoord width = 0;      // of its lines
  TCoord height = 0;  // how far the crossbar is from the points: to the right, seen along them, when above 0
  TCoord arrow = 0;   // length of the lines of an arrow's head
  TCoord extension = 0;  // by how much the lines from the points reach beyond the crossbar
  TCoord offset = 0;     // where they begin, off the points
  TCoord leader = 0;     // length of the line from a circle, of a radial one
  bool upright = false;  // an orthogonal one measures along y
  bool inward = false;   // the arrows point at each other, from outside
};
// Its members are its text and, where the file holds them, its lines. Other lines follow from its data; a
// walk of it gives these too, as tracks that are on no board.
class Dimension final : public GroupObject<Dimension, IPCB_Dimension> {
 public:
  static constexpr TObjectId kKind = eDimensionObject;
  DimensionData data;

  Dimension();
  TCoordPoint Reference() const override { return data.points.empty() ? TCoordPoint{} : data.points.front(); }
  // The lines that follow from its data, as the text leaves room for them; none where the file holds lines.
  // The frame around the text of a leader is none of them.
  std::vector<TrackData> DrawnLines() const;
  std::vector<Primitive*> ListMembers() const override;
  Primitive* MemberAt(std::int32_t index) const override;
  bool HasMember(const Primitive& primitive) const override;

 private:
  Extent OwnExtent() const override;
  void TransformSelf(const PlaneMap& map) override;

  mutable std::vector<Ref<Primitive>> lines_;  // those that a walk gave
};

struct CoordinateData {
  TCoordPoint location;
  TCoord size = 0;
};
class Coordinate final : public GroupObject<Coordinate, IPCB_Coordinate> {
 public:
  static constexpr TObjectId kKind = eCoordinateObject;
  CoordinateData data;

  Coordinate();
  TCoordPoint Reference() const override { return data.location; }

 private:
  Extent OwnExtent() const override;
  void TransformSelf(const PlaneMap& map) override { data.location = map(data.location); }
};

struct LibComponentData {
  std::u16string pattern;
  TCoordPoint reference;
};
// A footprint of a library is on no board. Tools see a component; in the core it has no kind, so that nobody
// takes it for one of the board's.
class LibComponent final : public GroupObject<LibComponent, IPCB_LibComponent> {
 public:
  static constexpr TObjectId kKind = eNoObject;
  LibComponentData data;

  LibComponent();
  TCoordPoint Reference() const override { return data.reference; }
  std::u16string Identifier() const override { return data.pattern; }

  KETRIL_HOST_READ(IPCB_Primitive, TObjectId, ObjectID, eComponentObject)
  KETRIL_HOST_READ(IPCB_LibComponent, std::u16string, Pattern, data.pattern)

 private:
  void TransformSelf(const PlaneMap& map) override { data.reference = map(data.reference); }
};

}  // namespace Ketril::Editor
