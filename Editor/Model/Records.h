// Objects of a board that have no copper of their own: connections and classes.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/PrimitiveObject.h"
#include "Interfaces/Rules.h"

namespace Ketril::Editor {

// A line of the rats' nest, between two places that are not connected yet.
struct ConnectionData {
  TCoordPoint p1, p2;
  TV7_Layer layer1 = eV6_TopLayer;
  TV7_Layer layer2 = eV6_TopLayer;
  TConnectionMode mode = eRatsNestConnection;
};
class Connection final : public PrimitiveObject<Connection, Primitive, IPCB_Connection> {
 public:
  static constexpr TObjectId kKind = eConnectionObject;
  ConnectionData data;

  Connection();
  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override { return data.p1; }
  void Transform(const PlaneMap& map) override;
  void MirrorLayers() override;

  KETRIL_HOST_PROPERTY(IPCB_Connection, TCoord, X1, data.p1.x)
  KETRIL_HOST_PROPERTY(IPCB_Connection, TCoord, Y1, data.p1.y)
  KETRIL_HOST_PROPERTY(IPCB_Connection, TCoord, X2, data.p2.x)
  KETRIL_HOST_PROPERTY(IPCB_Connection, TCoord, Y2, data.p2.y)
  KETRIL_HOST_PROPERTY(IPCB_Connection, TV7_Layer, Layer1, data.layer1)
  KETRIL_HOST_PROPERTY(IPCB_Connection, TV7_Layer, Layer2, data.layer2)
  KETRIL_HOST_PROPERTY(IPCB_Connection, TConnectionMode, Mode, data.mode)
};

// Sizes of a net class, 0 for what it does not say.
struct NetClassSizes {
  TCoord clearance = 0;
  TCoord track_width = 0;
  TCoord via_size = 0;
  TCoord via_hole = 0;
};

struct ObjectClassData {
  std::u16string name;
  TClassMemberKind member_kind = eClassMemberKind_Net;
  std::vector<std::u16string> members;   // exact names
  std::vector<std::u16string> patterns;  // names with * and ?
  NetClassSizes sizes;
};
class ObjectClass final : public PrimitiveObject<ObjectClass, Primitive, IPCB_ObjectClass> {
 public:
  static constexpr TObjectId kKind = eClassObject;
  ObjectClassData data;

  ObjectClass();
  bool HasMember(const std::u16string& name) const;
  // By its identifier, when it is of the kind that the class has as members.
  bool HasMember(const Primitive& object) const;
  TCoordRect Bounds() const override { return {}; }
  TCoordPoint Reference() const override { return {}; }
  std::u16string Identifier() const override { return data.name; }

  KETRIL_HOST_PROPERTY(IPCB_ObjectClass, std::u16string, Name, data.name)
  KETRIL_HOST_PROPERTY(IPCB_ObjectClass, TClassMemberKind, MemberKind, data.member_kind)
  KETRIL_HOST_METHOD(IPCB_ObjectClass, IsMemberByName, (const std::u16string& name, bool& member),
                     void(member = HasMember(name)))
  KETRIL_HOST_METHOD(IPCB_ObjectClass, IsMember, (IPCB_Primitive * primitive, bool& member),
                     AnswerMember(primitive, member))

 private:
  Status AnswerMember(IPCB_Primitive* primitive, bool& member) const;
};

}  // namespace Ketril::Editor
