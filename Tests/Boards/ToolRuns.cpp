#include "Tests/Boards/ToolRuns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Copper/CopperMeasure.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Files/Units.h"
#include "Editor/Model/Rooms.h"
#include "Editor/Rules/Clearance.h"
#include "Editor/Selection/Selection.h"
#include "Editor/Vias/ViaUnions.h"
#include "Interfaces/Tools.h"
#include "Tests/Support/DescribeBoard.h"

namespace Ketril::Tests {

namespace {

using Editor::Board;
using Editor::Primitive;

using Tool = std::function<void(Board&)>;

void Teardrops(Board& board, const char16_t* flags) {
  const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
  parameters->AddParameter(u"TeardropParam_FlagsEx", flags);
  Tools_TearDrops(&board, parameters.Get());
}

Tool Arrange(TArrangerMethod method) {
  return [method](Board& board) { Tools_RunArrange(&board, board.view.Get(), method); };
}

std::vector<TCoordPoint> places_to_pick;  // the next one last

// From the middle of each of the first components.
void ShoveFromSome(Board& board) {
  constexpr std::size_t kSome = 3;
  board.objects.ForEach({eComponentObject}, [](const Primitive& component) {
    const TCoordRect box = component.Bounds();
    if (places_to_pick.size() < kSome)
      places_to_pick.push_back({box.x1 + (box.x2 - box.x1) / 2, box.y1 + (box.y2 - box.y1) / 2});
  });
  Tools_ShoveComponents(&board, board.view.Get());
}

// Says yes to everything.
Editor::ClientSetup User() {
  Editor::ClientSetup setup;
  setup.confirm = [](const std::u16string&) { return true; };
  setup.dialogs.via_stitching = [](auto&, auto&) { return true; };
  setup.dialogs.via_shielding = [](auto&, auto&) { return true; };
  setup.choose_location = [](const std::u16string&) -> std::optional<TCoordPoint> {
    if (places_to_pick.empty()) return std::nullopt;
    const TCoordPoint place = places_to_pick.back();
    places_to_pick.pop_back();
    return place;
  };
  return setup;
}

std::vector<std::string> SortedObjects(const Board& board, bool teardrops) {
  std::vector<std::string> lines;
  board.objects.ForEach(TObjectSet::All(), [&](Primitive& object) {
    if (object.Has(Editor::kFlag_TearDrop) == teardrops) lines.push_back(Describe(object));
  });
  std::ranges::sort(lines);
  return lines;
}

class ToolRun : public testing::Test {
 public:
  explicit ToolRun(std::filesystem::path path) : path_(std::move(path)) {}

 protected:
  ~ToolRun() override { Tools::ReleasePCBServer(); }
  void SetUp() override {
    board_ = Editor::ReadBoardText(Text());
    before_ = DescribeBoard(*board_);
    board_->journal.Begin();
  }
  virtual std::string Text() const { return Editor::ReadBoard(path_)->file.text; }
  void Select(const char* expression) {
    EXPECT_GT(Editor::Selection(expression, Editor::LengthUnit::Millimetre).Apply(*board_), 0u) << expression;
  }
  void ExpectReadsBack() {
    const Ref<Board> again = Editor::ReadBoardText(Editor::WriteBoardText(*board_));
    // A pad that became free is a footprint in the file, and footprints come before the rest.
    EXPECT_EQ(Differences(DescribeBoard(*board_, true), DescribeBoard(*again, true)), "");
  }
  // The board as it came, its file included.
  void ExpectUndoes() {
    board_->journal.Undo();
    EXPECT_EQ(Differences(before_, DescribeBoard(*board_)), "");
    EXPECT_TRUE(Editor::WriteBoardText(*board_) == board_->file.text);
  }

  std::filesystem::path path_;
  Ref<Board> board_;
  std::vector<std::string> before_;

 private:
  Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(User())};
};

class TeardropRun final : public ToolRun {
 public:
  TeardropRun(std::filesystem::path path, const char16_t* add) : ToolRun(std::move(path)), add_(add) {}
  void TestBody() override {
    const auto others = SortedObjects(*board_, false);
    Teardrops(*board_, add_);
    const auto teardrops = SortedObjects(*board_, true);
    EXPECT_FALSE(teardrops.empty());
    ExpectReadsBack();

    Teardrops(*board_, add_);
    EXPECT_EQ(Differences(teardrops, SortedObjects(*board_, true)), "");
    EXPECT_EQ(Differences(others, SortedObjects(*board_, false)), "");

    Teardrops(*board_, u"960");
    EXPECT_EQ(Differences({}, SortedObjects(*board_, true)), "");
    EXPECT_EQ(Differences(others, SortedObjects(*board_, false)), "");
    ExpectUndoes();
  }

 private:
  const char16_t* add_;
};

// Of the older builder. Its removal leaves what hangs on nothing but a part of a component or an arc: the
// user takes that off object by object. The marks are in no board file.
class LegacyTeardropRun final : public ToolRun {
 public:
  LegacyTeardropRun(std::filesystem::path path, const char16_t* style)
      : ToolRun(std::move(path)), style_(style) {}
  void TestBody() override {
    const auto others = SortedObjects(*board_, false);
    const auto violations = board_->Clearances().CheckBoard().size();
    Run(u"Style", style_);
    EXPECT_LE(board_->Clearances().CheckBoard().size(), violations);
    const auto teardrops = SortedObjects(*board_, true);
    EXPECT_EQ(Differences(others, SortedObjects(*board_, false)), "");
    Run(u"Action", u"Remove");
    ForEachOf({eComponentObject}, Tools_RemoveTearDropsFromComponent);
    ForEachOf({eArcObject}, Tools_RemoveTearDropsFromPadVia);
    EXPECT_EQ(Differences({}, SortedObjects(*board_, true)), "");
    EXPECT_EQ(Differences(others, SortedObjects(*board_, false)), "");
    ExpectUndoes();
    RecordProperty("teardrops", static_cast<int>(teardrops.size()));
  }

 private:
  void Run(const char16_t* name, const char16_t* value) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    parameters->AddParameter(name, value);
    parameters->AddParameter(u"Report", u"False");
    Tools_LegacyTearDrops(board_.Get(), parameters.Get());
  }
  void ForEachOf(TObjectSet kinds, void (*tool)(IPCB_Board*, IPCB_Primitive*)) {
    std::vector<Ref<Primitive>> objects;
    board_->objects.ForEach(kinds, [&](Primitive& object) { objects.emplace_back(&object); });
    for (const Ref<Primitive>& object : objects) {
      if (object->on_board) tool(board_.Get(), object->AsInterface());
    }
  }

  const char16_t* style_;
};

class PlainRun : public ToolRun {
 public:
  PlainRun(std::filesystem::path path, const char* selection, Tool tool)
      : ToolRun(std::move(path)), selection_(selection), tool_(std::move(tool)) {}
  void TestBody() override {
    Select(selection_);
    tool_(*board_);
    ExpectReadsBack();
    ExpectOnlyChangedLines();
    ExpectUndoes();
  }

 private:
  static std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  // Where the tool added and removed nothing, a line of the file differs only within an object that changed.
  void ExpectOnlyChangedLines() {
    const std::string& text = board_->file.text;
    const auto before = Lines(text), after = Lines(Editor::WriteBoardText(*board_));
    std::vector<bool> may_change(before.size());
    std::vector<std::size_t> ends;
    for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1)) ends.push_back(at);
    const auto line_of = [&](std::size_t at) {
      return static_cast<std::size_t>(std::ranges::lower_bound(ends, at) - ends.begin());
    };
    for (const Editor::Change& change : board_->journal.Changes()) {
      if (change.kind != Editor::ChangeKind::Modified) return;
      const Primitive* object = change.object.Get();
      if (object->source.end <= object->source.begin) continue;
      for (std::size_t line = line_of(object->source.begin); line <= line_of(object->source.end); ++line)
        may_change[line] = true;
    }
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t line = 0; line < before.size(); ++line)
      EXPECT_TRUE(may_change[line] || before[line] == after[line]) << after[line];
  }

  const char* selection_;
  Tool tool_;
};

// With an area that places what lies in a quarter of the board, besides what areas the board has.
class RoomRun final : public PlainRun {
 public:
  using PlainRun::PlainRun;

 private:
  std::string Text() const override {
    const Ref<Board> board = Editor::ReadBoard(path_);
    const TCoordRect box = board->Extents();
    const TCoordPoint middle{box.x1 / 2 + box.x2 / 2, box.y1 / 2 + box.y2 / 2};
    std::string corners, text = board->file.text;
    for (const TCoordPoint at : {TCoordPoint{box.x1, box.y1}, {middle.x, box.y1}, middle, {box.x1, middle.y}})
      corners += " (xy " + Editor::FormatMillimetres(Editor::ToNanometres(at.x)) + " " +
                 Editor::FormatMillimetres(Editor::ToNanometres(-at.y)) + ")";
    return text.insert(
        text.rfind(')'),
        "(zone (net 0) (net_name \"\") (layers *.Cu) (placement (enabled yes) (sheetname \"\"))\n"
        "(polygon (pts" +
            corners + ")))\n");
  }
};

// Components that change places, the first with the last and so on, and change back: to the byte, where they
// turned by right angles, else but for what turning twice rounds.
class SwapRun final : public ToolRun {
 public:
  using ToolRun::ToolRun;
  void TestBody() override {
    for (const bool by_right_angles : {true, false}) {
      const std::vector<Pair> pairs = Pairs(by_right_angles);
      SwapAll(pairs);
      const Ref<Board> again = Editor::ReadBoardText(Editor::WriteBoardText(*board_));
      EXPECT_EQ(Differences(DescribeBoard(*board_), DescribeBoard(*again), 4), "");
      SwapAll(pairs);
      EXPECT_EQ(Differences(before_, DescribeBoard(*board_), by_right_angles ? 0.1 : 3), "");
      EXPECT_TRUE(!by_right_angles || Editor::WriteBoardText(*board_) == board_->file.text);
    }
    ExpectUndoes();
  }

 private:
  using Pair = std::pair<Editor::Component*, Editor::Component*>;

  std::vector<Pair> Pairs(bool by_right_angles) const {
    std::vector<Editor::Component*> parts;
    board_->objects.ForEach({eComponentObject}, [&](Primitive& part) {
      if (!part.Has(Editor::kFlag_Locked)) parts.push_back(Editor::As<Editor::Component>(&part));
    });
    std::vector<Pair> pairs;
    for (std::size_t i = 0; i < std::min<std::size_t>(parts.size() / 2, 60); ++i) {
      const Pair pair = {parts[i], parts[parts.size() - 1 - i]};
      const double turn = pair.first->data.rotation - pair.second->data.rotation;
      if ((std::remainder(turn, 90) == 0) == by_right_angles) pairs.push_back(pair);
    }
    return pairs;
  }

  void SwapAll(const std::vector<Pair>& pairs) {
    for (const auto& [first, second] : pairs) {
      for (Primitive* part : {first, second}) part->SetFlag(Editor::kFlag_Selected, true);
      Tools_SwapComponents(board_.Get(), nullptr);
      for (Primitive* part : {first, second}) part->SetFlag(Editor::kFlag_Selected, false);
    }
  }
};

// A flood and a fence that break no rule, and the board as it came once both are taken off.
class ViaRun final : public ToolRun {
 public:
  using ToolRun::ToolRun;
  void TestBody() override {
    const std::size_t violations = board_->Clearances().CheckBoard().size();
    SetUpOptions();
    Apply(Tools_ApplyViaStitching, nullptr);
    Apply(Tools_ApplyViaShielding, nullptr);
    EXPECT_EQ(board_->Clearances().CheckBoard().size(), violations);
    const Ref<Board> again = Editor::ReadBoardText(Editor::WriteBoardText(*board_));
    EXPECT_EQ(again->Clearances().CheckBoard().size(), violations);
    Apply(Tools_ApplyViaStitching, u"Remove");
    Apply(Tools_ApplyViaShielding, u"RemoveShielding");
    EXPECT_EQ(Differences(before_, DescribeBoard(*board_)), "");
    EXPECT_TRUE(Editor::WriteBoardText(*board_) == board_->file.text);
    ExpectUndoes();
  }

 private:
  using Export = void (*)(IPCB_Board*, IServerDocumentView*, IParameterList*);
  void Apply(Export tool, const char16_t* mode) {
    const Ref<Editor::Parameters> parameters = Editor::MakeHost<Editor::Parameters>();
    if (mode) parameters->AddParameter(u"Mode", mode);
    tool(board_.Get(), board_->view.Get(), parameters.Get());
  }
  // Small vias around the net with most tracks but ground's.
  void SetUpOptions() {
    Editor::Net* const ground = board_->FindNet(u"GND");
    std::map<Editor::Net*, int> tracks;
    board_->objects.ForEach({eTrackObject}, [&](const Primitive& track) {
      if (track.GetNet() && track.GetNet() != ground) ++tracks[track.GetNet()];
    });
    Editor::ShieldSettings& fence = board_->Unions().ShieldDefaults()->settings;
    if (!tracks.empty())
      fence.net = std::ranges::max_element(tracks, {}, &std::pair<Editor::Net* const, int>::second)->first;
    fence.copper = true;
    Editor::StitchSettings& flood = board_->Unions().StitchDefaults()->settings;
    for (Editor::ViaSettings* settings :
         {static_cast<Editor::ViaSettings*>(&fence), static_cast<Editor::ViaSettings*>(&flood)}) {
      settings->reference->SetNet(ground);
      settings->reference->data.size = 180000;
      settings->reference->data.hole = 80000;
    }
  }
};

// Everything that is a group comes apart; no copper is lost, not in the file either.
class UnGroupRun final : public ToolRun {
 public:
  using ToolRun::ToolRun;
  void TestBody() override {
    const auto areas = Areas(*board_);
    constexpr TObjectSet kKinds = {eComponentObject, ePolyObject, eDimensionObject, eCoordinateObject};
    board_->objects.ForEach(kKinds, [](Primitive& group) {
      if (!group.Owner()) group.SetFlag(Editor::kFlag_Selected, true);
    });
    Tools_UnGroup(board_.Get(), true, kKinds, u"Ungroup?");
    for (const TObjectId kind : {eComponentObject, eDimensionObject})
      EXPECT_EQ(board_->objects.Count(kind), 0u);
    ExpectSameAreas(areas, Areas(*board_));
    const Ref<Board> again = Editor::ReadBoardText(Editor::WriteBoardText(*board_));
    ExpectSameAreas(areas, Areas(*again));
    // Free curves are lines in the file.
    if (board_->file.text.find("(fp_curve") == std::string::npos) {
      EXPECT_EQ(Differences(DescribeBoard(*board_, true), DescribeBoard(*again, true), 2), "");
    }
    ExpectUndoes();
  }

 private:
  static std::map<TV7_Layer, double> Areas(const Board& board) {
    return Editor::MakeHost<Editor::CopperBodies>(board)->areas;
  }
  // But for the chords of what a pen rounds.
  static void ExpectSameAreas(const std::map<TV7_Layer, double>& before,
                              const std::map<TV7_Layer, double>& after) {
    for (const auto& [layer, area] : before) EXPECT_NEAR(after.at(layer), area, 1e-4 * area) << layer.ID;
  }
};

struct Row {
  const char* name;
  const char* selection;
  Tool tool;
};

const Row kRows[] = {
    {"ViasToPads", "via", [](Board& board) { Tools_ReplaceSelectedViasWithPads(&board); }},
    {"ViasToPadsAndBack", "via",
     [](Board& board) {
       Tools_ReplaceSelectedViasWithPads(&board);
       Tools_ReplaceSelectedPadsWithVias(&board);
     }},
    {"AlignFreeObjects", "via or track", Arrange(eArrangeBottom)},
    // Texts that lie beside each other are spread one above the other: all of a board would leave the range
    // of its file.
    {"SpreadTexts", "text and name:C1*", Arrange(eArrangeSpreadY)},
    {"ToRectangle", "component",
     [](Board& board) {
       const TCoordRect box = board.Extents();
       Tools_RunArrangeToRectangle(&board, board.view.Get(), box.x1, box.y1, box.x2, box.y2);
     }},
    {"OutsideBoard", "component",
     [](Board& board) { Tools_AutoPlaceOutsideBoard(&board, board.view.Get()); }},
    {"AllToTheGrid", "component", [](Board& board) { Tools_MoveAllCompsToGrid(&board); }},
    {"Shove", "component", ShoveFromSome},
    {"Microstrips", "track",
     [](Board& board) {
       const TMicrostripeSettings settings{0.5, 0.5};
       Tools_MakeMicrostripe(&board, &settings);
     }},
    {"Autoposition", "component",
     [](Board& board) {
       Tools_AutopositionText(&board, eAutoPos_TopCenter, eAutoPos_BottomLeft, false, false);
     }},
};

const Row kRoomRows[] = {
    {"RoomsToTheGrid", "room", [](Board& board) { Tools_MoveAllRoomsToGrid(&board); }},
    {"ArrangeRooms", "room",
     [](Board& board) {
       const auto options = Editor::MakeHost<Editor::RoomArrangeOptions>();
       Tools_RunRoomArrange(&board, board.view.Get(), options.Get());
     }},
    {"ToRoom", "room", [](Board& board) { Tools_RunArrangeToRoom(&board, board.view.Get(), u"Room"); }},
};

void Register(const std::string& run, const std::filesystem::path& path,
              std::function<testing::Test*()> make) {
  const std::string board = path.parent_path().filename() / path.stem();
  testing::RegisterTest("Tools", (run + "/" + board).c_str(), nullptr, nullptr, __FILE__, __LINE__,
                        std::move(make));
}

}  // namespace

void RegisterToolRuns(const std::filesystem::path& path) {
  Register("TeardropsCurved", path, [path] { return new TeardropRun(path, u"1000"); });
  Register("TeardropsStraight", path, [path] { return new TeardropRun(path, u"1016"); });
  Register("FloodAndFence", path, [path] { return new ViaRun(path); });
  Register("UnGroup", path, [path] { return new UnGroupRun(path); });
  for (const char16_t* style : {u"0", u"1", u"2"}) {
    const std::string name = std::string("LegacyTeardrops") + static_cast<char>(style[0]);
    Register(name, path, [path, style] { return new LegacyTeardropRun(path, style); });
  }
  Register("SwapTwice", path, [path] { return new SwapRun(path); });
  for (const Row& row : kRows)
    Register(row.name, path, [path, &row] { return new PlainRun(path, row.selection, row.tool); });
  for (int method = eArrangeMoveToGrid; method <= eArrangeBottomSideBySide; ++method) {
    Register("Arrange" + std::to_string(method), path, [path, method] {
      return new PlainRun(path, "component", Arrange(static_cast<TArrangerMethod>(method)));
    });
  }
  for (const Row& row : kRoomRows)
    Register(row.name, path, [path, &row] { return new RoomRun(path, row.selection, row.tool); });
}

}  // namespace Ketril::Tests
