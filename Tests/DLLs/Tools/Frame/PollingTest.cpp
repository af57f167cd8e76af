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
  }

  // A letter a message: p paint, A to D keys, e and E ESC, u the release of ESC; capitals B and E with Alt.
  void Post(const std::string& letters) {
    for (const char c : letters) {
      const bool alt = c == 'B' || c == 'E';
      const std::uint32_t kind = c == 'p' ? kPaint : c == 'u' ? WM_KEYUP : alt ? WM_SYSKEYDOWN : WM_KEYDOWN;
      const bool escape = c == 'e' || c == 'E' || c == 'u';
      PostMessage({.Window = window_, .Kind = kind, .WParam = escape ? +VK_ESCAPE : 'A', .LParam = c});
    }
  }
  static std::string TakeTheRest() {
    std::string rest;
    while (const auto message = PeekMessage()) rest += static_cast<char>(message->LParam);
    return rest;
  }

  std::string delivered_;
  int questions_ = 0;
  TDialogAnswer answer_ = TDialogAnswer::No;
  std::uintptr_t window_ = CreateWindow([this](const TMessage& m) { delivered_ += char(m.LParam); });
};

TEST_F(Polling, TakesDropsDeliversAndAsks) {
  using enum TDialogAnswer;
  const struct {
    const char* name;
    bool narrow;
    const char* posted;
    TDialogAnswer answer;
    const char* delivered;
    int questions;
    const char* left;
    bool aborted_before = false;
  } rows[] = {
      {"keys are dropped", false, "AB", No, "", 0, ""},
      {"all else is delivered, also a key's release", false, "pup", No, "pup", 0, ""},
      {"No: the key reaches its window, the poll goes on", false, "pep", No, "pep", 1, ""},
      {"no answer is a No", false, "E", Cancelled, "E", 1, ""},
      {"Yes: not asked again, nothing more is touched", false, "Eep", Yes, "", 1, "ep"},
      {"aborted before: nothing is touched", false, "ep", Yes, "", 0, "ep", true},
      {"narrow: plain keys first, the rest stays", true, "pBC", No, "CB", 0, "p"},
      {"narrow: No", true, "eA", No, "A", 1, ""},
      {"narrow: Yes", true, "EA", Yes, "A", 1, ""},
      {"narrow: Yes, nothing more is touched", true, "eA", Yes, "", 1, "A"},
      {"narrow: aborted before", true, "e", Yes, "", 0, "e", true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    delivered_.clear();
    questions_ = 0;
    answer_ = row.answer;
    ToolAborted = row.aborted_before;
    const std::int64_t beeps_before = BeepCount();
    Post(row.posted);
    if (row.narrow) {
      CheckShoveAbort();
    } else {
      EXPECT_EQ(CheckAbort(ToolAborted), row.aborted_before);
    }
    EXPECT_EQ(delivered_, row.delivered);
    EXPECT_EQ(questions_, row.questions);
    EXPECT_EQ(ToolAborted, row.answer == Yes);
    EXPECT_EQ(TakeTheRest(), row.left);
    EXPECT_EQ(BeepCount() - beeps_before, row.narrow ? delivered_.size() : 0);
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
    Post("p");
    EXPECT_FALSE(CheckAbort(ToolAborted));
    EXPECT_EQ(ObjectScopeDepth, 1);
    EXPECT_EQ(*PrimitiveRegistry, (std::vector<TPrimitive*>{board, nested_boards.at(0)}));
  };
  RunTool<kStandard>(tool, nullptr);
  EXPECT_EQ(TakeTheRest(), "p");
  EXPECT_EQ(ObjectScopeDepth, 0);
  DestroyWindow(window);
}

}  // namespace
}  // namespace Ketril::Tools
