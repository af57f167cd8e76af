#include "Platform/TempFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>

namespace Ketril::Platform {
namespace {

namespace fs = std::filesystem;

class TempFiles : public testing::Test {
 protected:
  TempFiles() : folder_(MakeTempFile("ketril-test-")) {
    fs::remove(folder_);
    fs::create_directory(folder_);
  }
  ~TempFiles() override { fs::remove_all(folder_); }

  fs::path File(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name) << text;
    return folder_ / name;
  }
  static std::string Read(const fs::path& path) {
    std::ifstream stream(path);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  std::ptrdiff_t Files() const { return std::distance(fs::directory_iterator(folder_), {}); }

  fs::path folder_;
};

TEST_F(TempFiles, TheTargetChangesOnCommitAndNotBefore) {
  const fs::path target = File("board", "old");
  fs::permissions(target, fs::perms{0640});
  {
    TReplacementFile abandoned(target);
    abandoned.Write("half");
  }
  EXPECT_EQ(Files(), 1);
  TReplacementFile file(target);
  file.Write("new ");
  file.Write("text");
  EXPECT_EQ(Read(target), "old");
  file.Commit();
  EXPECT_EQ(Read(target), "new text");
  EXPECT_EQ(fs::status(target).permissions(), fs::perms{0640});
  EXPECT_EQ(Files(), 1);
}

TEST_F(TempFiles, ANewFileHasThePermissionsOfANewFile) {
  TReplacementFile file(folder_ / "new");
  file.Commit();
  EXPECT_EQ(fs::status(folder_ / "new").permissions(), fs::status(File("plain", "")).permissions());
}

TEST_F(TempFiles, ALinkStaysALink) {
  File("board", "old");
  fs::create_symlink("board", folder_ / "link");
  TReplacementFile file(folder_ / "link");
  file.Write("new");
  file.Commit();
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_EQ(Read(folder_ / "board"), "new");
}

TEST_F(TempFiles, FailuresNameTheTargetAndLeaveNothing) {
  const struct {
    const char* name;
    fs::path target;
    std::errc error;
  } rows[] = {
      {"a folder", folder_, std::errc::is_a_directory},
      {"no such folder", folder_ / "none" / "board", std::errc::no_such_file_or_directory},
      {"a full disk", "/dev/full", std::errc::no_space_on_device},
  };
  for (const auto& row : rows) {
    try {
      TReplacementFile file(row.target);
      file.Write("text");
      file.Commit();
      ADD_FAILURE() << row.name;
    } catch (const fs::filesystem_error& error) {
      EXPECT_EQ(error.code(), std::make_error_code(row.error)) << row.name;
      EXPECT_EQ(error.path1(), row.target) << row.name;
    }
  }
  EXPECT_EQ(Files(), 0);
}

}  // namespace
}  // namespace Ketril::Platform
