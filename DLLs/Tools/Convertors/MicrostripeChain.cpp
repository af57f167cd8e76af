#include "DLLs/Tools/Convertors/MicrostripeChain.h"

#include <functional>
#include <iterator>
#include <queue>

namespace Ketril::Tools {

namespace {

constexpr std::uint64_t kGap = std::uint64_t{1} << 32;

}  // namespace

TMicrostripeChain::TEnd TMicrostripeChain::EndOf(TCoordPoint point) {
  return std::uint64_t{static_cast<std::uint32_t>(point.x)} << 32 | static_cast<std::uint32_t>(point.y);
}

bool TMicrostripeChain::IsTouchedBy(const TMicrostripe& AMicrostripe) const {
  return FFirstAt.contains(EndOf(AMicrostripe.Left())) || FFirstAt.contains(EndOf(AMicrostripe.Right()));
}

TMicrostripeChain::TEntries::iterator TMicrostripeChain::FirstTouching(const TMicrostripe& microstripe) {
  auto first = FEntries.end();
  for (const TCoordPoint end : {microstripe.Left(), microstripe.Right()}) {
    const auto found = FFirstAt.find(EndOf(end));
    if (found != FFirstAt.end() && (first == FEntries.end() || found->second->Place < first->Place))
      first = found->second;
  }
  return first;
}

// A place between an entry and the one before it.
std::uint64_t TMicrostripeChain::PlaceBefore(TEntries::iterator next) {
  const auto before = [&] { return next == FEntries.begin() ? 0 : std::prev(next)->Place; };
  if (next == FEntries.end()) return before() + kGap;
  if (next->Place - before() < 2) {
    std::uint64_t place = 0;
    for (TEntry& entry : FEntries) entry.Place = place += kGap;
  }
  return before() + (next->Place - before()) / 2;
}

void TMicrostripeChain::Add(TMicrostripe* AMicrostripe) {
  const auto touching = FirstTouching(*AMicrostripe);
  const auto next = touching == FEntries.end() ? touching : std::next(touching);
  const std::uint64_t place = PlaceBefore(next);
  const auto added = FEntries.insert(next, {AMicrostripe, place});
  for (const TCoordPoint end : {AMicrostripe->Left(), AMicrostripe->Right()}) {
    const auto [at, is_new] = FFirstAt.try_emplace(EndOf(end), added);
    if (!is_new && place < at->second->Place) at->second = added;
  }
}

std::vector<TMicrostripe*> TMicrostripeChain::InOrder() const {
  std::vector<TMicrostripe*> order;
  order.reserve(FEntries.size());
  for (const TEntry& entry : FEntries) order.push_back(entry.Microstripe);
  return order;
}

void AddToChain(TMicrostripe* AMicrostripe, TMicrostripeChain& AChain) {
  if (AMicrostripe->Has(Listed)) return;
  AChain.Add(AMicrostripe);
  AMicrostripe->Set(Listed);
}

void MoveTouchingToChain(std::vector<TMicrostripe*>& ARest, TMicrostripeChain& AChain) {
  // Places in the rest: those that touch the chain, the lowest first, and the others by their ends, since
  // they come to touch it when something with such an end is added.
  std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> touching;
  std::unordered_map<TMicrostripeChain::TEnd, std::vector<std::size_t>> others;
  const auto ends_of = [](const TMicrostripe& microstripe) {
    return std::array{TMicrostripeChain::EndOf(microstripe.Left()),
                      TMicrostripeChain::EndOf(microstripe.Right())};
  };
  for (std::size_t i = 0; i < ARest.size(); ++i) {
    if (AChain.IsTouchedBy(*ARest[i])) {
      touching.push(i);
    } else {
      for (const auto end : ends_of(*ARest[i])) others[end].push_back(i);
    }
  }
  while (!touching.empty()) {
    const std::size_t i = touching.top();
    touching.pop();
    TMicrostripe* const taken = std::exchange(ARest[i], nullptr);
    if (!taken) continue;
    AddToChain(taken, AChain);
    for (const auto end : ends_of(*taken)) {
      const auto met = others.extract(end);
      if (met.empty()) continue;
      for (const std::size_t place : met.mapped()) touching.push(place);
    }
  }
  std::erase(ARest, nullptr);
}

}  // namespace Ketril::Tools
