// The edges that the polygon clipper sweeps over, and the grid that their ends lie on.
#pragma once

#include <memory_resource>
#include <vector>

#include "DLLs/Tools/Geometry/ClipperArithmetic.h"
#include "DLLs/Tools/Geometry/VertexList.h"

namespace Ketril::Tools {

struct TClipNode;

// Which of the two polygons an edge is of; also the bit of that polygon in a set of polygons.
enum TClipOperand : std::uint8_t { kClipSubject = 1, kClipClip = 2 };

// An edge from its lower to its upper end. Where the contour goes on upwards, the next edge lies beside this
// one in memory.
struct TClipEdge {
  TClipPoint bottom;
  TClipPoint top;
  TClipNode* node = nullptr;  // its place in the status while the sweep crosses it
  std::int32_t next_step = 0;
  TClipOperand operand = kClipSubject;

  double Dx() const { return top.x - bottom.x; }
  double Dy() const { return top.y - bottom.y; }
  TClipEdge* Next() { return next_step != 0 ? this + next_step : nullptr; }
};

// 1 if the point lies left of the edge's line, seen upwards, -1 if right of it, 0 on it.
inline int SideOf(const TClipEdge& edge, TClipPoint point) {
  return SignOfCross(edge.Dx(), edge.Dy(), point.x - edge.bottom.x, point.y - edge.bottom.y);
}

// The sign of the turn from the direction of one edge to that of another.
inline int Turn(const TClipEdge& from, const TClipEdge& to) {
  return SignOfCross(from.Dx(), from.Dy(), to.Dx(), to.Dy());
}

// A vertex from which two edges go up.
struct TClipMinimum {
  TClipPoint point;
  TClipEdge* first;
  TClipEdge* second;
};

// Steps of the grid to the unit, a power of two. Whole numbers within the range of coordinates get 2^16, so
// that they are met exactly and points of intersection are rounded to 1.5e-5. Anything else gets the finest
// grid on which the largest magnitude fits, down to 2^-52, the machine epsilon: vertices are then moved by no
// more than 2^-50 of that magnitude.
class TClipGrid {
 public:
  void Take(double value) {
    const double magnitude = std::fabs(value);
    if (magnitude > largest_) largest_ = magnitude;
    if (magnitude < 0x1p31 ? RoundToGrid(value) != value : magnitude != 0x1p31) whole_ = false;
  }
  double StepsToUnit() const;

 private:
  double largest_ = 0;
  bool whole_ = true;
};

// All edges of both polygons. A vertex that is not finite is left out; a vertex that falls on the one before
// it counts once.
class TClipEdges {
 public:
  explicit TClipEdges(std::pmr::memory_resource* memory) : edges_(memory), minima_(memory) {}

  // Must be called first, with the number of all vertices: edges do not move once they are there.
  void Reserve(std::size_t vertices) { edges_.reserve(vertices); }
  void AddContour(const Tgpc_vertex_list& contour, double steps_to_unit, TClipOperand operand);

  // In sweep order.
  std::pmr::vector<TClipMinimum>& SortedMinima();

 private:
  void AddJoint(TClipEdge& before, TClipEdge& after, bool before_rises, bool after_rises);

  std::pmr::vector<TClipEdge> edges_;
  std::pmr::vector<TClipMinimum> minima_;
};

}  // namespace Ketril::Tools
