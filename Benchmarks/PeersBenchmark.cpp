// Whole processes that read a board, and that read it, add teardrops and save it: our command beside the open
// board programs of this machine, in one run.
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

enum class Kind { Plain, OnVias, OnPads };

std::string TextOf(Kind kind, std::int64_t tracks) {
  if (kind == Kind::Plain) return SyntheticBoard(tracks);
  return BoardOfTrackEnds(tracks, kind == Kind::OnVias ? TrackEnd::Via : TrackEnd::Pad);
}

// A board file of its own for each kind and size, removed at the end of the run.
fs::path BoardFileOf(Kind kind, std::int64_t tracks) {
  struct Folder {
    fs::path path = fs::temp_directory_path() / ("ketril-peers-" + std::to_string(std::random_device{}()));
    Folder() { fs::create_directories(path); }
    ~Folder() { fs::remove_all(path); }
  };
  static const Folder folder;
  const fs::path path =
      folder.path / (std::to_string(static_cast<int>(kind)) + "-" + std::to_string(tracks) + ".kicad_pcb");
  if (!fs::exists(path)) std::ofstream(path) << TextOf(kind, tracks);
  return path;
}

void Replace(std::string& text, const std::string& word, const std::string& by) {
  for (std::size_t at; (at = text.find(word)) != std::string::npos;) text.replace(at, word.size(), by);
}

// `command` with the path of the board for each "BOARD" and that of a new file for "OUT", its output dropped.
void RunProgram(benchmark::State& state, const std::string& program, std::string command,
                Kind kind = Kind::Plain) {
  if (std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) != 0) {
    state.SkipWithError((program + " is not installed").c_str());
    return;
  }
  const std::string path = BoardFileOf(kind, state.range(0)).string();
  Replace(command, "BOARD", path);
  Replace(command, "OUT", path + ".out");
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

std::string Ketril() {
  const char* command = std::getenv("KETRIL_COMMAND");
  return command ? command : "ketril";
}

void Ketril_info(benchmark::State& state) {
  RunProgram(state, Ketril(), "'" + Ketril() + "' info BOARD");
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

// Ours checks clearances and takes off what breaks them; the other's teardrops are two arcs without a check.
template <Kind kind>
void Ketril_teardrops(benchmark::State& state) {
  RunProgram(state, Ketril(), "'" + Ketril() + "' tear-drops BOARD -D TeardropParam_FlagsEx=1000 -y -o OUT",
             kind);
}
template <Kind kind>
void PcbRnd_teardrops(benchmark::State& state) {
  RunProgram(state, "pcb-rnd",
             "printf 'Teardrops()\\nSaveTo(LayoutAs, OUT, kicad)\\nQuit()\\n' | pcb-rnd --gui batch BOARD",
             kind);
}
BENCHMARK(Ketril_teardrops<Kind::OnVias>)->Apply(Sizes);
BENCHMARK(PcbRnd_teardrops<Kind::OnVias>)->Apply(Sizes);
BENCHMARK(Ketril_teardrops<Kind::OnPads>)->Apply(Sizes);
BENCHMARK(PcbRnd_teardrops<Kind::OnPads>)->Apply(Sizes);

}  // namespace
}  // namespace Ketril::Benchmarks
