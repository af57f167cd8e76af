// What the board answers about rules.
#include <algorithm>

#include "Editor/Model/Board.h"
#include "Editor/Rules/Clearance.h"
#include "Editor/Rules/ComponentChecks.h"

namespace Ketril::Editor {

namespace {

class RuleList final : public HostObject<IPCB_RuleList> {
 public:
  explicit RuleList(std::vector<Ref<Primitive>> rules) : rules_(std::move(rules)) {}
  KETRIL_HOST_READ(IPCB_RuleList, std::int32_t, Count, static_cast<std::int32_t>(rules_.size()))
  Status GetState_At(std::int32_t index, Ref<IPCB_Primitive>& rule) noexcept override {
    return HostCall("IPCB_RuleList.GetState_At", [&] {
      if (index < 0 || static_cast<std::size_t>(index) >= rules_.size()) return Status::InvalidArgument;
      rule = rules_[static_cast<std::size_t>(index)]->AsInterface();
      return Status::Ok;
    });
  }

 private:
  const std::vector<Ref<Primitive>> rules_;
};

}  // namespace

std::u16string DescribeGap(const Violation& violation) {
  if (violation.kind == ViolationKind::KeepOut) return u"Keep-out";
  if (violation.kind == ViolationKind::Confinement) return u"Room";
  constexpr const char16_t* kNames[] = {u"Clearance ", u"Hole clearance ", u"", u"Component clearance ", u""};
  const Board* board = violation.first->board ? violation.first->board : violation.second->board;
  const TUnit unit = board ? board->setup.display_unit : eMetric;
  return kNames[static_cast<int>(violation.kind)] +
         LengthText(static_cast<std::int64_t>(violation.gap), unit) + u" of " +
         LengthText(violation.asked, unit);
}

std::u16string DescribeViolation(const Violation& violation) {
  return DescribeGap(violation) + u": " + violation.first->Describe() + u" and " +
         violation.second->Describe();
}

Status Board::GetState_RuleByName(const std::u16string& name, Ref<IPCB_Primitive>& rule) noexcept {
  return HostCall("IPCB_Board3.GetState_RuleByName", [&] {
    rule = nullptr;
    for (Warehouse::Walk walk(objects, {eRuleObject}); Primitive* object = walk.Next();) {
      if (As<Rule>(object)->data.name != name) continue;
      rule = object->AsInterface();
      return;
    }
  });
}

// In the order of their priorities, of equal ones the older first.
Status Board::GetState_RulesOfKind(TRuleKind rule_kind, Ref<IPCB_RuleList>& rules) noexcept {
  return HostCall("IPCB_Board3.GetState_RulesOfKind", [&] {
    std::vector<Ref<Primitive>> found;
    objects.ForEach({eRuleObject}, [&](Primitive& object) {
      if (As<Rule>(&object)->data.rule_kind == rule_kind) found.emplace_back(&object);
    });
    std::ranges::stable_sort(found, {},
                             [](const Ref<Primitive>& rule) { return As<Rule>(rule.Get())->data.priority; });
    rules = MakeHost<RuleList>(std::move(found));
  });
}

Status Board::CreateViolationReport(TRuleKindSet kinds, Ref<IPCB_ViolationReport>& report) noexcept {
  return HostCall("IPCB_Board3.CreateViolationReport", [&] { report = MakeHost<ViolationReport>(kinds); });
}

Status Board::CheckPrimitive(IPCB_Primitive* primitive, IPCB_ViolationReport* report) noexcept {
  return HostCall("IPCB_Board3.CheckPrimitive", [&] {
    Primitive* object = FromInterface(primitive);
    const Ref<ViolationList> list = Probe<ViolationList>(Ref<IPCB_ViolationReport>(report));
    if (!object || !list) return Status::InvalidArgument;
    if (list->kinds.Contains(eRule_Clearance)) {
      for (Violation& violation : Clearances().CheckObject(*object))
        list->Add(std::move(violation));
    }
    if (object->kind == eComponentObject) {
      for (Violation& violation : CheckComponentRules(*this, list->kinds)) {
        if (violation.first.Get() == object || violation.second.Get() == object)
          list->Add(std::move(violation));
      }
    }
    return Status::Ok;
  });
}

// Violations are counted when they are asked for, so that they are always up to date.
Status Board::SendMessage(std::int32_t, std::int32_t, std::int32_t, void*) noexcept {
  return HostCall("IPCB_BoardMessages.SendMessage", [] {});
}

std::int32_t Primitive::CountViolations() {
  return board && on_board ? static_cast<std::int32_t>(board->Clearances().CheckObject(*this).size()) : 0;
}

ClearanceChecker& Board::Clearances() {
  if (!clearances_ || clearances_revision_ != index.AreaRevision() || !clearances_->IsFor(setup)) {
    clearances_ = std::make_shared<ClearanceChecker>(*this);
    clearances_revision_ = index.AreaRevision();
  }
  return *clearances_;
}

}  // namespace Ketril::Editor
