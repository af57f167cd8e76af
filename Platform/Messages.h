// The message queue of the editor's thread, and the few things of a windowed system that tools touch.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace Ketril::Platform {

enum TMessageKind : std::uint32_t { WM_KEYDOWN = 0x0100, WM_KEYUP = 0x0101, WM_SYSKEYDOWN = 0x0104 };
enum TVirtualKey : std::uint32_t { VK_ESCAPE = 0x1B };

struct TMessage {
  std::uintptr_t Window = 0;  // whom it is for
  std::uint32_t Kind = 0;
  std::uint64_t WParam = 0;  // of a key message: the virtual key
  std::int64_t LParam = 0;
};

// Appends a message to the queue. May be called from any thread.
void PostMessage(const TMessage& message);
// As PostMessage of an ESC key-down for window 0, for a signal handler: it only sets a flag.
void PostEscapeFromSignal() noexcept;

// Takes the first message off the queue whose kind lies in the range, both ends included; 0, 0 means any.
std::optional<TMessage> PeekMessage(std::uint32_t first_kind = 0, std::uint32_t last_kind = 0);

// Delivers a message to its window at once: calls that window's handler, if it has one.
void SendMessage(const TMessage& message);

// A window is a number with a handler. The handler may do anything, an export of the tools included.
using TWindowHandler = std::function<void(const TMessage&)>;
std::uintptr_t CreateWindow(TWindowHandler handler);
void DestroyWindow(std::uintptr_t window);

void MessageBeep(std::uint32_t kind);
std::int64_t BeepCount();

enum class TCursor : std::uint8_t { Arrow, Hourglass };
void SetCursor(TCursor cursor);
TCursor CurrentCursor();

}  // namespace Ketril::Platform
