#include "DLLs/Tools/Frame/ToolFrame.h"

#include <gtest/gtest.h>

#include <string>

#include "DLLs/Tools/Frame/CountedObject.h"
#include "DLLs/Tools/Frame/Exceptions.h"

namespace Ketril::Tools {
namespace {

int live_views = 0;

struct View final : CountedObject<IServerDocumentView> {
  View() { ++live_views; }
  ~View() override { --live_views; }
  Status GetState_ViewName(std::u16string& value) noexcept override {
    value = u"view";
    return Status::Ok;
  }
  Status GetState_OwnerDocument(Ref<IServerDocument>&) noexcept override { return Status::Ok; }
};

TEST(ToolFrame, HoldsItsArgumentsForTheLengthOfTheCall) {
  Ref<View> view = MakeCounted<View>();
  std::u16string text = u"text";
  const auto tool = [&](TBoard*, IServerDocumentView* held_view, const std::u16string& held_text, bool flag) {
    view = nullptr;  // what an editor's code may do that a delivered message runs
    text.clear();
    EXPECT_EQ(On(Ref(held_view)).Read(&IServerDocumentView::GetState_ViewName), u"view");
    return held_text.size() + flag;
  };
  IServerDocumentView* const borrowed = view.Get();
  EXPECT_EQ(RunTool<kStandard>(tool, nullptr, borrowed, text, true), 5u);
  EXPECT_EQ(live_views, 0);
}

TEST(ToolFrame, AnExceptionClosesTheScopeAndReachesTheCaller) {
  Ref<View> view = MakeCounted<View>();
  IServerDocumentView* const borrowed = view.Get();
  const auto tool = [&](TBoard* board, IServerDocumentView*) {
    EXPECT_EQ(PrimitiveRegistry->size(), 1u);
    TPrimitive::Create(nullptr);
    board->SetState_DocumentHasChanged();  // there is no board behind it
  };
  EXPECT_THROW(RunTool<kStandard>(tool, nullptr, borrowed), EEmptyReference);
  EXPECT_EQ(ObjectScopeDepth, 0);
  EXPECT_EQ(PrimitiveRegistry, nullptr);
  view = nullptr;
  EXPECT_EQ(live_views, 0);
}

}  // namespace
}  // namespace Ketril::Tools
