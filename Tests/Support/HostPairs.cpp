#include "Tests/Support/HostPairs.h"

#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Ketril::Tests {

namespace {

struct Pair {
  const char *open, *close, *other_close;
};
constexpr Pair kPairs[] = {
    {"IPCB_Board.BoardIterator_Create", "IPCB_Board.BoardIterator_Destroy", ""},
    {"IPCB_Board.SpatialIterator_Create", "IPCB_Board.SpatialIterator_Destroy", ""},
    {"IPCB_Group.GroupIterator_Create", "IPCB_Group.GroupIterator_Destroy", ""},
    {"IPCB_Primitive.BeginModify", "IPCB_Primitive.EndModify", "IPCB_Primitive.CancelModify"},
    {"IPCB_Progress.Start", "IPCB_Progress.End", ""},
    {"IClient.BeginShove", "IClient.EndShove", ""},
};

}  // namespace

std::string UnclosedPair(const std::vector<std::string>& calls, std::int64_t first_failed,
                         std::int64_t second_failed) {
  using Step = std::pair<std::size_t, int>;  // which pair, and opened or closed
  static const auto kSteps = [] {
    std::unordered_map<std::string_view, Step> steps;
    for (std::size_t n = 0; n < std::size(kPairs); ++n) {
      steps[kPairs[n].open] = {n, 1};
      steps[kPairs[n].close] = steps[kPairs[n].other_close] = {n, -1};
    }
    return steps;
  }();
  std::int64_t open[std::size(kPairs)] = {};
  for (std::size_t i = 0; i < calls.size(); ++i) {
    const auto step = kSteps.find(calls[i]);
    if (step == kSteps.end()) continue;
    const auto number = static_cast<std::int64_t>(i) + 1;
    const bool failed = number == first_failed || number == second_failed;
    const auto [pair, change] = step->second;
    if (change < 0 || !failed) open[pair] += change;
  }
  for (std::size_t n = 0; n < std::size(kPairs); ++n) {
    if (open[n] != 0) return kPairs[n].open;
  }
  return {};
}

}  // namespace Ketril::Tests
