// What a target holds against the code under test: a broken promise ends the program, which the fuzzer takes
// for a finding.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace Ketril::Fuzz {

inline void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

// The text says what is wrong; empty for nothing.
inline void CheckNothing(const std::string& wrong, const char* what) {
  if (!wrong.empty()) Check(false, (std::string(what) + ": " + wrong).c_str());
}

}  // namespace Ketril::Fuzz
