// Objects that hold others.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/Component.h"
#include "Editor/Model/Group.h"
#include "Editor/Model/Net.h"
#include "Editor/Model/Polygon.h"

namespace Ketril::Editor {

struct DimensionData {
  std::vector<TCoordPoint> points;
  std::u16string style;  // the format's word for its kind: aligned, leader, center, orthogonal, radial
  TCoord width = 0;
};
// Its members are its text and, where the file holds them, its lines.
class Dimension final : public GroupObject<Dimension, IPCB_Dimension> {
 public:
  static constexpr TObjectId kKind = eDimensionObject;
  DimensionData data;

  Dimension();
  TCoordPoint Reference() const override { return data.points.empty() ? TCoordPoint{} : data.points.front(); }

 private:
  Extent OwnExtent() const override;
  void TransformSelf(const PlaneMap& map) override { map.Apply(data.points); }
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
