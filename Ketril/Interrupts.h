// Ctrl-C while a tool runs.
#pragma once

#include <csignal>

namespace Ketril::Command {

// While it lives, the first Ctrl-C is an ESC for the tool, which asks whether to stop and then keeps what it
// has done; the second one ends the process at once. One object at a time.
class EscapeOnInterrupt {
 public:
  EscapeOnInterrupt();
  EscapeOnInterrupt(const EscapeOnInterrupt&) = delete;
  EscapeOnInterrupt& operator=(const EscapeOnInterrupt&) = delete;
  ~EscapeOnInterrupt();

  // Ctrl-C was pressed since one of these was made.
  static bool Pressed();

 private:
  struct sigaction before_ {};
};

}  // namespace Ketril::Command
