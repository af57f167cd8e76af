// A board of text for the placement tools, and the user before it: his picks and his answers.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Rules/Rule.h"
#include "Interfaces/Tools.h"
#include "Platform/Text.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Tools {

using Tests::Mil;
using Lines = std::vector<std::string>;

// "U1 300,100 via 70,80 10k 0,90": places in mil of components, vias, comments, selected pads and rooms.
inline std::string Places(const Editor::Board& board) {
  std::string text;
  board.objects.ForEach(TObjectSet::All(), [&](const Editor::Primitive& object) {
    const auto* words = Editor::As<Editor::Text>(&object);
    const auto* rule = Editor::As<Editor::Rule>(&object);
    const bool shown = object.kind == eComponentObject || object.kind == eViaObject ||
                       (rule && !rule->data.region.points.empty()) ||
                       (words && words->data.role != Editor::TextRole::Designator) ||
                       (object.kind == ePadObject && object.Has(Editor::kFlag_Selected));
    if (!shown) return;
    const auto mil = [](TCoord value) { return std::to_string(value / 10000); };
    const TCoordPoint at = object.Reference();
    std::string name = Platform::ToUtf8(object.Identifier());
    if (name.empty() || object.kind == ePadObject) name = object.kind == eViaObject ? "via" : "pad";
    text += (text.empty() ? "" : " ") + name + " " + mil(at.x) + "," + mil(at.y);
  });
  return text;
}

class PlacementBoard : public testing::Test {
 protected:
  ~PlacementBoard() override { ReleasePCBServer(); }

  void Load(const char* text, double grid = 100) {
    board = Tests::BoardFromText(text);
    board->setup.grid_x = board->setup.grid_y = Mil(grid);
  }
  IPCBGraphicalViewInterface* View() { return board->view.Get(); }
  Editor::Rule* Room(const char16_t* name, const char16_t* scope, TCoordRect mils, bool selected = false) {
    const Ref<Editor::Rule> rule = Editor::MakeRule(eRule_ConfinementConstraint);
    rule->data.name = name;
    rule->data.scope1 = scope;
    const TCoord x1 = Mil(mils.x1), y1 = Mil(mils.y1), x2 = Mil(mils.x2), y2 = Mil(mils.y2);
    rule->data.region.points = {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
    rule->Set(Editor::kFlag_Selected, selected);
    board->Load(rule.Get());
    return rule.Get();
  }
  void Clearance(TRuleKind kind, double mil, bool enabled = true) {
    const Ref<Editor::Rule> rule = Editor::MakeRule(kind);
    (kind == eRule_Clearance ? rule->data.gap : rule->data.horizontal_gap) = Mil(mil);
    rule->data.vertical_gap = Mil(50);  // of no account
    rule->data.enabled = enabled;
    board->Load(rule.Get());
  }
  static Ref<IParameterList> Parameters(const char16_t* text) {
    const auto list = Editor::MakeHost<Editor::Parameters>();
    list->SetFromWide(text);
    return Ref<IParameterList>(list.Get());
  }

  Editor::ClientSetup User() {
    Editor::ClientSetup setup;
    setup.choose_location = [this](const std::u16string& prompt) { return Pick(prompt); };
    setup.choose_rectangle = [this](const std::u16string& first,
                                    const std::u16string& second) -> std::optional<TCoordRect> {
      const auto a = Pick(first), b = a ? Pick(second) : std::nullopt;
      if (!b) return std::nullopt;
      return TCoordRect{a->x, a->y, b->x, b->y};
    };
    setup.confirm = [this](const std::u16string& text) {
      questions.push_back(Platform::ToUtf8(text));
      return says_yes;
    };
    setup.show_message = [this](const std::u16string& text, Platform::TDialogKind kind) {
      (kind == Platform::TDialogKind::Warning ? warnings : messages).push_back(Platform::ToUtf8(text));
    };
    setup.dialogs.alignment = [this](Editor::AlignmentAnswer& answer) {
      answer = alignment;
      return dialog_confirmed;
    };
    setup.dialogs.room_arrange = [this](IPCB_RoomArrangeOptions& options) {
      options.SetState_ColCount(3);
      return dialog_confirmed;
    };
    return setup;
  }

  Ref<Editor::Board> board;
  std::vector<TCoordPoint> picks;  // in mil, in their order; then the user cancels
  Lines prompts;
  Lines questions, warnings, messages;
  bool says_yes = true;  // to each of them
  Editor::AlignmentAnswer alignment;
  bool dialog_confirmed = true;

 private:
  std::optional<TCoordPoint> Pick(const std::u16string& prompt) {
    prompts.push_back(Platform::ToUtf8(prompt));
    if (picks.empty()) return std::nullopt;
    const TCoordPoint pick = picks.front();
    picks.erase(picks.begin());
    return TCoordPoint{Mil(pick.x), Mil(pick.y)};
  }
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(User())};
};

}  // namespace Ketril::Tools
