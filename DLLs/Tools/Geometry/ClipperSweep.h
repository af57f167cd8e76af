// The engine of the polygon clipper: one sweep over the edges of both polygons from the bottom up.
//
// It meets the ends of edges and their crossings point by point (J. L. Bentley and T. A. Ottmann, "Algorithms
// for Reporting and Counting Geometric Intersections", 1979). At a point all edges through it are taken out
// of the status, those that go on upwards are put back in the order of their directions, and edges that run
// along each other make one. An edge belongs to the result's outline if just one of its sides is inside; at
// every point the outline's edges below and above are tied to chains (Vatti, 1992).
//
// No rounding can lead it astray, because it trusts the order in the status more than any computed number
// (K. Sugihara and M. Iri, "A robust topology-oriented incremental algorithm for Voronoi diagrams", 1994):
// two neighbours are exchanged if, and only if, they stand the wrong way round at the upper end of the
// shorter one, which is decided exactly and of a pair holds once. Where exactly they cross only says when to
// exchange them and where to put the vertex. So every edge arrives beside the edges that share its end, and
// every chain closes.
#pragma once

#include <cmath>
#include <memory_resource>
#include <span>
#include <vector>

#include "DLLs/Tools/Geometry/ClipperChains.h"
#include "DLLs/Tools/Geometry/ClipperEdges.h"
#include "DLLs/Tools/Geometry/ClipperQueue.h"
#include "DLLs/Tools/Geometry/ClipperStatus.h"

namespace Ketril::Tools {

// Where the lines of two edges cross: the nearest point of the grid, and whether the crossing lies above (1),
// on (0) or below (-1) the level of that point, which is exact. False if they are parallel.
struct TClipCrossing {
  TClipPoint place;
  int above = 0;
};
bool CrossLines(const TClipEdge& a, const TClipEdge& b, TClipCrossing& crossing);

class TClipSweep {
 public:
  // Bit k of `inside` tells whether a point that is inside of the set k of polygons (of TClipOperand) is
  // inside of the result.
  TClipSweep(std::uint8_t inside, std::span<const TClipMinimum> minima, TClipChains& chains,
             std::pmr::memory_resource* memory);
  void Run();

 private:
  // The end of a chain at a meeting: an edge of the outline that comes from below (`chain` is not -1) or
  // leads on upwards (`node` is not nil).
  struct TChainEnd {
    const TClipEdge* edge;
    TClipNode* node;
    std::int32_t chain;
  };

  bool IsInside(std::uint8_t polygons) const { return inside_ >> polygons & 1; }
  bool IsOutline(std::uint8_t left, std::uint8_t right) const { return IsInside(left) != IsInside(right); }

  void Schedule(TClipEdge& left, TClipEdge& right);
  void Watch(const TClipNode* left, const TClipNode* right);
  void PushEnd(TClipEdge& edge);

  bool PassVertex();
  void Meet();
  void GatherEvents();
  void GatherMinima();
  void Mark(TClipNode* node);
  void WidenToMarked();
  void TakeOut();
  void Order();
  void PutBack();
  void TieEnds(bool inside_left);
  void Tie(const TChainEnd& first, const TChainEnd& second, bool round_all);

  std::uint8_t inside_;
  std::span<const TClipMinimum> minima_;
  std::size_t next_minimum_ = 0;
  TClipChains& chains_;
  TClipStatus status_;
  TClipQueue queue_;

  TClipPoint now_;
  TClipPoint place_;
  TClipPoint sorted_at_{INFINITY, INFINITY};
  std::size_t marked_ = 0;
  // The places of the status that take part in the meeting, and the one before them.
  TClipNode* first_ = nullptr;
  TClipNode* last_ = nullptr;
  TClipNode* before_ = nullptr;
  std::pmr::vector<TClipEdge*> upward_;
  std::pmr::vector<TChainEnd> ends_;  // those above from left to right, then those below from right to left
  std::pmr::vector<TChainEnd> ends_below_;
};

}  // namespace Ketril::Tools
