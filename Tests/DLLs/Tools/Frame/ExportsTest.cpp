// The built library, as an editor sees it: what it exports, called through names.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "Editor/Client/Client.h"
#include "Editor/HostCall.h"
#include "Interfaces/Tools.h"
#include "Tests/Support/BoardFromText.h"

namespace Ketril {
namespace {

class Exports : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(library_) << dlerror(); }

  template <class Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(dlsym(library_, name));
  }

  // Stays loaded, as in an editor.
  void* library_ = dlopen(KETRIL_TOOLS_LIBRARY, RTLD_NOW | RTLD_LOCAL);
};

TEST_F(Exports, AreTheseAndNothingElse) {
  const std::set<std::string> expected = {
      "GetMemoryInfo",
      "TMethodImplementationIntercept",
      "Tools_ApplyViaShielding",
      "Tools_ApplyViaStitching",
      "Tools_ArrangeRooms",
      "Tools_AutoPlaceAlignBottom",
      "Tools_AutoPlaceAlignBottomSideBySide",
      "Tools_AutoPlaceAlignLeft",
      "Tools_AutoPlaceAlignLeftSideBySide",
      "Tools_AutoPlaceAlignRight",
      "Tools_AutoPlaceAlignRightSideBySide",
      "Tools_AutoPlaceAlignTop",
      "Tools_AutoPlaceAlignTopSideBySide",
      "Tools_AutoPlaceCentreHoriziontal",
      "Tools_AutoPlaceCentreVertical",
      "Tools_AutoPlaceContractXComps",
      "Tools_AutoPlaceContractYComps",
      "Tools_AutoPlaceExpandXComps",
      "Tools_AutoPlaceExpandYComps",
      "Tools_AutoPlaceOutsideBoard",
      "Tools_AutoPlaceRunDialog",
      "Tools_AutoPlaceSpreadXComps",
      "Tools_AutoPlaceSpreadYComps",
      "Tools_AutoPlaceToRectangle",
      "Tools_AutoPlaceToRoom",
      "Tools_AutopositionText",
      "Tools_CompGridCorrectDownX",
      "Tools_CompGridCorrectDownY",
      "Tools_CompGridCorrectUpX",
      "Tools_CompGridCorrectUpY",
      "Tools_MoveAllCompsToGrid",
      "Tools_MoveAllRoomsToGrid",
      "Tools_ShoveComponents",
      "Tools_RunArrange",
      "Tools_RunArrangeOutsideBoard",
      "Tools_RunArrangeToRectangle",
      "Tools_RunArrangeToRoom",
      "Tools_RunArrangeToRoomRule",
      "Tools_RunRoomArrange",
      "Tools_PlaceFromFile",
      "Tools_SwapComponents",
      "Tools_CreateReportForComponent",
      "Tools_CreateReportForLibrary",
      "Tools_DisplayReportFile",
      "Tools_GetCurrentTeardropOptions",
      "Tools_GetViaShieldingCommandState",
      "Tools_LegacyTearDrops",
      "Tools_RemoveTearDropsFromComponent",
      "Tools_RemoveTearDropsFromConnectedTracks",
      "Tools_RemoveTearDropsFromPadVia",
      "Tools_RemoveTearDropsFromTouch",
      "Tools_ShowTearDropsForNet",
      "Tools_GetViaStitchingCommandState",
      "Tools_MakeMicrostripe",
      "Tools_RemoveDropsViolation",
      "Tools_RemoveTearDropsOnSelected",
      "Tools_RemoveUnusedPads",
      "Tools_ReportNetlistStatus",
      "Tools_ReportPickNPlace",
      "Tools_ReportSpecs",
      "Tools_ReplaceSelectedPadsWithVias",
      "Tools_ReplaceSelectedViasWithPads",
      "Tools_TearDrops",
      "Tools_UnGroup",
      "dbkFCallWrapperAddr",
  };
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
  const Editor::ClientInstallation installation(Editor::MakeHost<Editor::Client>(Editor::ClientSetup{}));
  for (const int k : {1, 2, 16, 24}) {  // the last ones when the pad is off the board already
    const Ref<Editor::Board> board = Tests::BoardFromText("pad 0,0 60x60 round hole 30 net A selected");
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
