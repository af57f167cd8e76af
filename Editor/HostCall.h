// The gate that every method of the headless editor passes. It costs one test of a flag; when it is armed it
// can count calls, record their names in order, and make the k-th call fail, which is what the fault sweep,
// the tests of fixed call series and the benchmarks' calls per object stand on.
//
// Queries for interfaces and reference counts are no calls in this sense: they cannot fail.
#pragma once

#include <cstdint>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "Interfaces/Interface.h"

namespace Ketril::Editor {

class HostGate {
 public:
  // Starts watching; counters restart from 0. `record` keeps the name of every call. `fail_at` (counted from
  // 1, 0 for never) makes that call fail before it does anything; `fail_again_after` more calls later (0 for
  // never) one further call fails.
  static void Arm(bool record = false, std::int64_t fail_at = 0, std::int64_t fail_again_after = 0);
  static void Disarm();

  static std::int64_t Calls();                      // since the last Arm
  static bool HasFailed();                          // the call to fail was reached
  static const std::vector<std::string>& Record();  // "IPCB_Track.GetState_Width", in order

  static bool Armed() { return armed_; }
  // Counts a call; gives the failure that the call shall answer with, or Ok.
  static Status Enter(const char* method);

 private:
  static bool armed_;
};

// Runs the body of a method of the editor behind the gate. The body gives a Status, or nothing for success.
// An exception of the body becomes a failing status: nothing throws out of the editor.
template <class Body>
Status HostCall(const char* method, Body&& body) noexcept {
  if (HostGate::Armed()) [[unlikely]] {
    if (const Status status = HostGate::Enter(method); Failed(status)) return status;
  }
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
      body();
      return Status::Ok;
    } else {
      return body();
    }
  } catch (const std::bad_alloc&) {
    return Status::OutOfMemory;
  } catch (...) {
    return Status::Failure;
  }
}

}  // namespace Ketril::Editor
