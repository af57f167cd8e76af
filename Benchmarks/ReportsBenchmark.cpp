// The board information report on boards of up to a million objects and with many sizes of holes, and the
// walk of the pick-and-place file.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "Benchmarks/SyntheticBoard.h"
#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Client/ReportForms.h"
#include "Editor/Files/BoardFile.h"
#include "Interfaces/Tools.h"
#include "Platform/TempFiles.h"

namespace Ketril::Benchmarks {
namespace {

using benchmark::Counter;
using Editor::Board;

Counter PerObject(double count) {
  return Counter(count, Counter::kIsIterationInvariantRate | Counter::kInvert);
}

Ref<IParameterList> Chosen(std::initializer_list<TBoardReportOption> options) {
  const Ref<Editor::Parameters> list = Editor::MakeHost<Editor::Parameters>();
  for (const TBoardReportOption option : options)
    list->AddParameter(kBoardReportOptionTexts[option].Name, u"True");
  return Ref<IParameterList>(list.Get());
}

// All but the filter for selected objects, which would leave nothing to count; without what the editor
// measures, the copper, if asked.
Ref<IParameterList> Everything(bool with_copper) {
  const Ref<Editor::Parameters> list = Editor::MakeHost<Editor::Parameters>();
  for (int i = 0; i < kBoardReportOptionCount; ++i) {
    const bool is_off =
        i == eBoardReportOption_SelectedObjects || (i == eBoardReportOption_CopperArea && !with_copper);
    list->AddParameter(kBoardReportOptionTexts[i].Name, is_off ? u"False" : u"True");
  }
  return Ref<IParameterList>(list.Get());
}

// The tool on a board, with a client, and a file of its own for the report, as XML.
class Run {
 public:
  explicit Run(const std::string& text) : board_(Editor::ReadBoardText(text, "")) {
    forms_->Add({});
    board_->file.path = file_.string();
  }
  ~Run() {
    Tools::ReleasePCBServer();
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
    std::filesystem::remove(std::filesystem::path(file_).replace_extension("xml"), ignored);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  Board& Of() { return *board_; }
  void Report(const Ref<IParameterList>& options) {
    Tools_ReportSpecs(options.Get(), board_.Get(), forms_.Get(), file_.u16string());
  }

 private:
  const std::filesystem::path file_ = Platform::MakeTempFile("ketril-bench-");
  const Editor::ClientInstallation installation_{Editor::MakeHost<Editor::Client>(Editor::ClientSetup{})};
  const Ref<Editor::ReportForms> forms_ = Editor::MakeHost<Editor::ReportForms>(u"board");
  Ref<Board> board_;
};

// Four tracks and a via each.
template <bool with_copper>
void BoardReport(benchmark::State& state) {
  Run run(SyntheticBoard(state.range(0) * 4 / 5));
  for (auto _ : state) run.Report(Everything(with_copper));
  state.counters["time/object"] = PerObject(static_cast<double>(state.range(0)));
}
void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(BoardReport<true>)->Name("BoardReport")->Apply(Sizes);
BENCHMARK(BoardReport<false>)->Name("BoardReportWithoutCopper")->Apply(Sizes);

// 10,000 vias of so many sizes of holes.
void HolesOfManySizes(benchmark::State& state) {
  Run run(SyntheticBoard(40000));
  TCoord size = 0;
  run.Of().objects.ForEach({eViaObject}, [&](Editor::Primitive& object) {
    size = (size + 1) % static_cast<TCoord>(state.range(0));
    static_cast<Editor::Via&>(object).data.hole = 100000 + size;
  });
  for (auto _ : state) run.Report(Chosen({eBoardReportOption_PlatedHoles}));
  state.counters["time/size"] = PerObject(static_cast<double>(state.range(0)));
}
BENCHMARK(HolesOfManySizes)->RangeMultiplier(10)->Range(1, 1000)->Unit(benchmark::kMillisecond);

// From each component to the nearest one that is left.
void SpatialWalk(benchmark::State& state) {
  Run run(BoardOfComponents(state.range(0), 5));
  for (auto _ : state) {
    const Tools::TObjectScope scope;
    benchmark::DoNotOptimize(Tools::TBoard::Create(Ref<IPCB_Board>(&run.Of()))->GetSpatialSortedComponents());
  }
  state.counters["time/component"] = PerObject(static_cast<double>(state.range(0)));
}
BENCHMARK(SpatialWalk)->Arg(1000)->Arg(10000)->Arg(30000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Ketril::Benchmarks
