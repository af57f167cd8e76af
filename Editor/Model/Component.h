// Components.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/Group.h"
#include "Editor/Model/Shapes.h"

namespace Ketril::Editor {

struct ComponentData {
  TCoordPoint reference;
  double rotation = 0;  // degrees; on the bottom the footprint is mirrored top to bottom before it is turned
  std::u16string pattern;  // library and name of the footprint, as "Package:QFN32"
  TComponentKind kind = eComponentKind_Standard;
  std::u16string description;
  bool flipped = false;  // the members lie mirrored; of a file, so they do on the bottom
  TTextAutoposition name_position = eAutoPos_Manual;  // no file keeps these two
  TTextAutoposition comment_position = eAutoPos_Manual;
  friend bool operator==(const ComponentData&, const ComponentData&) = default;
};

// What a component belongs to, as its file says; no tool changes it.
struct ComponentOrigin {
  std::u16string sheet;                 // of the schematic, "/Power/"
  std::vector<std::u16string> classes;  // of components
  std::vector<std::u16string> groups;   // by name, the innermost one first
};

// Designator and comment are members, found by their role.
class Component final : public GroupObject<Component, IPCB_Component2> {
 public:
  static constexpr TObjectId kKind = eComponentObject;
  ComponentData data;
  ComponentOrigin origin;

  Component();
  Text* NameText() const;     // null when there is none
  Text* CommentText() const;  // null when there is none
  std::u16string Designator() const;
  TCoordPoint Reference() const override { return data.reference; }
  std::u16string Identifier() const override { return Designator(); }

  // Data only; the same twice leaves every member as it was. To the other side, about the vertical line
  // through the reference point, or so that the middle of the box around the
  // places of the pads stays where it is.
  void Flip();
  void FlipInPlace();
  void SetFlipped(bool flipped);  // the members mirrored, on the layers that they are on
  void Rotate(TCoordPoint center, double degrees);
  void SetSide(TV7_Layer layer, bool with_members);
  // An edit of the text: next to the component's box, a stroke's width away, where the position says as seen
  // from the top, and upright: readable from below or from the right. False, and no edit, for eAutoPos_Manual
  // or a null text.
  bool PutText(Text* text, TTextAutoposition position);
  // Puts the designator and the comment onto the component's side. Other members may well be on the other
  // one.
  void CleanSide();

  KETRIL_HOST_READ(IPCB_Component, Ref<IPCB_Text>, NameText, Ref<IPCB_Text>(NameText()))
  KETRIL_HOST_READ(IPCB_Component, Ref<IPCB_Text>, CommentText, Ref<IPCB_Text>(CommentText()))
  KETRIL_HOST_READ(IPCB_Component, std::u16string, Pattern, PatternName())
  KETRIL_HOST_PROPERTY(IPCB_Component, TComponentKind, ComponentKind, data.kind)
  // Writing turns the component about its reference point.
  KETRIL_HOST_PAIR(IPCB_Component, double, Rotation, data.rotation,
                   WriteWithMembers([&] { Rotate(data.reference, value - data.rotation); }))
  KETRIL_HOST_PAIR(IPCB_Component, bool, Flipped, data.flipped, WriteWithMembers([&] { SetFlipped(value); }))
  KETRIL_HOST_READ(IPCB_Component, TTextAutoposition, NameAutoposition, data.name_position)
  KETRIL_HOST_READ(IPCB_Component, TTextAutoposition, CommentAutoposition, data.comment_position)
  KETRIL_HOST_METHOD(IPCB_Component, ChangeNameAutoposition, (TTextAutoposition position),
                     KeepText(NameText(), data.name_position, position))
  KETRIL_HOST_METHOD(IPCB_Component, ChangeCommentAutoposition, (TTextAutoposition position),
                     KeepText(CommentText(), data.comment_position, position))
  KETRIL_HOST_PAIR(IPCB_Primitive, TV7_Layer, Layer, state.layer,
                   WriteWithMembers([&] { SetSide(value, true); }))
  KETRIL_HOST_METHOD(IPCB_Component2, SetLayer, (TV7_Layer layer, bool fix_layer),
                     WriteWithMembers([&] { SetSide(layer, fix_layer); }))
  KETRIL_HOST_METHOD(IPCB_Component2, RotateAroundXY, (TCoord x, TCoord y, double degrees),
                     WriteWithMembers([&] {
                       Rotate({x, y}, degrees);
                     }))
  KETRIL_HOST_METHOD(IPCB_Component2, PlaceNameAutoposition, (TTextAutoposition position, bool& placed),
                     void(placed = PutText(NameText(), position)))
  KETRIL_HOST_METHOD(IPCB_Component2, PlaceCommentAutoposition, (TTextAutoposition position, bool& placed),
                     void(placed = PutText(CommentText(), position)))
  KETRIL_HOST_METHOD(IPCB_Component2, FlipComponent, (), WriteWithMembers([&] { FlipInPlace(); }))

 private:
  Status KeepText(Text* text, TTextAutoposition& kept, TTextAutoposition position);
  Text* TextOf(TextRole role) const;
  std::u16string PatternName() const;  // without the library
  void TransformSelf(const PlaneMap& map) override;
};

}  // namespace Ketril::Editor
