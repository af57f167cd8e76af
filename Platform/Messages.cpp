#include "Platform/Messages.h"

#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace Ketril::Platform {

namespace {

struct WindowSystem {
  std::mutex lock;
  std::deque<TMessage> queue;
  // Shared, so that a handler may destroy its own window while it runs.
  std::map<std::uintptr_t, std::shared_ptr<const TWindowHandler>> windows;
  std::uintptr_t last_window = 0;
};

WindowSystem& System() {
  static WindowSystem system;
  return system;
}

// Outside the system's lock and constant-initialised: a signal handler may touch nothing else.
constinit std::atomic<bool> escape_pending = false;
static_assert(std::atomic<bool>::is_always_lock_free);

std::atomic<std::int64_t> beeps = 0;
std::atomic<TCursor> cursor = TCursor::Arrow;

}  // namespace

void PostMessage(const TMessage& message) {
  const std::lock_guard guard(System().lock);
  System().queue.push_back(message);
}

void PostEscapeFromSignal() noexcept {
  escape_pending.store(true);
}

std::optional<TMessage> PeekMessage(std::uint32_t first_kind, std::uint32_t last_kind) {
  WindowSystem& system = System();
  const std::lock_guard guard(system.lock);
  if (escape_pending.exchange(false)) system.queue.push_back({.Kind = WM_KEYDOWN, .WParam = VK_ESCAPE});
  const bool any = first_kind == 0 && last_kind == 0;
  for (auto it = system.queue.begin(); it != system.queue.end(); ++it) {
    if (!any && (it->Kind < first_kind || it->Kind > last_kind)) continue;
    const TMessage message = *it;
    system.queue.erase(it);
    return message;
  }
  return std::nullopt;
}

void SendMessage(const TMessage& message) {
  std::shared_ptr<const TWindowHandler> handler;
  {
    const std::lock_guard guard(System().lock);
    const auto it = System().windows.find(message.Window);
    if (it != System().windows.end()) handler = it->second;
  }
  if (handler) (*handler)(message);
}

std::uintptr_t CreateWindow(TWindowHandler handler) {
  auto shared = handler ? std::make_shared<const TWindowHandler>(std::move(handler)) : nullptr;
  const std::lock_guard guard(System().lock);
  const std::uintptr_t window = ++System().last_window;
  System().windows.emplace(window, std::move(shared));
  return window;
}

void DestroyWindow(std::uintptr_t window) {
  std::shared_ptr<const TWindowHandler> handler;  // freed after the lock: its destructor may come back here
  const std::lock_guard guard(System().lock);
  const auto it = System().windows.find(window);
  if (it == System().windows.end()) return;
  handler = std::move(it->second);
  System().windows.erase(it);
}

void MessageBeep(std::uint32_t /*kind*/) {
  ++beeps;
}

std::int64_t BeepCount() {
  return beeps;
}

void SetCursor(TCursor wanted) {
  cursor = wanted;
}

TCursor CurrentCursor() {
  return cursor;
}

}  // namespace Ketril::Platform
