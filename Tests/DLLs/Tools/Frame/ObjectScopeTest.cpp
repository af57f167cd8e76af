#include "DLLs/Tools/Frame/ObjectScope.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "DLLs/Tools/Frame/PrimitivesLayerObject.h"
#include "DLLs/Tools/Frame/PrimitivesLibrary.h"

namespace Ketril::Tools {
namespace {

// Writes its name down when it is freed, and does what it was told to do then.
class TNoted : public TWrapper<TNoted, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  static TNoted* Make(std::string name) {
    TNoted* noted = Create(nullptr);
    noted->name_ = std::move(name);
    return noted;
  }
  void Clean() override {
    freed += name_;
    if (WhenFreed) WhenFreed();
  }
  std::function<void()> WhenFreed;
  static inline std::string freed;

 private:
  std::string name_;
};

class ObjectScope : public testing::Test {
 protected:
  ObjectScope() { TNoted::freed.clear(); }
  ~ObjectScope() override {
    EXPECT_EQ(ObjectScopeDepth, 0);
    EXPECT_FALSE(ObjectScopeClosing);
    EXPECT_TRUE(!PrimitiveRegistry && !LibraryRegistry && !LayerObjectRegistry && !NetMap);
  }
};

TEST_F(ObjectScope, OnlyTheOutermostEndFreesAndInTheOrderOfMaking) {
  BeginObjectScope();
  TNoted::Make("a");
  BeginObjectScope();
  TNoted::Make("b");
  new TLayerObject(nullptr);
  new TPCBComponentLibrary(nullptr);
  EndObjectScope();
  EXPECT_EQ(TNoted::freed, "");
  EXPECT_EQ(PrimitiveRegistry->size(), 2u);
  EndObjectScope();
  EXPECT_EQ(TNoted::freed, "ab");
}

TEST_F(ObjectScope, AWrapperMadeOutsideBelongsToItsMaker) {
  TNoted* outside = TNoted::Make("o");
  TLayerObject layer_object(nullptr);
  {
    const TObjectScope scope;
    TNoted::Make("i");
  }
  EXPECT_EQ(TNoted::freed, "i");
  outside->Free();
  EXPECT_EQ(TNoted::freed, "io");
}

TEST_F(ObjectScope, FreeingEarlyTakesTheOneEntryOut) {
  {
    const TObjectScope scope;
    TNoted* a = TNoted::Make("a");
    TNoted* b = TNoted::Make("b");
    TNoted* c = TNoted::Make("c");
    b->Free();
    EXPECT_EQ(*PrimitiveRegistry, (std::vector<TPrimitive*>{a, c}));
    delete new TLayerObject(nullptr);
    delete new TPCBComponentLibrary(nullptr);
    EXPECT_TRUE(LayerObjectRegistry->empty() && LibraryRegistry->empty());
  }
  EXPECT_EQ(TNoted::freed, "bac");
}

TEST_F(ObjectScope, AWrapperFreedByAnotherWhileClosingIsFreedOnce) {
  {
    const TObjectScope scope;
    TNoted* a = TNoted::Make("a");
    TNoted* b = TNoted::Make("b");
    TNoted::Make("c");
    a->WhenFreed = [b] { b->Free(); };
    b->WhenFreed = [] { TNoted::Make("n")->Free(); };
  }
  EXPECT_EQ(TNoted::freed, "abnc");
}

TEST_F(ObjectScope, AnExportThatRunsWhileClosingSharesTheScope) {
  {
    const TObjectScope scope;
    TNoted::Make("a")->WhenFreed = [] {
      const TObjectScope nested;
      TNoted::Make("n");
      TNoted::Make("m");
    };
    TNoted::Make("b");
  }
  EXPECT_EQ(TNoted::freed, "abnm");
}

TEST_F(ObjectScope, AnEndWithoutABeginLeavesTheNextScopeWhole) {
  EndObjectScope();
  BeginObjectScope();
  TNoted::Make("a");
  BeginObjectScope();
  EndObjectScope();
  EXPECT_EQ(TNoted::freed, "");
  EndObjectScope();
  EXPECT_EQ(TNoted::freed, "a");
}

}  // namespace
}  // namespace Ketril::Tools
