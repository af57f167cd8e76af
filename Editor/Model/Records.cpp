#include "Editor/Model/Records.h"

#include <algorithm>

#include "Editor/Model/LayerFacts.h"
#include "Editor/Selection/Selection.h"

namespace Ketril::Editor {

Connection::Connection() = default;

TCoordRect Connection::Bounds() const {
  Extent extent;
  extent.Add(data.p1);
  extent.Add(data.p2);
  return extent.Rect();
}

void Connection::Transform(const PlaneMap& map) {
  data.p1 = map(data.p1);
  data.p2 = map(data.p2);
}

void Connection::MirrorLayers() {
  Primitive::MirrorLayers();
  data.layer1 = MirroredLayer(data.layer1, board);
  data.layer2 = MirroredLayer(data.layer2, board);
}

ObjectClass::ObjectClass() {
  state.layer = eV6_MultiLayer;
}

bool ObjectClass::HasMember(const std::u16string& name) const {
  return std::find(data.members.begin(), data.members.end(), name) != data.members.end() ||
         std::any_of(data.patterns.begin(), data.patterns.end(),
                     [&](const std::u16string& pattern) { return MatchesPattern(name, pattern); });
}

bool ObjectClass::HasMember(const Primitive& object) const {
  static constexpr TObjectId kKinds[] = {eNetObject, eComponentObject, eFromToObject,
                                         ePadObject, eNoObject,        eRuleObject};
  const TObjectId wanted =
      data.member_kind <= eClassMemberKind_DesignChannel ? kKinds[data.member_kind] : eNoObject;
  return wanted != eNoObject && object.kind == wanted && HasMember(object.Identifier());
}

Status ObjectClass::AnswerMember(IPCB_Primitive* primitive, bool& member) const {
  const Primitive* object = FromInterface(primitive);
  if (!object) return Status::InvalidArgument;
  member = HasMember(*object);
  return Status::Ok;
}

}  // namespace Ketril::Editor
