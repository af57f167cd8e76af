// What holds for every arrange command: the brackets, what is locked, the undo.
#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "Editor/HostCall.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tools {
namespace {

// Fourteen things at random, selected, locked or neither.
class RandomObjects {
 public:
  int Below(int end) { return static_cast<int>(engine_() % static_cast<unsigned>(end)); }
  std::string Text() {
    std::string lines;
    for (int i = 0; i < 14; ++i) lines += Object(std::to_string(i)) + "\n";
    return lines;
  }

 private:
  std::string Place() { return std::to_string(Below(3000)) + "," + std::to_string(Below(3000)); }
  std::string Marks() { return std::string(Below(3) ? " selected" : "") + (Below(4) ? "" : " locked"); }
  std::string Object(const std::string& number) {
    const std::string at = Place();
    switch (Below(4)) {
      case 0:
        return "via " + at + " 60/30 net A" + Marks();
      case 1:
        return "track " + at + " " + Place() + " w10 top" + Marks();
      case 2:
        return "text " + at + " \"T" + number + "\" h50 topoverlay" + Marks();
      default:
        return "component U" + number + " at " + at + (Below(2) ? " bottom" : "") + Marks() +
               " { pad 0,0 60x60 net A" + (Below(2) ? " selected" : "") + "; pad 100,0 40x90; text 0,80 \"V" +
               number + "\" h60 comment" + (Below(3) ? "" : " selected") + " }";
    }
  }

  std::mt19937 engine_{51};
};

class AlignPromises : public PlacementBoard {
 protected:
  // The methods by their numbers, then the commands that pack.
  static constexpr int kRuns = eArrangeBottomSideBySide + 5;
  void Arrange(int run) {
    switch (run - eArrangeBottomSideBySide) {
      case 1:
        return Tools_RunArrangeToRectangle(board.Get(), View(), 0, 0, Mil(900), Mil(900));
      case 2:
        return Tools_RunArrangeToRoom(board.Get(), View(), u"A");
      case 3:
        return Tools_RunArrangeOutsideBoard(board.Get(), View());
      case 4:
        return Tools_RunRoomArrange(board.Get(), View(), nullptr);
      default:
        return Tools_RunArrange(board.Get(), View(), static_cast<TArrangerMethod>(run));
    }
  }
  static bool KeepsX(int run) {
    return (run >= eArrangeTop && run <= eArrangeSpreadY) || run == eArrangeTopSideBySide ||
           run == eArrangeBottomSideBySide;
  }
  static bool KeepsY(int run) {
    return run > eArrangeMoveToGrid && run <= eArrangeBottomSideBySide && !KeepsX(run);
  }

  using Boxes = std::vector<std::pair<const Editor::Primitive*, TCoordRect>>;
  Boxes Now() const {
    Boxes boxes;
    board->objects.ForEach(TObjectSet::All(), [&](const Editor::Primitive& object) {
      if (object.kind != eNetObject) boxes.emplace_back(&object, object.Bounds());
    });
    return boxes;
  }
  // Gives how many objects moved.
  static int ExpectKept(int run, const Boxes& before) {
    int moved = 0;
    for (const auto& [object, was] : before) {
      const TCoordRect is = object->Bounds();
      moved += is == was ? 0 : 1;
      const auto* const owner = object->Owner();
      const bool is_locked = object->Has(Editor::kFlag_Locked) || (owner && owner->Has(Editor::kFlag_Locked));
      EXPECT_TRUE(!is_locked || is == was);
      // Beside a component that comes first, a member goes out of its own by itself.
      EXPECT_TRUE((is.x2 - is.x1 == was.x2 - was.x1 && is.y2 - is.y1 == was.y2 - was.y1) ||
                  object->MemberList());
      EXPECT_TRUE(!KeepsX(run) || is.x1 == was.x1);
      EXPECT_TRUE(!KeepsY(run) || is.y1 == was.y1);
    }
    return moved;
  }
};

// Which calls change the board, in their order; what is read and drawn by a walk is left out.
Lines Edits(const std::vector<std::string>& calls) {
  Lines edits;
  for (const std::string& call : calls) {
    const std::string name = call.substr(call.find('.') + 1);
    for (const char* const edit :
         {"BeginModify", "EndModify", "MoveByXY", "MoveToXY", "SetState_XSizeYSize", "UpdateNet",
          "GraphicallyInvalidatePrimitive", "SetState_DocumentHasChanged"}) {
      if (name == edit) edits.push_back(name);
    }
  }
  return edits;
}

TEST_F(AlignPromises, ChangesStandInBrackets) {
  Load("via 0,0 60/30 selected; component U1 at 500,400 { pad 0,0 60x60 selected }");
  Editor::HostGate::Arm(true);
  Tools_RunArrange(board.Get(), View(), eArrangeLeft);
  Editor::HostGate::Disarm();
  const char *const kDraw = "GraphicallyInvalidatePrimitive", *const kMark = "SetState_DocumentHasChanged";
  EXPECT_EQ(Edits(Editor::HostGate::Record()),
            (Lines{kDraw, "BeginModify", "MoveByXY", "EndModify", kDraw, kMark, kDraw, "BeginModify",
                   "MoveToXY", "EndModify", kDraw, kMark}));
  EXPECT_TRUE(board->document_changed);
  // A room with a component and a via, of two nets.
  Load("component U1 at 150,150 { pad 0,0 60x60 net A }; via 130,130 20/10 net B");
  Room(u"A", u"component", {100, 100, 200, 200}, true);
  Editor::HostGate::Arm(true);
  Tools_RunRoomArrange(board.Get(), View(), nullptr);
  Editor::HostGate::Disarm();
  EXPECT_EQ(Edits(Editor::HostGate::Record()),
            (Lines{kDraw, "BeginModify", "BeginModify", "BeginModify", "MoveToXY", "MoveByXY",
                   "SetState_XSizeYSize", "EndModify", "EndModify", "EndModify", "UpdateNet", "UpdateNet",
                   kDraw, kDraw, kDraw, kMark}));
  EXPECT_TRUE(board->document_changed);
}

// Whatever is arranged: what is locked stays, sizes stay, one axis stays, and an undo gives the board back.
TEST_F(AlignPromises, KeepsWhatIsLockedAndCanBeUndone) {
  RandomObjects random;
  int moved = 0;
  for (int round = 0; round < 20; ++round) {
    const std::string objects = random.Text();
    SCOPED_TRACE(objects);
    Load(objects.c_str());
    Clearance(eRule_Clearance, random.Below(20));
    Clearance(eRule_ComponentClearance, random.Below(20));
    Room(u"A", u"component and name:U1*", {500, 500, 1500, 1500}, random.Below(2));
    Room(u"B", u"component", {1000, 1000, 2500, 2500}, true)->Set(Editor::kFlag_Locked, true);
    const auto described = Tests::DescribeBoard(*board);
    const Boxes before = Now();
    const TCoordRect& centre = before[static_cast<std::size_t>(random.Below(14))].second;
    for (int run = eArrangeMoveToGrid; run < kRuns; ++run) {
      SCOPED_TRACE(run);
      picks = {{centre.x1 / 10000, centre.y1 / 10000}};
      board->journal.Begin();
      Arrange(run);
      moved += ExpectKept(run, before);
      EXPECT_EQ(board->LiveIterators(), 0);
      board->journal.Undo();
      EXPECT_EQ(Tests::DescribeBoard(*board), described);
      if (HasFailure()) return;
    }
  }
  EXPECT_GT(moved, 1000) << "the boards were too empty to say anything";
}

}  // namespace
}  // namespace Ketril::Tools
