// A folder for the files that a target writes, thousands a second.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Fuzz/Support/Check.h"

namespace Ketril::Fuzz {

// One for the process, in memory where the system has a folder for that. It is gone when the program ends as
// it should.
inline const std::filesystem::path& Folder() {
  struct Made {
    Made() {
      const std::filesystem::path memory = "/dev/shm";
      std::string name =
          ((std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
           "ketril-fuzz-XXXXXX")
              .string();
      Check(::mkdtemp(name.data()) != nullptr, "a folder can be made");
      path = name;
    }
    ~Made() {
      std::error_code error;
      std::filesystem::remove_all(path, error);
    }
    std::filesystem::path path;
  };
  static const Made made;
  return made.path;
}

inline std::filesystem::path WriteFile(const char* name, const std::string& bytes) {
  std::filesystem::path file = Folder() / name;
  std::ofstream(file, std::ios::binary) << bytes;
  return file;
}

}  // namespace Ketril::Fuzz
