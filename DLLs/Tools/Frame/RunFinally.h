// A guaranteed last step that may itself fail.
#pragma once

#include <exception>

namespace Ketril::Tools {

// Runs `work`, then `last`, also when `work` raises; what it raised is raised again, whatever `last` did.
template <class Work, class Last>
void RunFinally(Work&& work, Last&& last) {
  try {
    work();
  } catch (...) {
    try {
      last();
    } catch (const std::exception&) {
    }
    throw;
  }
  last();
}

}  // namespace Ketril::Tools
