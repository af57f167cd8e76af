// The order in which tracks that meet go into microstrips.
#pragma once

#include <cstdint>
#include <list>
#include <unordered_map>
#include <vector>

#include "DLLs/Tools/Convertors/Microstripe.h"

namespace Ketril::Tools {

// A list in which a track comes right behind the first one that it touches, or last when it touches none. Two
// touch when an end of one equals an end of the other; layers do not count. Nothing is owned. To add one
// takes the same time whatever the length, but for a renumbering now and then.
class TMicrostripeChain {
 public:
  bool IsTouchedBy(const TMicrostripe& AMicrostripe) const;
  void Add(TMicrostripe* AMicrostripe);
  std::vector<TMicrostripe*> InOrder() const;

  using TEnd = std::uint64_t;  // a point as a key
  static TEnd EndOf(TCoordPoint point);

 private:
  struct TEntry {
    TMicrostripe* Microstripe;
    std::uint64_t Place;  // ascending along the list
  };
  using TEntries = std::list<TEntry>;

  TEntries::iterator FirstTouching(const TMicrostripe& microstripe);
  std::uint64_t PlaceBefore(TEntries::iterator next);

  TEntries FEntries;
  std::unordered_map<TEnd, TEntries::iterator> FFirstAt;  // of the entries with that end
};

// Adds it and marks it `Listed`; nothing when it is.
void AddToChain(TMicrostripe* AMicrostripe, TMicrostripeChain& AChain);

// Takes what touches the chain out of the rest and adds it: always the first one of the rest that does, until
// none is left. What is `Listed` is in the chain already and only leaves the rest.
void MoveTouchingToChain(std::vector<TMicrostripe*>& ARest, TMicrostripeChain& AChain);

}  // namespace Ketril::Tools
