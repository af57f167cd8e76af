// Objects that are rings with members: zones, and the outline of the board.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Editor/Model/GeometricPolygon.h"
#include "Editor/Model/Group.h"

namespace Ketril::Editor {

// The interface of polygons over groups with rings.
template <class Self, class Interface>
class RingsObject : public GroupObject<Self, Interface> {
 public:
  TCoordPoint Reference() const override {
    for (const Ring& ring : Rings()) {
      if (!ring.points.empty()) return ring.points.front();
    }
    return {};
  }

  // The points of all rings, one ring after the other.
  KETRIL_HOST_READ(IPCB_Polygon, std::int32_t, PointCount, PointCount())
  KETRIL_HOST_METHOD(IPCB_Polygon, GetState_Point, (std::int32_t index, TCoordPoint& point),
                     PointAt(index, point))

 protected:
  Extent OwnExtent() const override {
    Extent extent;
    for (const Ring& ring : Rings()) {
      for (const TCoordPoint& point : ring.points) extent.Add(point);
    }
    return extent;
  }
  void TransformSelf(const PlaneMap& map) override {
    for (Ring& ring : static_cast<Self&>(*this).data.rings) map.Apply(ring.points);
  }

 private:
  const std::vector<Ring>& Rings() const { return static_cast<const Self&>(*this).data.rings; }
  std::int32_t PointCount() const {
    std::size_t count = 0;
    for (const Ring& ring : Rings()) count += ring.points.size();
    return static_cast<std::int32_t>(count);
  }
  Status PointAt(std::int32_t index, TCoordPoint& point) const {
    if (index < 0) return Status::InvalidArgument;
    auto left = static_cast<std::size_t>(index);
    for (const Ring& ring : Rings()) {
      if (left < ring.points.size()) {
        point = ring.points[left];
        return Status::Ok;
      }
      left -= ring.points.size();
    }
    return Status::InvalidArgument;
  }
};

// What a rule area places: components by what they belong to. `name` is empty where the file names nothing.
enum class PlacementBy : std::uint8_t { Sheet, ComponentClass, Group };
struct PlacementArea {
  bool is_told = false;  // the file says something of it
  bool enabled = false;
  PlacementBy by = PlacementBy::Sheet;
  std::u16string name;
};

struct PolygonData {
  std::vector<Ring> rings;  // as drawn
  std::u16string name;
  std::int32_t priority = 0;
  TCoord clearance = 0;
  TCoord min_thickness = 0;
  TCoord relief_gap = 0;  // of thermal reliefs
  TCoord relief_conductor = 0;
  bool solid_connect = false;
  bool filled = true;
  bool keepout_tracks = false, keepout_vias = false, keepout_pads = false, keepout_copper = false;
  PlacementArea placement;
  std::vector<TV7_Layer> layers;  // all of them; `state.layer` is the first
};

// A zone; its members are the regions of poured copper. A teardrop zone is a region with the teardrop mark
// instead, and no polygon.
class Polygon final : public RingsObject<Polygon, IPCB_Polygon> {
 public:
  static constexpr TObjectId kKind = ePolyObject;
  PolygonData data;

  Polygon();
  void MirrorLayers() override;
  std::u16string Identifier() const override { return data.name; }
};

// The board's edge as closed rings, chained from the drawn lines; made on demand by the board.
struct BoardOutlineData {
  std::vector<Ring> rings;
};
class BoardOutline final : public RingsObject<BoardOutline, IPCB_BoardOutline> {
 public:
  static constexpr TObjectId kKind = eBoardOutlineObject;
  BoardOutlineData data;

  BoardOutline();
};

}  // namespace Ketril::Editor
