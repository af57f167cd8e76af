// Runs a target over the files of a folder: `FuzzCorpus TARGET FOLDER`. What does not hold ends the program.
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" {
#define KETRIL_TARGET(name) int name(const std::uint8_t* data, std::size_t size);
#include "Targets.inc"
#undef KETRIL_TARGET
}

namespace {

struct Target {
  const char* name;
  int (*run)(const std::uint8_t* data, std::size_t size);
};
#define KETRIL_TARGET(name) {#name, name},
const Target kTargets[] = {
#include "Targets.inc"
};
#undef KETRIL_TARGET

int RunFolder(const Target& target, const char* folder) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::cout << entry.path().filename().string() << std::endl;
    target.run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    ++files;
  }
  if (files == 0) std::cerr << "no file is in " << folder << "\n";
  return files > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  for (const Target& target : kTargets) {
    if (argc == 3 && std::strcmp(argv[1], target.name) == 0) return RunFolder(target, argv[2]);
  }
  std::cerr << "usage: FuzzCorpus TARGET FOLDER\n";
  return 2;
}
