#include "DLLs/Tools/Geometry/ClipperEdges.h"

#include <algorithm>

namespace Ketril::Tools {

double TClipGrid::StepsToUnit() const {
  if (whole_) return 0x1p16;
  int exponent = 0;
  std::frexp(largest_, &exponent);
  return std::ldexp(1.0, std::min(50 - exponent, 52));
}

void TClipEdges::AddContour(const Tgpc_vertex_list& contour, double steps_to_unit, TClipOperand operand) {
  const std::size_t first = edges_.size();
  for (std::int32_t i = 0; i < contour.num_vertices; ++i) {
    const Tgpc_vertex& vertex = contour.vertex[i];
    if (!std::isfinite(vertex.x) || !std::isfinite(vertex.y)) continue;
    const TClipPoint point{RoundToGrid(vertex.x * steps_to_unit), RoundToGrid(vertex.y * steps_to_unit)};
    if (edges_.size() > first && edges_.back().bottom == point) continue;
    TClipEdge& edge = edges_.emplace_back();
    edge.bottom = point;
    edge.operand = operand;
  }
  while (edges_.size() > first && edges_.back().bottom == edges_[first].bottom) edges_.pop_back();
  if (edges_.size() < first + 3) {
    edges_.resize(first);
    return;
  }
  TClipEdge* const begin = edges_.data() + first;
  TClipEdge* const end = edges_.data() + edges_.size();
  const TClipPoint start = begin->bottom;
  const bool last_rises = IsSweptBefore(end[-1].bottom, start);
  bool before_rises = last_rises;
  for (TClipEdge* edge = begin; edge != end; ++edge) {
    edge->top = edge + 1 != end ? edge[1].bottom : start;
    const bool rises = IsSweptBefore(edge->bottom, edge->top);
    if (!rises) std::swap(edge->bottom, edge->top);
    if (edge != begin) AddJoint(edge[-1], *edge, before_rises, rises);
    before_rises = rises;
  }
  AddJoint(end[-1], *begin, last_rises, begin->bottom == start);
}

void TClipEdges::AddJoint(TClipEdge& before, TClipEdge& after, bool before_rises, bool after_rises) {
  if (before_rises && after_rises) before.next_step = static_cast<std::int32_t>(&after - &before);
  if (!before_rises && !after_rises) after.next_step = static_cast<std::int32_t>(&before - &after);
  if (!before_rises && after_rises) minima_.push_back({after.bottom, &before, &after});
}

std::pmr::vector<TClipMinimum>& TClipEdges::SortedMinima() {
  std::sort(minima_.begin(), minima_.end(),
            [](const TClipMinimum& a, const TClipMinimum& b) { return IsSweptBefore(a.point, b.point); });
  return minima_;
}

}  // namespace Ketril::Tools
