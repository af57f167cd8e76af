// Objects that hold others.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/PrimitiveObject.h"
#include "Editor/Model/Shapes.h"

namespace Ketril::Editor {

// The core of a group. A group holds its members; a member knows its group by a plain pointer, which the
// group clears when it goes. Nets are no owners: see Net.
class Group : public Primitive {
 public:
  using Base = Primitive;
  static constexpr InterfaceId Id{"Ketril::Editor::Group"};
  using Primitive::Primitive;

  const std::vector<Ref<Primitive>>& Members() const { return members_; }
  // Adds at the end; takes the object from the group that it was in. A member already stays where it is.
  void AddMember(Primitive* member);
  void RemoveMember(Primitive* member);
  void RemoveAllMembers();

 protected:
  ~Group();

 private:
  std::vector<Ref<Primitive>> members_;
};

template <class T>
T* Primitive::OwnerAs() const {
  return As<T>(owner_);
}

struct NetData {
  std::u16string name;
  std::int32_t number = 0;  // in the board file, 0 for none
};

// A net lists the objects that name it as their net, in the order in which they joined; it does not keep them
// alive.
class Net final : public PrimitiveObject<Net, Group, IPCB_Net2> {
 public:
  static constexpr TObjectId kKind = eNetObject;
  NetData data;
  // Calls `visit` with each object of the net; objects may leave meanwhile.
  template <class Visit>
  void ForEach(Visit&& visit) const;
  std::size_t Count() const;
};

struct ComponentData {
  TCoordPoint reference;
  double rotation = 0;  // degrees
  std::u16string pattern;  // library and name of the footprint, as "Package:QFN32"
  TComponentKind kind = eComponentKind_Standard;
  std::u16string description;
};

// Designator and comment are members, found by their role.
class Component final : public PrimitiveObject<Component, Group, IPCB_Component2> {
 public:
  static constexpr TObjectId kKind = eComponentObject;
  ComponentData data;
  Text* NameText() const;     // null when there is none
  Text* CommentText() const;  // null when there is none
  std::u16string Designator() const;
};

struct PolygonData {
  std::vector<Ring> rings;  // as drawn
  std::u16string name;
  std::int32_t priority = 0;
  TCoord clearance = 0;
  TCoord min_thickness = 0;
  TCoord relief_gap = 0;       // of thermal reliefs
  TCoord relief_conductor = 0;
  bool solid_connect = false;
  bool filled = true;
  bool keepout_tracks = false, keepout_vias = false, keepout_pads = false, keepout_copper = false;
  std::vector<TV7_Layer> layers;  // all of them; `state.layer` is the first
};

// A zone; its members are the regions of poured copper. A teardrop zone is a region with the teardrop mark
// instead, and no polygon.
class Polygon final : public PrimitiveObject<Polygon, Group, IPCB_Polygon> {
 public:
  static constexpr TObjectId kKind = ePolyObject;
  PolygonData data;
};

struct DimensionData {
  std::vector<TCoordPoint> points;
  std::u16string style;  // the format's word for its kind: aligned, leader, center, orthogonal, radial
  TCoord width = 0;
};
// Its members are its text and, where the file holds them, its lines.
class Dimension final : public PrimitiveObject<Dimension, Group, IPCB_Dimension> {
 public:
  static constexpr TObjectId kKind = eDimensionObject;
  DimensionData data;
};

struct CoordinateData {
  TCoordPoint location;
  TCoord size = 0;
};
class Coordinate final : public PrimitiveObject<Coordinate, Group, IPCB_Coordinate> {
 public:
  static constexpr TObjectId kKind = eCoordinateObject;
  CoordinateData data;
};

// The board's edge as closed rings, chained from the drawn lines; made on demand by the board.
struct BoardOutlineData {
  std::vector<Ring> rings;
};
class BoardOutline final : public PrimitiveObject<BoardOutline, Group, IPCB_BoardOutline> {
 public:
  static constexpr TObjectId kKind = eBoardOutlineObject;
  BoardOutlineData data;
};

struct LibComponentData {
  std::u16string pattern;
  TCoordPoint reference;
};
class LibComponent final : public PrimitiveObject<LibComponent, Group, IPCB_LibComponent> {
 public:
  static constexpr TObjectId kKind = eComponentObject;
  LibComponentData data;
};

}  // namespace Ketril::Editor
