// Work on many things that do not depend on each other, shared among the cores of the machine.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace Ketril::Editor {

// Calls `work(i)` once for each i below `count`, in no order, from several threads at a time; one that raises
// ends the others before their next block, and its exception (one of them, when several raise) comes out
// here, after all have ended. Few things are done on this thread alone: starting another costs more than they.
template <class Work>
void ForEachOnAllCores(std::size_t count, const Work& work) {
  constexpr std::size_t kBlock = 64;  // things at a time
  constexpr std::size_t kMostThreads = 8;
  std::atomic<std::size_t> next = 0;
  const auto run = [&] {
    try {
      for (std::size_t begin; (begin = next.fetch_add(kBlock)) < count;) {
        for (std::size_t i = begin; i < std::min(begin + kBlock, count); ++i) work(i);
      }
    } catch (...) {
      next = count;
      throw;
    }
  };
  const std::size_t cores = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMostThreads);
  std::vector<std::future<void>> others;
  try {
    while (others.size() + 1 < std::min(cores, count / kBlock))
      others.push_back(std::async(std::launch::async, run));
  } catch (const std::system_error&) {
    // The system gives no more threads: those that there are do it.
  }
  run();
  for (std::future<void>& other : others) other.get();
}

}  // namespace Ketril::Editor
