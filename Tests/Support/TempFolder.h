// A folder for the files of one test, which nobody else's are in and which goes with the object.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "Platform/TempFiles.h"

namespace Ketril::Tests {

class TempFolder {
 public:
  TempFolder() : path_(Platform::MakeTempFile("ketril-test-")) {
    std::filesystem::remove(path_);
    std::filesystem::create_directory(path_);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  operator const std::filesystem::path&() const { return path_; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

// Empty for no such file.
inline std::string TextOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace Ketril::Tests
