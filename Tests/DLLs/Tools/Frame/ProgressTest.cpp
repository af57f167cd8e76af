#include "DLLs/Tools/Frame/Progress.h"

#include <gtest/gtest.h>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Frame/ToolFrame.h"
#include "Editor/HostCall.h"
#include "Editor/Model/Board.h"

namespace Ketril::Tools {
namespace {

TEST(Progress, ShowsTheStepsAndEndsWhateverHappens) {
  const Ref<Editor::Board> board = Editor::MakeHost<Editor::Board>();
  Editor::ProgressState last, at_end;
  Editor::SetProgressSink(
      [&](const Editor::ProgressState& state) { (state.running ? last : at_end) = state; });
  const auto run = [&](auto item) {
    RunTool<kStandard>(
        [&](TBoard* wrapper) {
          TProgress progress(wrapper, u"Working (ESC to abort)");
          progress.SetMaximum(2);
          progress.Step();
          item();
          progress.Step();
        },
        board.Get());
  };
  run([] {});
  EXPECT_EQ(last.caption, u"Working (ESC to abort)");
  EXPECT_TRUE(last.can_cancel && !at_end.running);
  EXPECT_EQ(last.maximum, 2);
  EXPECT_EQ(last.position, 2);

  EXPECT_THROW(run([] { throw ENotImplementedException(); }), ENotImplementedException);
  EXPECT_EQ(last.position, 1);
  EXPECT_FALSE(board->progress->IsOpen());

  EXPECT_THROW(run([] { Editor::HostGate::Arm(false, 2); }), EHostError);  // the end itself fails
  Editor::HostGate::Disarm();
  EXPECT_EQ(ObjectScopeDepth, 0);
  Editor::SetProgressSink(nullptr);
}

}  // namespace
}  // namespace Ketril::Tools
