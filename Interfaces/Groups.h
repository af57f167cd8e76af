// Objects that hold others: components, nets, polygons, dimensions.
#pragma once

#include "Interfaces/Primitives.h"

namespace Ketril {

// Members are listed in the order in which they joined.
class IPCB_Group : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Group"};
  // Every iterator made is handed back with `GroupIterator_Destroy`.
  virtual Status GroupIterator_Create(Ref<IPCB_GroupIterator>& iterator) noexcept = 0;
  virtual Status GroupIterator_Destroy(IPCB_GroupIterator* iterator) noexcept = 0;
  // Makes `primitive` a member; a member already stays one. Does not touch the board's own list of objects.
  virtual Status RegisterWithGroupWarehouse(IPCB_Primitive* primitive) noexcept = 0;
  // Takes all members off the board; they stay members.
  virtual Status CancelAllPrimitivePrimaryWarehouseRegistrations() noexcept = 0;
  // Empties the group; the objects stay on the board, free.
  virtual Status CancelAllPrimitiveRegistrations() noexcept = 0;
  virtual Status GetPrimitiveCount(TObjectSet objects, std::int32_t& count) noexcept = 0;
  // The member at `index`, empty beyond the end.
  virtual Status GetPrimitiveAt(std::int32_t index, Ref<IPCB_Primitive>& primitive) noexcept = 0;
};

class IPCB_Group2 : public IPCB_Group {
 public:
  using Base = IPCB_Group;
  static constexpr InterfaceId Id{"IPCB_Group2"};
  // The reference point; writing it moves the group with its members.
  KETRIL_PROPERTY(TCoord, ReferenceX);
  KETRIL_PROPERTY(TCoord, ReferenceY);
  // Puts members that stand on the wrong side of the board for their group on the right one.
  virtual Status CleanBoardSide() noexcept = 0;
};

class IPCB_Net : public IPCB_Group2 {
 public:
  using Base = IPCB_Group2;
  static constexpr InterfaceId Id{"IPCB_Net"};
  KETRIL_PROPERTY(std::u16string, Name);
};

class IPCB_Net2 : public IPCB_Net {
 public:
  using Base = IPCB_Net;
  static constexpr InterfaceId Id{"IPCB_Net2"};
  KETRIL_READ(double, RoutedLength);  // of the net's tracks and arcs, in units
  // Brings what the host keeps of the net up to date after its objects moved.
  virtual Status UpdateNet() noexcept = 0;
};

class IPCB_Component : public IPCB_Group2 {
 public:
  using Base = IPCB_Group2;
  static constexpr InterfaceId Id{"IPCB_Component"};
  KETRIL_READ(Ref<IPCB_Text>, NameText);     // the designator; empty when there is none
  KETRIL_READ(Ref<IPCB_Text>, CommentText);  // the value; empty when there is none
  KETRIL_READ(std::u16string, Pattern);      // the footprint's name in its library
  KETRIL_PROPERTY(TComponentKind, ComponentKind);
  KETRIL_PROPERTY(double, Rotation);
  // Whether the members lie mirrored, as a component on the bottom has them: writing it mirrors them about
  // the vertical line through the reference point. Writing the layer takes the members to the layers of that
  // side as they lie. Who does both turns the component over.
  KETRIL_PROPERTY(bool, Flipped);
  // Where beside the component its texts are kept; eAutoPos_Manual is wherever somebody put them. A change to
  // another value puts the text there.
  KETRIL_READ(TTextAutoposition, NameAutoposition);
  KETRIL_READ(TTextAutoposition, CommentAutoposition);
  virtual Status ChangeNameAutoposition(TTextAutoposition position) noexcept = 0;
  virtual Status ChangeCommentAutoposition(TTextAutoposition position) noexcept = 0;
};

class IPCB_Component2 : public IPCB_Component {
 public:
  using Base = IPCB_Component;
  static constexpr InterfaceId Id{"IPCB_Component2"};
  // Sets the side; with `fix_layer` the members' layers follow, mirrored.
  virtual Status SetLayer(TV7_Layer layer, bool fix_layer) noexcept = 0;
  virtual Status RotateAroundXY(TCoord x, TCoord y, double degrees) noexcept = 0;
  // False when the text is missing or cannot take that place.
  virtual Status PlaceNameAutoposition(TTextAutoposition position, bool& placed) noexcept = 0;
  virtual Status PlaceCommentAutoposition(TTextAutoposition position, bool& placed) noexcept = 0;
  // To the other side of the board, mirrored about the vertical line through the centre of the box of its
  // pads, which so stays where it is; of a component without pads, through its reference point.
  virtual Status FlipComponent() noexcept = 0;
};

// A footprint in a library.
class IPCB_LibComponent : public IPCB_Group2 {
 public:
  using Base = IPCB_Group2;
  static constexpr InterfaceId Id{"IPCB_LibComponent"};
  KETRIL_READ(std::u16string, Pattern);
};

// A poured area: an outline, and as members the copper that was poured into it.
class IPCB_Polygon : public IPCB_Group2 {
 public:
  using Base = IPCB_Group2;
  static constexpr InterfaceId Id{"IPCB_Polygon"};
  KETRIL_READ(std::int32_t, PointCount);
  virtual Status GetState_Point(std::int32_t index, TCoordPoint& point) noexcept = 0;
};

class IPCB_BoardOutline : public IPCB_Polygon {
 public:
  using Base = IPCB_Polygon;
  static constexpr InterfaceId Id{"IPCB_BoardOutline"};
};

class IPCB_Dimension : public IPCB_Group2 {
 public:
  using Base = IPCB_Group2;
  static constexpr InterfaceId Id{"IPCB_Dimension"};
};

class IPCB_Coordinate : public IPCB_Group2 {
 public:
  using Base = IPCB_Group2;
  static constexpr InterfaceId Id{"IPCB_Coordinate"};
};

class IPCB_Library : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_Library"};
  KETRIL_READ(std::u16string, FileName);
};

class IPCB_Library2 : public IPCB_Library {
 public:
  using Base = IPCB_Library;
  static constexpr InterfaceId Id{"IPCB_Library2"};
  KETRIL_READ(std::int32_t, ComponentCount);
  // Empty beyond the end.
  virtual Status GetState_ComponentAt(std::int32_t index, Ref<IPCB_LibComponent>& component) noexcept = 0;
  KETRIL_READ(Ref<IPCB_LibComponent>, CurrentComponent);
};

}  // namespace Ketril
