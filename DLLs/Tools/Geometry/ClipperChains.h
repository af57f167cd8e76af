// The outline of the clipper's result while it grows: chains of vertices, open at both ends, that are begun
// where the sweep meets two edges of the outline going up, and that are joined where two of them end (B. R.
// Vatti, "A generic solution to polygon clipping", 1992). Along a chain the inside is on the left hand: its
// head climbs an edge with the inside to the right, its tail one with the inside to the left.
#pragma once

#include <memory_resource>
#include <vector>

#include "DLLs/Tools/Geometry/ClipperArithmetic.h"

namespace Ketril::Tools {

class TClipChains {
 public:
  explicit TClipChains(std::pmr::memory_resource* memory)
      : vertices_(memory), chains_(memory), closed_(memory) {}
  // May be called before the first chain; raises Exception "vertex creation" when memory runs out. The pool
  // of vertices grows by itself, and raises "memory allocation in GPC_REALLOC" when it cannot.
  void Reserve(std::size_t vertices);

  // A chain of one vertex. `hole` tells that the inside is below it: of all chains that make a contour the
  // first to be begun holds the contour's lowest vertex, and so knows whether the contour is a hole.
  std::int32_t Begin(TClipPoint point, bool hole);
  void Prepend(std::int32_t chain, TClipPoint point);
  void Append(std::int32_t chain, TClipPoint point);

  // Joins the tail of one chain to the head of another at a point; closes the chain if both are the same.
  void Join(std::int32_t tail, std::int32_t head, TClipPoint point);

  // The contours that were closed, in the order of their closing.
  std::size_t ClosedCount() const { return closed_.size(); }
  bool IsHole(std::size_t index) const { return chains_[closed_[index]].hole; }

  // The vertices of a closed contour, outlines anticlockwise, holes clockwise. Empty for a contour of which
  // the rounding of crossings has left nothing.
  void Collect(std::size_t index, std::pmr::vector<TClipPoint>& points) const;

 private:
  struct TVertex {
    TClipPoint point;
    std::int32_t next;
  };
  struct TChain {
    std::int32_t head;
    std::int32_t tail;
    std::int32_t joined_to;  // the chain that this one has become part of, or itself
    bool hole;
  };

  std::int32_t NewVertex(TClipPoint point, std::int32_t next);
  TChain& Find(std::int32_t chain);

  std::pmr::vector<TVertex> vertices_;
  std::pmr::vector<TChain> chains_;
  std::pmr::vector<std::int32_t> closed_;
};

}  // namespace Ketril::Tools
