// Objects of a board that have no copper of their own: connections, classes, rules.
#pragma once

#include <string>
#include <vector>

#include "Editor/Model/PrimitiveObject.h"

namespace Ketril::Editor {

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
  bool HasMember(const std::u16string& name) const;
};

struct RuleData {
  TRuleKind rule_kind = eRule_Clearance;
  std::u16string name, comment, scope1, scope2;
  bool enabled = true;
};
class Rule final : public PrimitiveObject<Rule, Primitive, IPCB_Rule2> {
 public:
  static constexpr TObjectId kKind = eRuleObject;
  RuleData data;
};

}  // namespace Ketril::Editor
