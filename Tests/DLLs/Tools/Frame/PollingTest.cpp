#include "DLLs/Tools/Frame/Polling.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DLLs/Tools/Frame/ToolFrame.h"
#include "Platform/Dialogs.h"
#include "Platform/Messages.h"

namespace Ketril::Tools {
namespace {

using namespace Platform;

constexpr std::uint32_t kPaint = 0x000F;
using Keys = std::vector<std::uint64_t>;

struct Post {
  std::uint32_t kind;
  std::uint64_t key;
};

// A window that notes what reaches it, and a user who gives the same answer to every question.
class Polling : public testing::Test {
 protected:
  Polling() {
    SetDialogProvider([this](const std::u16string& text, TDialogKind kind, TDialogButtons buttons) {
      EXPECT_EQ(text, u"Confirm Abort Process");
      EXPECT_TRUE(kind == TDialogKind::Confirmation && buttons == TDialogButtons::YesNo);
      ++questions_;
      return answer_;
    });
    ToolAborted = false;
  }
  ~Polling() override {
    DestroyWindow(window_);
    SetDialogProvider(nullptr);
    ToolAborted = false;
    while (PeekMessage()) {
    }
  }

  void PostAll(const std::vector<Post>& posts) {
    for (const Post& post : posts) PostMessage({.Window = window_, .Kind = post.kind, .WParam = post.key});
  }
  static int Left() {
    int left = 0;
    while (PeekMessage()) ++left;
    return left;
  }

  Keys delivered_;
  int questions_ = 0;
  TDialogAnswer answer_ = TDialogAnswer::No;
  std::uintptr_t window_ = CreateWindow([this](const TMessage& m) { delivered_.push_back(m.WParam); });
};

TEST_F(Polling, TakesDropsDeliversAndAsks) {
  constexpr std::uint64_t kEsc = VK_ESCAPE;
  const struct {
    const char* name;
    bool narrow;
    std::vector<Post> posts;
    TDialogAnswer answer;
    bool aborted_before;
    // What is expected.
    Keys delivered;
    int questions;
    bool aborted_after;
    int left, beeps;
  } rows[] = {
      {"keys are dropped",
       false,
       {{WM_KEYDOWN, 'A'}, {WM_SYSKEYDOWN, 'B'}},
       TDialogAnswer::No,
       false,
       {},
       0,
       false,
       0,
       0},
      {"all else is delivered, also a key's release",
       false,
       {{kPaint, 1}, {WM_KEYUP, kEsc}, {kPaint, 2}},
       TDialogAnswer::No,
       false,
       {1, kEsc, 2},
       0,
       false,
       0,
       0},
      {"No: the key reaches its window, and the poll goes on",
       false,
       {{kPaint, 1}, {WM_KEYDOWN, kEsc}, {kPaint, 2}},
       TDialogAnswer::No,
       false,
       {1, kEsc, 2},
       1,
       false,
       0,
       0},
      {"no answer is a No",
       false,
       {{WM_KEYDOWN, kEsc}},
       TDialogAnswer::Cancelled,
       false,
       {kEsc},
       1,
       false,
       0,
       0},
      {"Yes: not asked again, nothing more is touched",
       false,
       {{WM_SYSKEYDOWN, kEsc}, {WM_KEYDOWN, kEsc}, {kPaint, 1}},
       TDialogAnswer::Yes,
       false,
       {},
       1,
       true,
       2,
       0},
      {"aborted before: nothing is touched",
       false,
       {{WM_KEYDOWN, kEsc}, {kPaint, 1}},
       TDialogAnswer::Yes,
       true,
       {},
       0,
       true,
       2,
       0},
      {"narrow: plain keys first, each delivered with a beep, the rest stays",
       true,
       {{kPaint, 1}, {WM_SYSKEYDOWN, 'A'}, {WM_KEYDOWN, 'B'}},
       TDialogAnswer::No,
       false,
       {'B', 'A'},
       0,
       false,
       1,
       2},
      {"narrow: No", true, {{WM_KEYDOWN, kEsc}}, TDialogAnswer::No, false, {}, 1, false, 0, 0},
      {"narrow: Yes",
       true,
       {{WM_KEYDOWN, kEsc}, {WM_KEYDOWN, 'A'}},
       TDialogAnswer::Yes,
       false,
       {},
       1,
       true,
       1,
       0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    delivered_.clear();
    questions_ = 0;
    answer_ = row.answer;
    ToolAborted = row.aborted_before;
    const std::int64_t beeps_before = BeepCount();
    PostAll(row.posts);
    if (row.narrow) {
      CheckShoveAbort();
    } else {
      EXPECT_EQ(CheckAbort(ToolAborted), row.aborted_before);
    }
    EXPECT_EQ(delivered_, row.delivered);
    EXPECT_EQ(questions_, row.questions);
    EXPECT_EQ(ToolAborted, row.aborted_after);
    EXPECT_EQ(Left(), row.left);
    EXPECT_EQ(BeepCount() - beeps_before, row.beeps);
  }
}

TEST_F(Polling, AnExportCalledFromADeliveredMessageSharesTheScopeAndMayAbort) {
  std::vector<TPrimitive*> nested_boards;
  const auto nested_tool = [&](TBoard* board) {
    nested_boards.push_back(board);
    ToolAborted = true;
  };
  const std::uintptr_t window =
      CreateWindow([&](const TMessage&) { RunTool<kStandard>(nested_tool, nullptr); });
  const auto tool = [&](TBoard* board) {
    PostMessage({.Window = window, .Kind = kPaint});
    PostMessage({.Window = window, .Kind = kPaint});
    EXPECT_FALSE(CheckAbort(ToolAborted));
    EXPECT_EQ(ObjectScopeDepth, 1);
    EXPECT_EQ(*PrimitiveRegistry, (std::vector<TPrimitive*>{board, nested_boards.at(0)}));
  };
  RunTool<kStandard>(tool, nullptr);
  EXPECT_EQ(Left(), 1);
  EXPECT_EQ(ObjectScopeDepth, 0);
  DestroyWindow(window);
}

}  // namespace
}  // namespace Ketril::Tools
