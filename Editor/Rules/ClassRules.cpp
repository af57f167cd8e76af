#include "Editor/Rules/ClassRules.h"

#include <algorithm>

#include "Editor/Rules/Rule.h"

namespace Ketril::Editor {

void AddClassRules(Board& board) {
  std::int32_t priority = 0;
  board.objects.ForEach({eRuleObject}, [&](Primitive& object) {
    const RuleData& data = As<Rule>(&object)->data;
    if (data.rule_kind == eRule_Clearance) priority = std::max(priority, data.priority);
  });
  std::vector<const ObjectClass*> classes;
  board.objects.ForEach({eClassObject}, [&](Primitive& object) {
    const ObjectClass* net_class = As<ObjectClass>(&object);
    if (net_class->data.member_kind == eClassMemberKind_Net && net_class->data.sizes.clearance > 0)
      classes.push_back(net_class);
  });
  const auto is_default = [](const ObjectClass* net_class) { return net_class->data.name == u"Default"; };
  std::ranges::stable_sort(classes, [&](const ObjectClass* a, const ObjectClass* b) {
    if (is_default(a) != is_default(b)) return is_default(b);
    return a->data.sizes.clearance > b->data.sizes.clearance;
  });
  for (const ObjectClass* net_class : classes) {
    const Ref<Rule> rule = MakeRule(eRule_Clearance);
    rule->data.name = u"Clearance_" + net_class->data.name;
    if (!is_default(net_class)) rule->data.scope1 = u"class:\"" + net_class->data.name + u"\"";
    rule->data.gap = net_class->data.sizes.clearance;
    rule->data.priority = ++priority;
    rule->data.net_class = net_class->data.name;
    board.Load(rule.Get());
  }
}

}  // namespace Ketril::Editor
