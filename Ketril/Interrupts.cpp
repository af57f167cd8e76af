#include "Ketril/Interrupts.h"

#include "Platform/Messages.h"

namespace Ketril::Command {

namespace {

volatile std::sig_atomic_t pressed = 0;

void OnInterrupt(int) {
  pressed = 1;
  Platform::PostEscapeFromSignal();
}

}  // namespace

EscapeOnInterrupt::EscapeOnInterrupt() {
  pressed = 0;
  struct sigaction action {};
  action.sa_handler = OnInterrupt;
  // SA_RESETHAND: a tool that does not poll is ended by the second one. SA_RESTART: a question at the
  // terminal stays open.
  action.sa_flags = SA_RESETHAND | SA_RESTART;
  sigaction(SIGINT, &action, &before_);
}

EscapeOnInterrupt::~EscapeOnInterrupt() {
  sigaction(SIGINT, &before_, nullptr);
}

bool EscapeOnInterrupt::Pressed() {
  return pressed != 0;
}

}  // namespace Ketril::Command
