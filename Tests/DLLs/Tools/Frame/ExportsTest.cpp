// The built library, as an editor sees it: what it exports, called through names.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "Editor/Client/ReportForms.h"
#include "Editor/HostCall.h"
#include "Editor/Model/Library.h"
#include "Editor/Vias/ViaOptions.h"
#include "Tests/DLLs/Tools/Placement/PlacementBoard.h"
#include "Tests/Support/TempFolder.h"

namespace Ketril {
namespace {

using Tests::Mil;
using Tools::Places;

class Exports : public Tools::PlacementBoard {
 protected:
  void SetUp() override { ASSERT_TRUE(library_) << dlerror(); }

  template <class Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(dlsym(library_, name));
  }

  Editor::ClientSetup UserOfAll() {
    Editor::ClientSetup setup = User();
    const auto ground = [](Editor::Board& on, Editor::ViaSettings& settings) {
      settings.reference->SetNet(on.FindNet(u"GND"));
      return true;
    };
    setup.dialogs.via_stitching = ground;
    setup.dialogs.via_shielding = ground;
    setup.dialogs.unused_pads = [](TUnusedPadsOptions& options) {
      return options = {true, true, false, false, eUnusedPads_Remove}, true;
    };
    return setup;
  }
  std::u16string File(const char* name) const { return (folder_ / name).u16string(); }
  // The first line of a file of the folder.
  std::string FirstLine(const char* name) const {
    std::ifstream file(folder_ / name);
    std::string line;
    std::getline(file, line, '\r');
    return line;
  }
  std::string FileNames() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
      names.insert(entry.path().filename());
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
  }
  // The places of the teardrops, in mil; those alone that are drawn.
  std::string Drops(bool drawn = false) const {
    std::string text;
    board->objects.ForEach({eRegionObject}, [&](const Editor::Primitive& drop) {
      if (drop.Has(Editor::kFlag_TearDrop) && (!drawn || drop.Has(Editor::kFlag_EnableDraw)))
        text += (text.empty() ? "" : " ") + std::to_string(drop.Bounds().x1 / 10000);
    });
    return text;
  }
  std::string Count(TObjectId kind) const { return std::to_string(board->objects.Count(kind)); }

  // Stays loaded, as in an editor.
  void* library_ = dlopen(KETRIL_TOOLS_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  const Tests::TempFolder folder_;
  const Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(UserOfAll())};
};

constexpr const char* kParts = R"(
  edge 0,0 1000,0 1000,800 0,800
  component A at 110,120 selected { pad 0,0 20x20 ; text 0,40 "10k" comment }
  component B at 330,270 selected { pad 0,0 40x40 }
  component C at 720,560 selected { pad 0,0 60x60 }
)";
// In a row, and in a column, two each.
constexpr const char* kClose =
    "component A at 110,120 selected { pad 0,0 20x20 } ; component B at 330,130 selected { pad 0,0 40x40 } ;"
    "component C at 350,560 selected { pad 0,0 60x60 }";
constexpr const char* kPair =
    "edge 0,0 2000,0 2000,2000 0,2000 ; component A at 100,200 selected { pad 0,0 60x60 } ;"
    "component B at 130,210 selected { pad 0,0 60x60 }";
constexpr const char* kCopper = R"(
  region 0,0 300,0 300,300 0,300 top net GND
  region 0,0 300,0 300,300 0,300 bottom net GND
  track 500,0 900,0 w10 top net A selected
  track 900,0 900,200 w10 top net A selected
  via 500,0 30/15 net A selected
)";
constexpr const char* kHoles =
    "layers 4 ; via 0,0 30/15 selected ; pad 100,0 60x60 hole 30 selected ;"
    "pad 200,0 60x60 hole 30 selected";
// Teardrops at a pad of a component, at a via, at the second of two tracks, and too close to another net.
constexpr const char* kDrops = R"(
  component U at 0,0 { pad 0,0 60x60 round name 1 net A }
  region 20,-10 60,-5 60,5 20,10 top teardrop net A
  via 500,0 40/20 net A selected
  region 510,-10 550,-5 550,5 510,10 top teardrop net A
  track 1000,0 1200,0 w10 top net A
  track 1200,0 1200,200 w10 top net A
  region 1195,30 1205,30 1200,60 top teardrop net A
  region 2000,0 2050,0 2050,50 top teardrop net A
  fill 2000,0 2100,50 top net B
)";

// The name and type of an export, and a call of it, as `f`, with its arguments in their order. What shows the
// work is `seen`, which is the places of what is on the board when the call leaves it empty.
#define EXPORT(Name, text, expected, ...)                                 \
  {                                                                       \
    text, #Name, expected, [&](void* address) {                           \
      auto* const f = reinterpret_cast<decltype(&Ketril::Name)>(address); \
      [[maybe_unused]] auto* const b = board.Get();                       \
      [[maybe_unused]] auto* const v = View();                            \
      __VA_ARGS__;                                                        \
    }                                                                     \
  }

TEST_F(Exports, AreTheseAndNothingElseAndTakeTheirArgumentsInOrder) {
  std::string seen;
  const auto parameters = [&](const char16_t* text) { return Parameters(text); };
  const auto room = [&] { return Room(u"R", u"all", {2000, 3000, 2600, 3500}, true); };
  const auto rectangle =
      Parameters(u"Location1.x=20000000|Location1.y=30000000|Location2.x=21000000|Location2.y=35000000");
  const auto options = Editor::MakeHost<Editor::RoomArrangeOptions>();
  const auto library = Editor::MakeHost<Editor::Library>();
  for (const char16_t* name : {u"DIP8", u"QFN32"}) {
    library->components.push_back(Editor::MakeHost<Editor::LibComponent>());
    library->components.back()->data.pattern = name;
  }
  const auto forms = Editor::MakeHost<Editor::ReportForms>(u"Report");
  forms->Add({u"Text", Platform::ToUtf16(KETRIL_TEMPLATES "/report_csv.xsl"), true, false});
  const auto state = [&](auto* f) {
    LongBool enabled = 1, checked = 2, visible = 3;
    char16_t caption[] = u"Caption", image[] = u"Image";
    f(board.Get(), parameters(u"").Get(), enabled, checked, visible, caption, image);
    seen = std::to_string(enabled) + std::to_string(checked) + std::to_string(visible) + " " +
           Platform::ToUtf8(caption) + " " + Platform::ToUtf8(image);
  };
  // The designator moves, and in another call the comment: the places of both.
  const auto autoposition = [&](auto* f, bool skip_name) {
    f(board.Get(), eAutoPos_TopLeft, eAutoPos_BottomRight, skip_name, !skip_name);
    const auto* part = Tests::Find<Editor::Component>(*board);
    for (const Editor::Text* text : {part->NameText(), part->CommentText()})
      seen +=
          std::to_string(text->Bounds().x1 / 10000) + "," + std::to_string(text->Bounds().y1 / 10000) + " ";
  };
  const std::u16string places = File("places.txt");
  std::ofstream(folder_ / "places.txt") << "Norvan Studio Pick and Place Locations\nUnits used: mil\n\n"
                                           "Designator Layer Center-X Center-Y Rotation Comment\n"
                                           "B T 700 300 0 1k\n";
  const struct Row {
    const char *board, *name, *seen;
    std::function<void(void*)> call;
  } rows[] = {
    EXPORT(Tools_AutoPlaceAlignLeft, kParts, "A 110,120 10k 110,160 B 120,270 C 130,560", f(b, v)),
    EXPORT(Tools_AutoPlaceAlignRight, kParts, "A 740,120 10k 740,160 B 730,270 C 720,560", f(b, v)),
    EXPORT(Tools_AutoPlaceAlignTop, kParts, "A 110,580 10k 110,620 B 330,570 C 720,560", f(b, v)),
    EXPORT(Tools_AutoPlaceAlignBottom, kParts, "A 110,120 10k 110,160 B 330,130 C 720,140", f(b, v)),
    EXPORT(Tools_AutoPlaceCentreHoriziontal, kParts, "A 330,120 10k 330,160 B 330,270 C 330,560", f(b, v)),
    EXPORT(Tools_AutoPlaceCentreVertical, kParts, "A 110,270 10k 110,310 B 330,270 C 720,270", f(b, v)),
    EXPORT(Tools_AutoPlaceSpreadXComps, kParts, "A 110,120 10k 110,160 B 415,270 C 720,560", f(b, v)),
    EXPORT(Tools_AutoPlaceSpreadYComps, kParts, "A 110,120 10k 110,160 B 330,340 C 720,560", f(b, v)),
    EXPORT(Tools_AutoPlaceExpandXComps, kParts, "A 110,120 10k 110,160 B 430,270 C 920,560", f(b, v)),
    EXPORT(Tools_AutoPlaceExpandYComps, kParts, "A 110,120 10k 110,160 B 330,340 C 720,700", f(b, v)),
    EXPORT(Tools_AutoPlaceContractXComps, kParts, "A 110,120 10k 110,160 B 230,270 C 520,560", f(b, v)),
    EXPORT(Tools_AutoPlaceContractYComps, kParts, "A 110,120 10k 110,160 B 330,200 C 720,420", f(b, v)),
    EXPORT(Tools_AutoPlaceAlignLeftSideBySide, kClose, "A 110,120 B 140,130 C 130,560", f(b, v)),
    EXPORT(Tools_AutoPlaceAlignRightSideBySide, kClose, "A 110,120 B 80,130 C 90,560", f(b, v)),
    EXPORT(Tools_AutoPlaceAlignTopSideBySide, kClose, "A 110,120 B 330,110 C 350,60", f(b, v)),
    EXPORT(Tools_AutoPlaceAlignBottomSideBySide, kClose, "A 110,120 B 330,130 C 350,180", f(b, v)),
    EXPORT(Tools_AutoPlaceRunDialog, kParts, "A 110,120 10k 110,160 B 120,130 C 130,140",
           alignment = {eArrangeLeft, eArrangeBottom, false}, f(b, v)),
    EXPORT(Tools_RunArrange, kParts, "A 110,580 10k 110,620 B 330,570 C 720,560", f(b, v, eArrangeTop)),
    EXPORT(Tools_RunArrangeToRectangle, kParts, "A 2010,3420 10k 2010,3460 B 2080,3470 C 2030,3460",
           f(b, v, Mil(2000), Mil(3000), Mil(2100), Mil(3500))),
    EXPORT(Tools_AutoPlaceToRectangle, kParts, "A 2010,3420 10k 2010,3460 B 2080,3470 C 2030,3460",
           f(b, v, rectangle.Get())),
    EXPORT(Tools_RunArrangeToRoom, kParts, "A 2110,3480 10k 2110,3520 B 2080,3470 C 2030,3460 R 2000,3000",
           room(), f(b, v, u"R")),
    EXPORT(Tools_RunArrangeToRoomRule, kParts,
           "A 2110,3480 10k 2110,3520 B 2080,3470 C 2030,3460 R 2000,3000 done",
           const bool done = f(b, v, Probe<IPCB_Rule>(room()->AsInterface()).Get());
           seen = Places(*b) + (done ? " done" : "")),
    EXPORT(Tools_AutoPlaceToRoom, kParts, "A 2110,3480 10k 2110,3520 B 2080,3470 C 2030,3460 R 2000,3000",
           room(), f(b, v, parameters(u"RoomName=R").Get())),
    EXPORT(Tools_RunArrangeOutsideBoard, kParts, "A 50,830 10k 50,870 B 20,840 C 1040,40", f(b, v)),
    EXPORT(Tools_AutoPlaceOutsideBoard, kParts, "A 50,830 10k 50,870 B 20,840 C 1040,40", f(b, v)),
    EXPORT(Tools_RunRoomArrange, "", "R 50,60", options->SetState_OriginX(Mil(50)),
           options->SetState_OriginY(Mil(60)), room(), f(b, v, options.Get())),
    EXPORT(Tools_ArrangeRooms, "", "R 330,270", room(), f(b, v, parameters(u"").Get())),
    EXPORT(Tools_MoveAllCompsToGrid, kParts, "A 100,140 10k 100,180 B 300,280 C 700,560", f(b)),
    EXPORT(Tools_MoveAllRoomsToGrid, "", "R 2000,3010", room(), f(b)),
    EXPORT(Tools_CompGridCorrectUpX, "", "13000000", seen = std::to_string(f(b, 12345678))),
    EXPORT(Tools_CompGridCorrectDownX, "", "12000000", seen = std::to_string(f(b, 12345678))),
    EXPORT(Tools_CompGridCorrectUpY, "", "12600000", seen = std::to_string(f(b, 12345678))),
    EXPORT(Tools_CompGridCorrectDownY, "", "11900000", seen = std::to_string(f(b, 12345678))),
    EXPORT(Tools_ShoveComponents, kPair, "A 100,200 B 300,210", picks = {{80, 180}}, f(b, v)),
    EXPORT(Tools_AutopositionText, kParts, "100,140 15,125 100,140 -70,30 ", autoposition(f, false),
           autoposition(f, true)),
    EXPORT(Tools_PlaceFromFile, kParts, "A 110,120 10k 110,160 B 700,300 C 720,560", f(b, places)),
    EXPORT(Tools_SwapComponents, kPair, "A 130,210 B 100,200", f(b, v)),
    EXPORT(Tools_UnGroup, kPair, "Sure? 0 left", f(b, true, {eComponentObject}, u"Sure?"),
           seen = questions.back() + " " + Count(eComponentObject) + " left"),
    EXPORT(Tools_MakeMicrostripe, kCopper, "0 tracks, 3 regions",
           const TMicrostripeSettings settings{0.25, 0.75};
           f(b, &settings); seen = Count(eTrackObject) + " tracks, " + Count(eRegionObject) + " regions"),
    EXPORT(Tools_TearDrops, kCopper, "510", f(b, parameters(u"TeardropParam_FlagsEx=1000").Get()),
           seen = Drops()),
    EXPORT(Tools_LegacyTearDrops, kCopper, "4 tracks",
           f(b, parameters(u"Style=1|AllVias=True|Report=False").Get()),
           seen = Count(eTrackObject) + " tracks"),
    EXPORT(Tools_GetCurrentTeardropOptions, kCopper, "1000 30.000000", const TTeardropOptionsEx o = f(b);
           seen = std::to_string(o.Flags) + " " +
                  std::to_string(o.SizePercentArray[eTeardropObject_Via].Length)),
    EXPORT(Tools_ShowTearDropsForNet, kDrops, "20 510 1195 2000, drawn: ", f(b, board->FindNet(u"A"), false),
           seen = Drops() + ", drawn: " + Drops(true)),
    EXPORT(Tools_RemoveTearDropsFromPadVia, kDrops, "20 1195 2000",
           f(b, Tests::Find<Editor::Via>(*b)->AsInterface()), seen = Drops()),
    EXPORT(Tools_RemoveTearDropsFromComponent, kDrops, "510 1195 2000",
           f(b, Tests::Find<Editor::Component>(*b)->AsInterface()), seen = Drops()),
    EXPORT(Tools_RemoveTearDropsFromConnectedTracks, kDrops, "20 510 2000",
           f(b, Tests::Find<Editor::Track>(*b)->AsInterface()), seen = Drops()),
    EXPORT(Tools_RemoveTearDropsFromTouch, kDrops, "20 510 2000",
           f(b, Tests::Find<Editor::Track>(*b)->AsInterface()), seen = Drops()),
    EXPORT(Tools_RemoveTearDropsOnSelected, kDrops, "20 1195 2000", f(b), seen = Drops()),
    EXPORT(Tools_RemoveDropsViolation, kDrops, "20 510 1195", f(b), seen = Drops()),
    EXPORT(Tools_ApplyViaStitching, kCopper, "5 vias", f(b, v, parameters(u"").Get()),
           seen = Count(eViaObject) + " vias"),
    EXPORT(Tools_GetViaStitchingCommandState, "", "123 Caption Image", state(f)),
    EXPORT(Tools_ApplyViaShielding, kCopper, "28 vias", f(b, v, parameters(u"").Get()),
           seen = Count(eViaObject) + " vias"),
    EXPORT(Tools_GetViaShieldingCommandState, "", "123 Caption Image", state(f)),
    EXPORT(Tools_RemoveUnusedPads, kHoles, "1", f(b),
           seen = std::to_string(Tests::Find<Editor::Via>(*b)->data.remove_unused)),
    EXPORT(Tools_ReplaceSelectedPadsWithVias, kHoles, "0 pads", f(b), seen = Count(ePadObject) + " pads"),
    EXPORT(Tools_ReplaceSelectedViasWithPads, kHoles, "3 pads", f(b), seen = Count(ePadObject) + " pads"),
    EXPORT(Tools_ReportSpecs, kParts, "places.txt, specs.csv",
           f(parameters(u"BoardSpecs=True").Get(), b, forms.Get(), File("specs.txt")), seen = FileNames()),
    EXPORT(Tools_ReportNetlistStatus, kParts, "nets.csv, places.txt, specs.csv",
           f(b, File("nets.txt"), forms.Get()), seen = FileNames()),
    EXPORT(Tools_ReportPickNPlace, kParts, "\"Designator\",\"Pattern\",\"Mid X\"",
           f(b, File("pick.csv"), u"CSV"), seen = FirstLine("pick.csv").substr(0, 30)),
    EXPORT(Tools_CreateReportForComponent, kParts, "Component   : DIP8",
           f(b, File("part.txt"), library.Get()), seen = FirstLine("part.txt")),
    EXPORT(Tools_CreateReportForLibrary, kParts, "PCB Library : ", f(b, File("library.txt"), library.Get()),
           seen = FirstLine("library.txt")),
    EXPORT(Tools_DisplayReportFile, "", "IClient.RunProcess", Editor::HostGate::Arm(true),
           f(File("part.txt"), true), Editor::HostGate::Disarm(), seen = Editor::HostGate::Record().back()),
    EXPORT(GetMemoryInfo, "", "0 info", Ref<IServerMemoryInfo> info; seen = std::to_string(f(info));
           seen += (info ? " info" : "")),
    EXPORT(TMethodImplementationIntercept, "", "", f()),
    EXPORT(dbkFCallWrapperAddr, "", "null", seen = *f ? "set" : "null"),
  };
  std::set<std::string> expected;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    expected.insert(row.name);
    void* const address = dlsym(library_, row.name);
    ASSERT_NE(address, nullptr);
    Load(row.board);
    board->setup.grid_y = Mil(70);
    picks = {{330, 270}};
    seen.clear();
    row.call(address);
    EXPECT_EQ(seen.empty() ? Places(*board) : seen, row.seen);
  }
  EXPECT_EQ(expected.size(), 65u);
  Dl_info info{};
  ASSERT_NE(dladdr(dlsym(library_, "GetMemoryInfo"), &info), 0);
  const std::string command = std::string("nm -D --defined-only --format=just-symbols ") + info.dli_fname;
  const std::unique_ptr<FILE, int (*)(FILE*)> names(popen(command.c_str(), "r"), pclose);
  std::set<std::string> found;
  char line[1024];
  while (names && std::fgets(line, sizeof line, names.get())) {
    found.insert(std::string(line, std::string_view(line).find('\n')));
  }
  EXPECT_EQ(found, expected);
}

TEST_F(Exports, MemoryInfoGivesValues) {
  Ref<IServerMemoryInfo> info;
  ASSERT_EQ(Find<decltype(GetMemoryInfo)>("GetMemoryInfo")(info), 0);
  std::uint64_t allocated = 1, reserved = 0;
  std::int32_t wrappers = -1;
  EXPECT_EQ(info->GetState_AllocatedBytes(allocated), Status::Ok);
  EXPECT_EQ(info->GetState_ReservedBytes(reserved), Status::Ok);
  EXPECT_EQ(info->GetState_WrapperCount(wrappers), Status::Ok);
  EXPECT_GE(reserved, allocated);
  EXPECT_EQ(wrappers, 0);
}

TEST_F(Exports, AFailureReachesTheCallerAndLeavesNothingOpen) {
  auto* const replace =
      Find<decltype(Tools_ReplaceSelectedPadsWithVias)>("Tools_ReplaceSelectedPadsWithVias");
  replace(nullptr);
  for (const int k : {1, 2, 16, 24}) {  // the last ones when the pad is off the board already
    Load("pad 0,0 60x60 round hole 30 net A selected");
    const std::int32_t references = board->References();
    Editor::HostGate::Arm(false, k);
    EXPECT_THROW(replace(board.Get()), std::exception) << k;
    EXPECT_TRUE(Editor::HostGate::HasFailed()) << k;
    Editor::HostGate::Disarm();
    EXPECT_EQ(board->LiveIterators(), 0) << k;
    EXPECT_EQ(board->References(), references) << k;
  }
}

}  // namespace
}  // namespace Ketril
