#include "DLLs/Tools/Geometry/RT_PolygonClipper.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <memory_resource>
#include <new>
#include <utility>
#include <vector>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "DLLs/Tools/Geometry/ClipperSweep.h"

namespace Ketril::Tools {
namespace {

template <class F>
decltype(auto) Allocating(const char* text, F&& allocate) {
  try {
    return allocate();
  } catch (const std::bad_alloc&) {
    throw Exception(text);
  }
}

// Bit k tells whether the set k of polygons (of TClipOperand) is inside of the outcome.
std::uint8_t InsideOf(std::uint8_t operation) {
  switch (operation) {
    case eClipDifference:
      return 1 << kClipSubject;
    case eClipIntersection:
      return 1 << (kClipSubject | kClipClip);
    case eClipExclusiveOr:
      return 1 << kClipSubject | 1 << kClipClip;
    case eClipUnion:
      return 1 << kClipSubject | 1 << kClipClip | 1 << (kClipSubject | kClipClip);
    default:
      return 0;
  }
}

struct TBox {
  double left = std::numeric_limits<double>::infinity();
  double bottom = left;
  double right = -left;
  double top = -left;

  void Take(double x, double y) {
    left = std::min(left, x);
    bottom = std::min(bottom, y);
    right = std::max(right, x);
    top = std::max(top, y);
  }
  bool IsEmpty() const { return left > right; }
  bool Meets(const TBox& box) const {
    return left <= box.right && box.left <= right && bottom <= box.top && box.bottom <= top;
  }
};

// One of the two polygons, with the boxes of its contours.
struct TInput {
  TInput(const Tgpc_polygon* polygon, const char* text, TClipGrid& grid, std::pmr::memory_resource* memory)
      : polygon(polygon), boxes(memory) {
    if (!polygon || polygon->num_contours <= 0) return;
    Allocating(text, [&] { boxes.resize(static_cast<std::size_t>(polygon->num_contours)); });
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      const Tgpc_vertex_list& contour = polygon->contour[i];
      for (std::int32_t k = 0; k < contour.num_vertices; ++k) {
        const Tgpc_vertex vertex = contour.vertex[k];
        if (!std::isfinite(vertex.x) || !std::isfinite(vertex.y)) continue;
        grid.Take(vertex.x);
        grid.Take(vertex.y);
        boxes[i].Take(vertex.x, vertex.y);
      }
      if (boxes[i].IsEmpty()) continue;
      all.Take(boxes[i].left, boxes[i].bottom);
      all.Take(boxes[i].right, boxes[i].top);
    }
  }

  template <class F>
  void ForEachWithin(const TBox* area, F&& take) const {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      if (!boxes[i].IsEmpty() && (!area || boxes[i].Meets(*area))) take(polygon->contour[i]);
    }
  }

  const Tgpc_polygon* polygon;
  std::pmr::vector<TBox> boxes;
  TBox all;
};

// Puts the closed contours in the place of what `result` holds.
void Store(const TClipChains& chains, double steps_to_unit, Tgpc_polygon& result,
           std::pmr::memory_resource* memory) {
  const TPolygonOwner outcome(NewPolygon());
  if (const std::size_t most = chains.ClosedCount(); most > 0) {
    Allocating("hole flag table creation", [&] { outcome->hole = new std::int32_t[most]; });
    Allocating("contour creation", [&] { outcome->contour = new Tgpc_vertex_list[most]; });
  }
  const double unit = 1 / steps_to_unit;
  std::pmr::vector<TClipPoint> points(memory);
  for (std::size_t i = 0; i < chains.ClosedCount(); ++i) {
    Tgpc_vertex_list& contour = outcome->contour[outcome->num_contours];
    Allocating("vertex creation", [&] {
      chains.Collect(i, points);
      if (!points.empty()) contour.vertex = new Tgpc_vertex[points.size()];
    });
    if (points.empty()) continue;
    contour.num_vertices = static_cast<std::int32_t>(points.size());
    std::transform(points.begin(), points.end(), contour.vertex, [unit](TClipPoint point) {
      return Tgpc_vertex{point.x * unit, point.y * unit};
    });
    outcome->hole[outcome->num_contours++] = chains.IsHole(i) ? 1 : 0;
  }
  std::swap(*outcome, result);
}

}  // namespace

void ClipPolygons(std::uint8_t Operation, const Tgpc_polygon* Subject, const Tgpc_polygon* Clip,
                  Tgpc_polygon* Result) {
  if (!Result) return;
  alignas(std::max_align_t) std::array<std::byte, 16384> first_memory;
  std::pmr::monotonic_buffer_resource memory(first_memory.data(), first_memory.size());

  TClipGrid grid;
  const TInput subject(Subject, "contributing Subject Contours table creation", grid, &memory);
  const TInput clip(Clip, "contributing Clip Contours table creation", grid, &memory);
  // Away from the other polygon's box a contour changes nothing.
  const TBox* const subject_area = Operation == eClipIntersection ? &clip.all : nullptr;
  const TBox* const clip_area =
      Operation == eClipIntersection || Operation == eClipDifference ? &subject.all : nullptr;
  std::size_t vertices = 0;
  const auto count = [&](const Tgpc_vertex_list& contour) {
    vertices += static_cast<std::size_t>(contour.num_vertices);
  };
  subject.ForEachWithin(subject_area, count);
  clip.ForEachWithin(clip_area, count);

  TClipEdges edges(&memory);
  Allocating("memory allocation in GPC_MALLOC", [&] { edges.Reserve(vertices); });
  const double steps_to_unit = grid.StepsToUnit();
  Allocating("sbt creation", [&] {
    subject.ForEachWithin(subject_area, [&](const Tgpc_vertex_list& contour) {
      edges.AddContour(contour, steps_to_unit, kClipSubject);
    });
    clip.ForEachWithin(clip_area, [&](const Tgpc_vertex_list& contour) {
      edges.AddContour(contour, steps_to_unit, kClipClip);
    });
  });
  TClipChains chains(&memory);
  chains.Reserve(vertices + 16);
  Allocating("sbt creation",
             [&] { TClipSweep(InsideOf(Operation), edges.SortedMinima(), chains, &memory).Run(); });
  Store(chains, steps_to_unit, *Result, &memory);
}

}  // namespace Ketril::Tools
