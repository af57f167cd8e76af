// The edges that the sweep crosses at its present level, from left to right: a doubly linked list threaded
// through a treap (R. Seidel and C. R. Aragon, "Randomized Search Trees", 1996), so that a place is found in
// logarithmic time and neighbours at once. The order is kept by whoever inserts; nothing here compares edges.
#pragma once

#include <memory_resource>

#include "DLLs/Tools/Geometry/ClipperEdges.h"

namespace Ketril::Tools {

// A place in the order. The edge in a place changes without the place being moved.
struct TClipNode {
  TClipEdge* edge;
  TClipNode* previous;
  TClipNode* next;
  TClipNode* parent;
  TClipNode* left;
  TClipNode* right;
  std::uint32_t priority;
  std::int32_t chain;   // the part of the result's outline that ends here, -1 for none
  std::uint8_t beyond;  // the polygons inside of which one is right of the edge, bits of TClipOperand
  bool is_marked;       // for the sweep's use
  bool coincident;      // runs along the edge before it, with which it makes one edge of the arrangement
};

class TClipStatus {
 public:
  // Room for this many edges at a time.
  TClipStatus(std::size_t capacity, std::pmr::memory_resource* memory);
  ~TClipStatus();
  TClipStatus(const TClipStatus&) = delete;
  TClipStatus& operator=(const TClipStatus&) = delete;

  // After `previous`, or before all others if that is nil.
  TClipNode* InsertAfter(TClipNode* previous);
  void Erase(TClipNode* node);

  // The last edge that the point lies right of or on, nil if there is none. `on` tells which of the two.
  TClipNode* Locate(TClipPoint point, bool& on) const;

  TClipNode* First() const { return first_; }

 private:
  void RotateUp(TClipNode* node);
  void ReplaceChild(TClipNode* parent, TClipNode* child, TClipNode* by);

  std::pmr::memory_resource* memory_;
  std::size_t capacity_;
  TClipNode* nodes_;
  std::size_t used_ = 0;
  TClipNode* free_ = nullptr;
  TClipNode* root_ = nullptr;
  TClipNode* first_ = nullptr;
  std::uint32_t random_ = 0x9e3779b9;
};

}  // namespace Ketril::Tools
