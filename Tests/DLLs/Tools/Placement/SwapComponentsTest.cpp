// The swap of two components, through the export.
#include "DLLs/Tools/Placement/SwapComponents.h"

#include <random>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "Editor/HostCall.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tools {
namespace {

using Editor::HostGate;

class Swap : public PlacementBoard {
 protected:
  ~Swap() override { HostGate::Disarm(); }
  void Run() {
    prompts.clear();
    warnings.clear();
    Tools_SwapComponents(board.Get(), board->view.Get());
  }
  Editor::Component& Part(std::size_t n) const { return *Tests::Find<Editor::Component>(*board, n); }
  // "U1 100,200 B 90 u3": reference point in mil, side, rotation, union; a star when it is selected.
  std::string State(std::size_t n) const {
    const Editor::Component& part = Part(n);
    return Platform::ToUtf8(part.Designator()) + (part.Has(Editor::kFlag_Selected) ? "*" : "") + " " +
           std::to_string(part.data.reference.x / 10000) + "," +
           std::to_string(part.data.reference.y / 10000) +
           (part.state.layer == TV7_Layer(eV6_TopLayer) ? " T " : " B ") +
           std::to_string(static_cast<int>(part.data.rotation)) + " u" +
           std::to_string(part.state.union_index);
  }
  Lines States() const {
    Lines states;
    board->objects.ForEach({eComponentObject},
                           [&](Editor::Primitive&) { states.push_back(State(states.size())); });
    return states;
  }
  void PutIntoUnion(std::size_t n, std::int32_t index) {
    Part(n).state.union_index = index;
    for (const auto& member : Part(n).Members()) member->state.union_index = index;
  }
  // Of a text: "100,200 90 mirrored" and its layer.
  static std::string Place(const Editor::Text* text) {
    return std::to_string(text->data.anchor.x / 10000) + "," + std::to_string(text->data.anchor.y / 10000) +
           " " + std::to_string(static_cast<int>(text->data.rotation)) +
           (text->data.mirrored ? " mirrored " : " ") + std::to_string(text->state.layer.ID);
  }
};

constexpr const char* kTwo = R"(
  component U1 at 100,100 selected { pad -50,0 60x40 rect top name 1; pad 50,0 60x40 top name 2; text 0,80 "1k" comment }
  component U2 at 500,700 bottom rot 90 selected { pad 10,0 60x60 top name 1; text 30,-90 "2k" comment rot 90 }
)";

TEST_F(Swap, OppositeSides) {
  Load(kTwo);
  const std::string name1 = Place(Part(0).NameText()), name2 = Place(Part(1).NameText());
  const std::string comment1 = Place(Part(0).CommentText()), comment2 = Place(Part(1).CommentText());
  Run();
  EXPECT_EQ(States(), (Lines{"U1* 500,700 B 90 u0", "U2* 100,100 T 0 u0"}));
  EXPECT_EQ(Place(Part(0).NameText()), name2);
  EXPECT_EQ(Place(Part(1).NameText()), name1);
  EXPECT_EQ(Place(Part(0).CommentText()), comment2);
  EXPECT_EQ(Place(Part(1).CommentText()), comment1);
  // On the bottom, turned by 90: the pads stand one above the other, and on the bottom layer.
  const Editor::Pad& pad1 = *Tests::Find<Editor::Pad>(*board, 0);
  const Editor::Pad& pad2 = *Tests::Find<Editor::Pad>(*board, 1);
  EXPECT_EQ(pad1.data.center, (TCoordPoint{Mil(500), Mil(650)}));
  EXPECT_EQ(pad2.data.center, (TCoordPoint{Mil(500), Mil(750)}));
  EXPECT_EQ(pad1.state.layer, TV7_Layer(eV6_BottomLayer));
  EXPECT_EQ(prompts, Lines{});
}

TEST_F(Swap, WhatIsSelectedAndPicked) {
  const struct {
    const char* name;
    const char *selected, *picks;  // 1, 2, 3, t for the track and n for nothing
    const char* prompts;           // for the first or the second
    const char* after;             // but for the unions
  } rows[] = {
      {"two", "13", "", "", "U1* 900,100 T 0, U2 500,100 T 90, U3* 100,100 T 0"},
      {"three, and picks of others", "123", "23", "121", "U1* 100,100 T 0, U2 900,100 T 0, U3 500,100 T 90"},
      {"one and a track", "1t", "", "1", "U1* 100,100 T 0, U2 500,100 T 90, U3 900,100 T 0"},
      {"a second pick that is cancelled", "", "1", "12", "U1* 100,100 T 0, U2 500,100 T 90, U3 900,100 T 0"},
      {"nothing and a track", "", "n1t3", "11221", "U1 900,100 T 0, U2 500,100 T 90, U3 100,100 T 0"},
      {"pair after pair", "", "1312", "12121", "U1 900,100 T 0, U2 100,100 T 0, U3 500,100 T 90"},
      {"the same twice", "", "22", "121", "U1 100,100 T 0, U2 500,100 T 90, U3 900,100 T 0"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Load(
        "component U1 at 100,100 { pad 0,0 60x60 top }; component U2 at 500,100 rot 90 { pad 0,0 60x60 top };"
        "component U3 at 900,100 { pad 0,0 60x60 top }; track 1400,100 1600,100 w10 top");
    for (const char which : std::string(row.selected)) {
      Editor::Primitive* object = Tests::Find<Editor::Track>(*board);
      if (which != 't') object = &Part(static_cast<std::size_t>(which - '1'));
      object->SetFlag(Editor::kFlag_Selected, true);
    }
    for (const char which : std::string(row.picks))
      picks.push_back({which == 'n' ? 3000 : which == 't' ? 1500 : (which - '1') * 400 + 100, 100});
    Run();
    std::string after;
    for (const std::string& state : States())
      after += (after.empty() ? "" : ", ") + state.substr(0, state.size() - 3);
    EXPECT_EQ(after, row.after);
    Lines asked;
    for (const char which : std::string(row.prompts))
      asked.push_back(which == '1' ? "Select first component" : "Select second component");
    EXPECT_EQ(prompts, asked);
    EXPECT_EQ(warnings, Lines{});
  }
}

TEST_F(Swap, ALockedComponentEndsTheCommand) {
  const Lines kWarning = {
      "One or more components are locked. The swap components command cannot be executed."};
  const char* const kBoard =
      "component U1 at 100,100 { pad 0,0 60x60 top }; component U2 at 500,100 locked { pad 0,0 60x60 top };"
      "component U3 at 900,100 { pad 0,0 60x60 top }";
  Load(kBoard);
  for (const std::size_t n : {0, 1}) Part(n).SetFlag(Editor::kFlag_Selected, true);
  Lines before = States();
  Run();
  EXPECT_EQ(warnings, kWarning);
  EXPECT_EQ(States(), before);
  // Picked: the second pair is refused, and stays selected.
  Load(kBoard);
  picks = {{100, 100}, {900, 100}, {500, 100}, {100, 100}, {900, 100}};
  Run();
  EXPECT_EQ(warnings, kWarning);
  EXPECT_EQ(States(), (Lines{"U1 900,100 T 0 u0", "U2* 500,100 T 0 u0", "U3* 100,100 T 0 u0"}));
}

// Texts that only one of the two has, and texts that are kept beside their components.
TEST_F(Swap, TextsThatAreMissingOrKept) {
  Load(
      "component U1 at 100,100 selected { pad 0,0 60x60 top; text 0,90 \"1k\" comment };"
      "component U2 at 500,100 selected { pad 0,0 60x60 top }");
  Part(0).ChangeNameAutoposition(eAutoPos_BottomCenter);
  const TCoordRect name = Part(0).NameText()->Bounds();
  const TCoord below = Part(0).Bounds().y1 - name.y2;
  Run();
  EXPECT_EQ(Part(0).CommentText()->data.anchor, (TCoordPoint{Mil(500), Mil(190)}));
  EXPECT_EQ(Part(1).CommentText(), nullptr);
  EXPECT_EQ(Part(0).data.name_position, eAutoPos_Manual);
  EXPECT_EQ(Part(1).data.name_position, eAutoPos_BottomCenter);
  EXPECT_EQ(Part(1).NameText()->Bounds(), name);
  EXPECT_GT(below, 0);
}

TEST_F(Swap, Unions) {
  const struct {
    int first, second;
    const char* after;        // own indexes
    const char* after_parts;  // of a pad of each
  } rows[] = {
      {0, 0, "00", "00"}, {3, 0, "03", "03"}, {0, 4, "40", "40"}, {3, 4, "43", "43"}, {3, 3, "33", "33"}};
  for (const auto& row : rows) {
    Load(kTwo);
    const auto pad = [&](std::size_t n) { return Editor::As<Editor::Pad>(Part(n).Members()[1].Get()); };
    PutIntoUnion(0, row.first);
    PutIntoUnion(1, row.second);
    Run();
    const auto text = [](int a, int b) { return std::to_string(a) + std::to_string(b); };
    EXPECT_EQ(text(Part(0).state.union_index, Part(1).state.union_index), row.after);
    EXPECT_EQ(text(pad(0)->state.union_index, pad(1)->state.union_index), row.after_parts);
    EXPECT_EQ(Part(0).NameText()->state.union_index, pad(0)->state.union_index);
  }
}

// What is written, in its order; `a` and `b` are the two components and their texts.
TEST_F(Swap, WritesInItsOrder) {
  Load(kTwo);
  Part(0).state.union_index = 3;
  HostGate::Arm(true);
  Run();
  HostGate::Disarm();
  Lines writes;
  int repeated = 0;
  for (const std::string& call : HostGate::Record()) {
    const bool is_write = call.find("SetState_") != call.npos || call.find("Modify") != call.npos ||
                          call.find("Change") != call.npos || call.ends_with("RotateBy") ||
                          call.ends_with("MoveByXY") || call.ends_with("AddToUnion");
    if (!is_write) continue;
    const std::string name = call.substr(call.find('.') + 1);
    if (!writes.empty() && writes.back().starts_with(name)) {
      writes.back() = name + " x" + std::to_string(++repeated);
    } else {
      writes.push_back(name);
      repeated = 1;
    }
  }
  const Lines expected = {
      "BeginModify x2", "SetState_Flipped x2", "SetState_Layer x2", "SetState_Flipped x2", "RotateBy",
      "SetState_Rotation", "RotateBy", "SetState_Rotation", "MoveByXY x2",
      // the first leaves its union, the second joins it, the first joins that of the second, none
      "SetState_UnionIndex x6", "AddToUnion", "SetState_UnionIndex x5", "AddToUnion",
      "SetState_UnionIndex x6", "SetState_AnchorX x2", "SetState_AnchorY x2", "SetState_Rotation x2",
      "SetState_Mirrored x2", "ChangeNameAutoposition x2", "SetState_AnchorX x2", "SetState_AnchorY x2",
      "SetState_Rotation x2", "SetState_Mirrored x2", "ChangeCommentAutoposition x2", "EndModify x2"};
  EXPECT_EQ(writes, expected);
  EXPECT_EQ(PrimitiveRegistry, nullptr);
}

TEST_F(Swap, TwiceIsAsBefore) {
  const unsigned seed = std::random_device{}();
  std::mt19937 random(seed);
  const auto number = [&](int low, int high) {
    return std::to_string(std::uniform_int_distribution<int>(low, high)(random));
  };
  for (int run = 0; run < 60; ++run) {
    const bool right_angles = run % 2 == 0;
    std::string text;
    for (const char* name : {"U1", "U2"}) {
      const std::string rotation = right_angles ? std::to_string(random() % 4 * 90) : number(0, 359);
      text += std::string("component ") + name + " at " + number(-900, 900) + "," + number(-900, 900) +
              " rot " + rotation + (random() % 2 ? " bottom" : "") + " selected {";
      text +=
          "pad " + number(-90, 90) + "," + number(-90, 90) + " 60x40 rounded rot " + number(0, 3) + "0 top;";
      text += "track 0,0 " + number(-90, 90) + "," + number(-90, 90) + " w5 topoverlay;";
      text += "arc 0,0 r20 " + number(0, 90) + ".." + number(91, 359) + " w5 mech3;";
      text += "text " + number(-90, 90) + ",7 \"x\" comment rot " + number(0, 3) + "0 }\n";
    }
    Load(text.c_str());
    for (const std::size_t n : {0, 1}) PutIntoUnion(n, static_cast<std::int32_t>(random() % 3));
    const Lines before = Tests::DescribeBoard(*board);
    Run();
    Run();
    EXPECT_EQ(Tests::Differences(before, Tests::DescribeBoard(*board), right_angles ? 0.1 : 2), "")
        << "seed " << seed << "\n"
        << text;
  }
}

}  // namespace
}  // namespace Ketril::Tools
