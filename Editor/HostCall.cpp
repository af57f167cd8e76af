#include "Editor/HostCall.h"

namespace Ketril::Editor {

namespace {

struct GateState {
  bool record = false;
  bool failed = false;
  std::int64_t calls = 0;
  std::int64_t fail_at = 0;
  std::int64_t fail_again_at = 0;
  std::vector<std::string> names;
};

GateState& State() {
  static GateState state;
  return state;
}

}  // namespace

bool HostGate::armed_ = false;

void HostGate::Arm(bool record, std::int64_t fail_at, std::int64_t fail_again_after) {
  State() = GateState{.record = record,
                      .failed = false,
                      .calls = 0,
                      .fail_at = fail_at,
                      .fail_again_at = fail_again_after > 0 ? fail_at + fail_again_after : 0,
                      .names = {}};
  armed_ = true;
}

void HostGate::Disarm() {
  armed_ = false;
}

std::int64_t HostGate::Calls() {
  return State().calls;
}

bool HostGate::HasFailed() {
  return State().failed;
}

const std::vector<std::string>& HostGate::Record() {
  return State().names;
}

Status HostGate::Enter(const char* method) {
  GateState& state = State();
  ++state.calls;
  if (state.record) state.names.emplace_back(method);
  if (state.calls == state.fail_at || (state.calls == state.fail_again_at && state.fail_at > 0)) {
    state.failed = true;
    return Status::Failure;
  }
  return Status::Ok;
}

}  // namespace Ketril::Editor
