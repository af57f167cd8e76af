// What the sweep meets next: a binary heap of the upper ends of edges and of crossings of neighbours.
#pragma once

#include <memory_resource>
#include <vector>

#include "DLLs/Tools/Geometry/ClipperEdges.h"

namespace Ketril::Tools {

// The upper end of `left` if `right` is nil; otherwise the point where the two meet, `left` being the one
// further left below it. Its turn comes by `key`. The place of a crossing is rounded to the grid; its key is
// not: a crossing a little below or above the level that it is rounded to is keyed a quarter of a step below
// or above, since on nearly horizontal edges it may be met far from where those edges reach the level.
struct TClipEvent {
  TClipPoint key;
  double place_x;
  TClipEdge* left;
  TClipEdge* right;

  TClipPoint Place() const { return {place_x, RoundToGrid(key.y)}; }
};

class TClipQueue {
 public:
  explicit TClipQueue(std::pmr::memory_resource* memory) : heap_(memory) {}

  void Reserve(std::size_t count) { heap_.reserve(count); }
  bool Empty() const { return heap_.empty(); }
  const TClipEvent& Top() const { return heap_.front(); }

  // Whether the event after the first is at the same key.
  bool IsTopAlone() const {
    const std::size_t count = heap_.size();
    const TClipPoint key = heap_[0].key;
    return (count < 2 || heap_[1].key != key) && (count < 3 || heap_[2].key != key);
  }

  void Push(const TClipEvent& event) {
    heap_.push_back(event);
    std::size_t hole = heap_.size() - 1;
    while (hole > 0 && IsSweptBefore(event.key, heap_[(hole - 1) / 2].key)) {
      heap_[hole] = heap_[(hole - 1) / 2];
      hole = (hole - 1) / 2;
    }
    heap_[hole] = event;
  }

  void Pop() {
    const TClipEvent last = heap_.back();
    heap_.pop_back();
    if (!heap_.empty()) ReplaceTop(last);
  }

  void ReplaceTop(const TClipEvent& event) {
    const std::size_t count = heap_.size();
    std::size_t hole = 0;
    for (std::size_t child = 1; child < count; child = 2 * hole + 1) {
      if (child + 1 < count && IsSweptBefore(heap_[child + 1].key, heap_[child].key)) ++child;
      if (!IsSweptBefore(heap_[child].key, event.key)) break;
      heap_[hole] = heap_[child];
      hole = child;
    }
    heap_[hole] = event;
  }

 private:
  std::pmr::vector<TClipEvent> heap_;
};

}  // namespace Ketril::Tools
