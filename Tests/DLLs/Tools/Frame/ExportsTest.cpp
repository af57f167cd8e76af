// The built library, as an editor sees it: what it exports, called through names.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Interfaces/Tools.h"

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
  void* library_ = dlopen("libKetrilTools.so", RTLD_NOW | RTLD_LOCAL);
};

TEST_F(Exports, AreTheseAndNothingElse) {
  const std::set<std::string> expected = {
      "GetMemoryInfo",
      "TMethodImplementationIntercept",
      "Tools_ReplaceSelectedPadsWithVias",
      "Tools_ReplaceSelectedViasWithPads",
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

TEST_F(Exports, MemoryInfoIsReadWhenItIsAsked) {
  auto* const get = Find<decltype(GetMemoryInfo)>("GetMemoryInfo");
  Ref<IServerMemoryInfo> info;
  ASSERT_EQ(get(info), 0);
  std::uint64_t before = 0, after = 0, reserved = 0;
  std::int32_t wrappers = -1;
  EXPECT_EQ(info->GetState_AllocatedBytes(before), Status::Ok);
  EXPECT_EQ(info->GetState_WrapperCount(wrappers), Status::Ok);
  EXPECT_EQ(wrappers, 0);
  static std::vector<char> block;  // static: nothing may optimise it away
  block.resize(8 << 20);
  EXPECT_EQ(info->GetState_AllocatedBytes(after), Status::Ok);
  EXPECT_EQ(info->GetState_ReservedBytes(reserved), Status::Ok);
  EXPECT_GE(reserved, after);
#if !defined(__SANITIZE_ADDRESS__)  // which has a heap of its own
  EXPECT_GE(after - before, block.size());
#endif
}

}  // namespace
}  // namespace Ketril
