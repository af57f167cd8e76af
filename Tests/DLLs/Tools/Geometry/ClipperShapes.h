// Polygons for the clipper's tests: random ones, half of them made to be awkward, and what is measured on
// them by other means than the clipper's.
#pragma once

#include <string>
#include <vector>

#include "DLLs/Tools/Geometry/RT_PolygonClipper.h"

namespace Ketril::Tools::Tests {

using TRing = std::vector<Tgpc_vertex>;

struct TShape {
  std::vector<TRing> rings;
  std::vector<bool> holes = {};  // of a result only
};

TShape Clip(std::uint8_t operation, const TShape& subject, const TShape& clip);
TRing Rectangle(double left, double bottom, double right, double top);
std::string ToText(const TShape& shape);

long double SignedArea(const TRing& ring);  // positive for anticlockwise rings
long double SignedArea(const TShape& shape);
double Perimeter(const TShape& shape);
std::size_t VertexCount(const TShape& shape);

bool IsIn(const TShape& shape, Tgpc_vertex point);  // by an even-odd count of crossings
bool IsNearOutline(const TShape& shape, Tgpc_vertex point, double distance);
bool Combine(std::uint8_t operation, bool in_subject, bool in_clip);

// The area of the outcome of an operation without clipping: cuts the plane at every vertex and crossing into
// slabs that no edge ends or crosses another in. Slow.
long double AreaBySlabs(std::uint8_t operation, const TShape& subject, const TShape& clip);

// Two polygons to be clipped, drawn from a seed; odd seeds give near-degenerate pairs. Coordinates are whole
// and below 2^14.
struct TPair {
  TShape subject;
  TShape clip;
  const char* kind;

  template <class F>
  void ForEachVertex(F&& change) {
    for (TShape* shape : {&subject, &clip}) {
      for (TRing& ring : shape->rings) {
        for (Tgpc_vertex& vertex : ring) change(vertex);
      }
    }
  }
};
TPair RandomPair(unsigned seed, int most_vertices);

}  // namespace Ketril::Tools::Tests
