// Reading a board in whole processes: our command beside the open board programs of this machine, in one run.
// What a program needs to start is told by the board of one track; a program that is not installed is passed
// over. Set KETRIL_COMMAND to the command measured; without it, `ketril` is taken from the path.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "Benchmarks/SyntheticBoard.h"

namespace Ketril::Benchmarks {
namespace {

namespace fs = std::filesystem;

// A board file of its own for each size, removed at the end of the run.
fs::path BoardFileOf(std::int64_t tracks) {
  struct Folder {
    fs::path path = fs::temp_directory_path() / ("ketril-peers-" + std::to_string(std::random_device{}()));
    Folder() { fs::create_directories(path); }
    ~Folder() { fs::remove_all(path); }
  };
  static const Folder folder;
  const fs::path path = folder.path / (std::to_string(tracks) + ".kicad_pcb");
  if (!fs::exists(path)) std::ofstream(path) << SyntheticBoard(tracks);
  return path;
}

// `command` with the path of the board for each "BOARD", its output dropped.
void RunProgram(benchmark::State& state, const std::string& program, std::string command) {
  if (std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) != 0) {
    state.SkipWithError((program + " is not installed").c_str());
    return;
  }
  const std::string path = BoardFileOf(state.range(0)).string();
  for (std::size_t at; (at = command.find("BOARD")) != std::string::npos;) command.replace(at, 5, path);
  command = "(" + command + ") >/dev/null 2>&1";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) {
      state.SkipWithError("the program failed");
      return;
    }
  }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1)->Arg(10000)->Arg(50000)->UseRealTime()->Unit(benchmark::kMillisecond);
}

void Ketril_info(benchmark::State& state) {
  const char* command = std::getenv("KETRIL_COMMAND");
  const std::string ketril = command ? command : "ketril";
  RunProgram(state, ketril, "'" + ketril + "' info BOARD");
}
BENCHMARK(Ketril_info)->Apply(Sizes);

void PcbRnd_load(benchmark::State& state) {
  RunProgram(state, "pcb-rnd", "echo 'Quit()' | pcb-rnd --gui batch BOARD");
}
BENCHMARK(PcbRnd_load)->Apply(Sizes);

// The module belongs to the system's own Python.
void KiCad_load(benchmark::State& state) {
  RunProgram(state, "/usr/bin/python3",
             "/usr/bin/python3 -c \"import pcbnew; pcbnew.LoadBoard('BOARD').GetTracks()\"");
}
BENCHMARK(KiCad_load)->Apply(Sizes);

}  // namespace
}  // namespace Ketril::Benchmarks
