#include "Platform/Messages.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>
#include <vector>

namespace Ketril::Platform {
namespace {

constexpr std::uint32_t kPaint = 0x000F;

std::vector<std::uint64_t> TakeAll() {
  std::vector<std::uint64_t> taken;
  while (const auto message = PeekMessage()) taken.push_back(message->WParam);
  return taken;
}

TEST(Messages, AnEscapeOfASignalHandlerComesBehindWhatWaitsAndOnce) {
  const auto old_handler = std::signal(SIGUSR1, [](int) { PostEscapeFromSignal(); });
  PostMessage({.Kind = kPaint, .WParam = 1});
  std::raise(SIGUSR1);
  std::raise(SIGUSR1);
  std::signal(SIGUSR1, old_handler);
  EXPECT_EQ(TakeAll(), (std::vector<std::uint64_t>{1, VK_ESCAPE}));
}

TEST(Messages, PostsOfSeveralThreadsAllArrive) {
  constexpr int kThreads = 4, kEach = 2000;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < kEach; ++i) PostMessage({.Kind = kPaint});
    });
  }
  std::size_t taken = TakeAll().size();
  for (std::thread& thread : threads) thread.join();
  taken += TakeAll().size();
  EXPECT_EQ(taken, std::size_t{kThreads} * kEach);
}

TEST(Messages, AHandlerMayDestroyItsOwnWindow) {
  std::uintptr_t window = 0;
  std::vector<std::uint64_t> seen;
  window = CreateWindow([&window, &seen, kept = std::vector<std::uint64_t>{10, 20}](const TMessage& message) {
    DestroyWindow(window);
    seen.push_back(kept[1] + message.WParam);
  });
  const TMessage message{.Window = window, .Kind = kPaint, .WParam = 1};
  SendMessage(message);
  SendMessage(message);
  EXPECT_EQ(seen, (std::vector<std::uint64_t>{21}));
}

}  // namespace
}  // namespace Ketril::Platform
