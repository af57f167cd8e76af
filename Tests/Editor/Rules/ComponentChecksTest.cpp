#include "Editor/Rules/ComponentChecks.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "Editor/Files/CompanionFiles.h"
#include "Editor/Files/RulesJson.h"
#include "Editor/Rules/ClassRules.h"
#include "Platform/Text.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril::Editor {
namespace {

using Tests::BoardFromText;
using Tests::Mil;

constexpr char kParts[] =
    "component U1 at 0,0 { pad 0,0 100x100 top name 1 }\n"
    "component U2 at 150,0 { pad 0,0 100x100 top name 1 }\n"
    "component U3 at 150,0 bottom { pad 0,0 100x100 bottom name 1 }\n";

std::string Found(Board& board) {
  std::string text;
  for (const Violation& v :
       CheckComponentRules(board, {eRule_ComponentClearance, eRule_ConfinementConstraint})) {
    text += Platform::ToUtf8(v.first->Identifier() + u"-" + v.second->Identifier()) + " ";
  }
  return text;
}

// A rule of the extras file in mm; the board's mil are 0.0254 mm, its y goes up.
TEST(ComponentRules, FromTheFileToTheViolations) {
  const struct {
    const char* rules;
    const char* found;
  } rows[] = {
      {R"([{"kind": "component-clearance", "horizontal_gap": 1.26}])", ""},
      {R"([{"kind": "component-clearance", "horizontal_gap": 1.28}])", "U1-U2 "},
      {R"([{"kind": "component-clearance", "horizontal_gap": 0, "scope1": "component:U1"},
           {"kind": "component-clearance", "horizontal_gap": 9, "priority": 2}])",
       ""},
      {R"([{"kind": "component-clearance", "horizontal_gap": 9, "enabled": false}])", ""},
      {R"([{"kind": "room", "name": "A", "layer": "F.Cu", "scope1": "component",
            "points": [[-2, -2], [2, -2], [2, 2], [-2, 2]]}])",
       "U2-A U3-A "},
      {R"([{"kind": "room", "name": "A", "layer": "F.Cu", "scope1": "component:U1",
            "points": [[-2, -2], [1, -2], [1, 2], [-2, 2]]}])",
       "U1-A "},
      {R"([{"kind": "room", "name": "A", "layer": "F.Cu", "confine": "out", "scope1": "component",
            "points": [[-9, -9], [0, -9], [0, 9], [-9, 9]]}])",
       "U1-A "},
  };
  for (const auto& row : rows) {
    const Ref<Board> board = BoardFromText(kParts);
    ReadExtras(*board, std::string(R"({"version": 1, "rules": )") + row.rules + "}");
    EXPECT_EQ(Found(*board), row.found) << row.rules;
    // What is written reads as the same rules.
    const Ref<Board> again = BoardFromText(kParts);
    ReadExtras(*again, ExtrasText(*board));
    EXPECT_EQ(Found(*again), row.found) << ExtrasText(*board);
    EXPECT_EQ(ExtrasText(*again), ExtrasText(*board));
  }
}

TEST(RulesJson, KeepsWhatItDoesNotKnowAndTellsWhatIsWrong) {
  const Ref<Board> board = BoardFromText("track 0,0 100,0 w10 top net A");
  ReadExtras(
      *board,
      R"({"version": 1, "mine": [1], "channels": {"Left": ["A", "B"]}, "rules": [{"kind": "clearance", "gap": 0.3,
      "net_scope": "any-net", "comment": "x", "gaps": {"smd-pad-via": 0.5, "cutout-edge-smd-pad": 0.25}}]})");
  const auto text = nlohmann::json::parse(ExtrasText(*board));
  EXPECT_EQ(text["mine"], nlohmann::json::array({1}));
  EXPECT_EQ(text["channels"].dump(), R"({"Left":["A","B"]})");
  EXPECT_EQ(text["rules"][0]["gaps"].dump(), R"({"smd-pad-cutout-edge":0.25,"smd-pad-via":0.5})");
  EXPECT_EQ(text["rules"][0]["net_scope"], "any-net");
  for (const auto& [rule, message] : {
           std::pair{R"({"kind": "sound"})", "rule 1: \"sound\" is no kind of rule"},
           {R"({"kind": "clearance", "gap": "2mm"})", "rule 1: \"gap\" needs a number of millimetres"},
           {R"({"kind": "clearance", "gap": 1e9})", "rule 1: \"gap\" is out of range"},
           {R"({"kind": "clearance", "gaps": {"via": 1}})", "rule 1: \"via\" names no two kinds"},
           {R"({"kind": "room", "points": [[1, 2]]})", "rule 1: a room needs three points or more"},
           {R"({"kind": "room", "layer": "X", "points": [[1, 2], [2, 2], [2, 3]]})",
            "rule 1: the board has no layer \"X\""},
       }) {
    try {
      ReadExtras(*board, std::string(R"({"version": 1, "rules": [)") + rule + "]}");
      ADD_FAILURE() << rule;
    } catch (const std::exception& error) {
      EXPECT_STREQ(error.what(), message);
    }
  }
}

TEST(ClassRules, StandAfterTheOthersTheGreatestFirst) {
  const Ref<Board> board = BoardFromText("class Wide V ; class Wider W ; track 0,0 9,0 w5 top net V");
  ReadExtras(*board, R"({"version": 1, "rules": [{"kind": "clearance", "gap": 0.1, "priority": 4}]})");
  TCoord gap = Mil(10);
  board->objects.ForEach({eClassObject}, [&](Primitive& object) {
    As<ObjectClass>(&object)->data.sizes.clearance = gap += Mil(5);
  });
  AddClassRules(*board);
  std::string rules;
  board->objects.ForEach({eRuleObject}, [&](Primitive& object) {
    const RuleData& data = As<Rule>(&object)->data;
    rules += Platform::ToUtf8(data.name) + " " + std::to_string(data.priority) + ", ";
  });
  EXPECT_EQ(rules, " 4, Clearance_Wider 5, Clearance_Wide 6, ");
  EXPECT_EQ(nlohmann::json::parse(ExtrasText(*board))["rules"].size(), 1u);  // the classes' are not saved
}

}  // namespace
}  // namespace Ketril::Editor
