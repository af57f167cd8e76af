#include "Tests/Support/HostPairs.h"

#include <string_view>

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
                         std::int64_t second_failed, bool leaves_edits_open) {
  for (const Pair& pair : kPairs) {
    if (leaves_edits_open && std::string_view(pair.open) == "IPCB_Primitive.BeginModify") continue;
    std::int64_t open = 0;
    for (std::size_t i = 0; i < calls.size(); ++i) {
      const auto number = static_cast<std::int64_t>(i) + 1;
      const bool failed = number == first_failed || number == second_failed;
      if (calls[i] == pair.open && !failed) ++open;
      if (calls[i] == pair.close || calls[i] == pair.other_close) --open;
    }
    if (open != 0) return pair.open;
  }
  return {};
}

}  // namespace Ketril::Tests
