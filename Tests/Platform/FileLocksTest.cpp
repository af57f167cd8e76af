#include "Platform/FileLocks.h"

#include <gtest/gtest.h>

#include <fstream>

#include "Platform/TempFiles.h"
#include "Platform/Text.h"

namespace Ketril::Platform {
namespace {

TEST(FileLocks, OthersHoldAFileWithAllThreeNames) {
  const std::filesystem::path file = MakeTempFile("ketril-lock-");
  const std::filesystem::path lock = LockFileOf(file);
  EXPECT_EQ(lock.filename().string(), "~$" + file.filename().string() + "_loc");
  const auto holder = [&](const std::string& text) {
    std::ofstream(lock) << text;
    const auto found = LockOfOthers(file);
    return found ? found->User : u"nobody";
  };
  EXPECT_FALSE(LockOfOthers(file));
  EXPECT_EQ(holder("ComputerName=bench\r\nUserName=eve\r\nProcessID=12\r\n"), u"eve");
  EXPECT_EQ(holder("ProcessID 12\nUserName:bob\nComputerName bench\nother"), u"bob");
  EXPECT_EQ(holder("ComputerName=bench\nUserName=eve\n"), u"nobody");
  EXPECT_EQ(holder("ComputerName=bench\nUserName=\nProcessID=12"), u"nobody");
  EXPECT_EQ(holder(""), u"nobody");

  const TFileLock own = OwnLock();
  const std::string own_names = "ComputerName=" + ToUtf8(AsciiUpper(own.Computer)) +
                                "\nUserName=" + ToUtf8(AsciiUpper(own.User)) + "\nProcessID=";
  EXPECT_EQ(holder(own_names + ToUtf8(own.Process)), u"nobody");
  EXPECT_EQ(holder(own_names + ToUtf8(own.Process) + "0"), AsciiUpper(own.User));
  std::filesystem::remove(lock);
  std::filesystem::create_directory(lock);
  EXPECT_FALSE(LockOfOthers(file));
  std::filesystem::remove(lock);
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace Ketril::Platform
