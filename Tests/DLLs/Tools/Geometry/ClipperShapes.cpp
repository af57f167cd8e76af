#include "Tests/DLLs/Tools/Geometry/ClipperShapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <sstream>

namespace Ketril::Tools::Tests {
namespace {

class TDraw {
 public:
  explicit TDraw(unsigned seed) : random_(seed) {}
  int Int(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }
  double Real() { return std::uniform_real_distribution()(random_); }
  Tgpc_vertex Point(int span) { return {double(Int(0, span)), double(Int(0, span))}; }
  int Size(int most) { return Int(3, Int(3, most)); }

  TRing Scattered(int most, int span) {
    TRing ring(static_cast<std::size_t>(Size(most)));
    for (Tgpc_vertex& vertex : ring) vertex = Point(span);
    return ring;
  }

  TRing Star(int most) {
    const int count = Size(most);
    const double phase = Real(), deep = 200 + 2800 * Real(), x = 2500 + 1000 * Real(),
                 y = 2500 + 1000 * Real();
    TRing ring;
    for (int i = 0; i < count; ++i) {
      const double angle = 2 * std::numbers::pi * (i + phase) / count, radius = i % 2 ? deep : 3000;
      ring.push_back({std::round(x + radius * std::cos(angle)), std::round(y + radius * std::sin(angle))});
    }
    return ring;
  }

  // Teeth on a common bar, on a lattice, so that two combs share edges.
  TRing Comb(int most) {
    const int teeth = std::max(1, Size(most) / 4), step = Int(1, 3), height = Int(1, 6);
    const bool slanted = Int(0, 1) != 0;
    const Tgpc_vertex at = Point(4);
    TRing ring{at};
    for (int i = 0; i < teeth; ++i) {
      const double x = at.x + 2 * step * i;
      ring.push_back({x, at.y + height});
      if (!slanted) ring.push_back({x + step, at.y + height});
      ring.push_back({x + step, at.y + 1});
      if (!slanted) ring.push_back({x + 2 * step, at.y + 1});
    }
    ring.push_back({at.x + 2 * step * teeth, at.y});
    return ring;
  }

  // A strip of width 0 or 1 wound on a lattice.
  TRing Spiral(int most) {
    constexpr int kDx[] = {1, 0, -1, 0}, kDy[] = {0, 1, 0, -1};
    const int turns = std::max(2, Size(most) / 2), gap = Int(2, 4);
    TRing ring, back;
    Tgpc_vertex at{double(Int(8, 12)), double(Int(8, 12))};
    for (int i = 0; i < turns; ++i) {
      ring.push_back(at);
      at = {at.x + kDx[i % 4] * gap * (i / 2 + 1), at.y + kDy[i % 4] * gap * (i / 2 + 1)};
      back.push_back({at.x + Int(0, 1), at.y + Int(0, 1)});
    }
    ring.insert(ring.end(), back.rbegin(), back.rend());
    return ring;
  }

  // Every other edge passes one point.
  TRing Pinwheel(int most) {
    TRing ring;
    for (int i = Size(most) / 2 + 1; i > 0; --i) {
      const int x = Int(-5, 5), y = Int(-5, 5), ahead = Int(0, 3), behind = Int(0, 3);
      ring.push_back({20.0 + ahead * x, 20.0 + ahead * y});
      ring.push_back({20.0 - behind * x, 20.0 - behind * y});
    }
    return ring;
  }

  // Vertices on straight edges, some of them walked back and forth, and vertices repeated.
  TRing WithRuns(const TRing& corners) {
    TRing ring;
    for (std::size_t i = 0; i < corners.size(); ++i) {
      const Tgpc_vertex a = corners[i], b = corners[(i + 1) % corners.size()];
      for (int k = Int(0, 3), part = 0; k >= 0; --k, part = Int(0, 4)) {
        ring.push_back({(4 - part) * a.x + part * b.x, (4 - part) * a.y + part * b.y});
      }
    }
    return ring;
  }

 private:
  std::mt19937 random_;
};

template <class F>
TPair MakePair(TDraw& draw, const char* kind, int most_rings, F&& make) {
  TPair pair{{}, {}, kind};
  for (TShape* shape : {&pair.subject, &pair.clip}) {
    for (int i = draw.Int(1, most_rings); i > 0; --i) shape->rings.push_back(make());
  }
  return pair;
}

TPair AwkwardPair(TDraw& draw, int most) {
  const auto both = [&](const char* kind, int most_rings, auto&& make) {
    return MakePair(draw, kind, most_rings, make);
  };
  const auto nudge = [&](Tgpc_vertex at) {
    return Tgpc_vertex{at.x + draw.Int(-1, 1), at.y + draw.Int(-1, 1)};
  };
  TPair pair;
  switch (draw.Int(0, 9)) {
    case 0:
      return both("lattice", 3, [&] { return draw.Scattered(most, 5); });
    case 1:
      return both("rectangles on a lattice", 6, [&] {
        const Tgpc_vertex a = draw.Point(6), b = draw.Point(6);
        return Rectangle(a.x, a.y, b.x, b.y);
      });
    case 2:
      return both("combs", 2, [&] { return draw.Comb(most); });
    case 3:
      return both("spirals", 1, [&] { return draw.Spiral(most); });
    case 4:
      return both("slivers", 3, [&] {
        const Tgpc_vertex a = draw.Point(8000), b = draw.Point(8000);
        return TRing{a, b, nudge(b), nudge(a)};
      });
    case 5:
      return both("pinwheels", 2, [&] { return draw.Pinwheel(most); });
    case 6:
      return both("collinear runs", 2,
                  [&] { return draw.WithRuns(draw.Scattered(most / 2 + 2, draw.Int(4, 2000))); });
    case 7:
      pair = both("a shape and itself nudged", 2, [&] { return draw.Scattered(most, draw.Int(6, 8000)); });
      pair.clip = pair.subject;
      for (Tgpc_vertex& vertex : pair.clip.rings[0]) vertex = draw.Int(0, 2) ? vertex : nudge(vertex);
      return pair;
    case 8: {
      pair = both("part of an edge in common", 2, [&] { return draw.Scattered(most, draw.Int(6, 4000)); });
      const Tgpc_vertex a = pair.subject.rings[0][0], b = pair.subject.rings[0][1];
      pair.clip.rings[0][0] = {2 * b.x - a.x, 2 * b.y - a.y};
      pair.clip.rings[0][1] = draw.Int(0, 1) ? a : b;
      return pair;
    }
    default:
      // Round the hole and back to the point of the outline that it touches.
      return both("holes that touch their outline", 1, [&] {
        const double x = draw.Int(0, 12);
        return TRing{{0, 0}, {x, 0}, draw.Point(12), draw.Point(12), {x, 0}, {12, 0}, {12, 12}, {0, 12}};
      });
  }
}

long double Cross(Tgpc_vertex o, Tgpc_vertex a, Tgpc_vertex b) {
  return (static_cast<long double>(a.x) - o.x) * (static_cast<long double>(b.y) - o.y) -
         (static_cast<long double>(b.x) - o.x) * (static_cast<long double>(a.y) - o.y);
}

// Calls visit(from, to) for every edge.
template <class F>
void ForEachEdge(const TShape& shape, F&& visit) {
  for (const TRing& ring : shape.rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) visit(ring[i], ring[(i + 1) % ring.size()]);
  }
}

}  // namespace

TPair RandomPair(unsigned seed, int most_vertices) {
  TDraw draw(seed);
  if (seed % 2 == 0) {
    return MakePair(draw, "random", 3, [&] {
      return draw.Int(0, 1) ? draw.Star(most_vertices) : draw.Scattered(most_vertices, 6000);
    });
  }
  TPair pair = AwkwardPair(draw, most_vertices);
  double span = 1;
  pair.ForEachVertex([&](Tgpc_vertex& at) { span = std::max({span, std::fabs(at.x), std::fabs(at.y)}); });
  if (const int most = static_cast<int>(4000 / span); most >= 1) {
    const double factor = draw.Int(1, most), shear = draw.Int(-1, 1) * draw.Int(0, most);
    pair.ForEachVertex([&](Tgpc_vertex& at) { at = {at.x * factor + at.y * shear, at.y * factor}; });
  }
  return pair;
}

TRing Rectangle(double left, double bottom, double right, double top) {
  return {{left, bottom}, {right, bottom}, {right, top}, {left, top}};
}

TShape Clip(std::uint8_t operation, const TShape& subject, const TShape& clip) {
  const TPolygonOwner polygons[3]{TPolygonOwner(NewPolygon()), TPolygonOwner(NewPolygon()),
                                  TPolygonOwner(NewPolygon())};
  for (int i = 0; i < 2; ++i) {
    for (TRing ring : (i == 0 ? subject : clip).rings) {
      const Tgpc_vertex_list list{static_cast<std::int32_t>(ring.size()), ring.data()};
      AddContour(polygons[i].get(), &list, false);
    }
  }
  ClipPolygons(operation, polygons[0].get(), polygons[1].get(), polygons[2].get());
  TShape result;
  for (std::int32_t i = 0; i < polygons[2]->num_contours; ++i) {
    const Tgpc_vertex_list& list = polygons[2]->contour[i];
    result.rings.emplace_back(list.vertex, list.vertex + list.num_vertices);
    result.holes.push_back(polygons[2]->hole[i] != 0);
  }
  return result;
}

long double SignedArea(const TRing& ring) {
  long double doubled = 0;
  for (std::size_t i = 1; i + 1 < ring.size(); ++i) doubled += Cross(ring[0], ring[i], ring[i + 1]);
  return doubled / 2;
}

long double SignedArea(const TShape& shape) {
  long double area = 0;
  for (const TRing& ring : shape.rings) area += SignedArea(ring);
  return area;
}

double Perimeter(const TShape& shape) {
  double length = 0;
  ForEachEdge(shape, [&](Tgpc_vertex a, Tgpc_vertex b) { length += std::hypot(b.x - a.x, b.y - a.y); });
  return length;
}

std::size_t VertexCount(const TShape& shape) {
  std::size_t count = 0;
  for (const TRing& ring : shape.rings) count += ring.size();
  return count;
}

bool IsIn(const TShape& shape, Tgpc_vertex point) {
  bool in = false;
  ForEachEdge(shape, [&](Tgpc_vertex a, Tgpc_vertex b) {
    if ((a.y > point.y) != (b.y > point.y) && (Cross(a, b, point) > 0) == (b.y < a.y)) in = !in;
  });
  return in;
}

bool IsNearOutline(const TShape& shape, Tgpc_vertex point, double distance) {
  bool near = false;
  ForEachEdge(shape, [&](Tgpc_vertex a, Tgpc_vertex b) {
    const double dx = b.x - a.x, dy = b.y - a.y, squared = dx * dx + dy * dy;
    const double along = (point.x - a.x) * dx + (point.y - a.y) * dy;
    const double t = squared > 0 ? std::clamp(along / squared, 0.0, 1.0) : 0;
    near = near || std::hypot(point.x - a.x - t * dx, point.y - a.y - t * dy) < distance;
  });
  return near;
}

bool Combine(std::uint8_t operation, bool in_subject, bool in_clip) {
  const bool combined[] = {in_subject && !in_clip, in_subject && in_clip, in_subject != in_clip,
                           in_subject || in_clip};
  return combined[operation];
}

long double AreaBySlabs(std::uint8_t operation, const TShape& subject, const TShape& clip) {
  struct TEdge {
    long double x, y, slope, top;
    bool of_clip;
    long double At(long double level) const { return x + (level - y) * slope; }
  };
  std::vector<TEdge> edges;
  std::vector<long double> levels;
  for (const TShape* shape : {&subject, &clip}) {
    ForEachEdge(*shape, [&](Tgpc_vertex a, Tgpc_vertex b) {
      levels.push_back(a.y);
      if (a.y > b.y) std::swap(a, b);
      const long double dx = static_cast<long double>(b.x) - a.x, dy = static_cast<long double>(b.y) - a.y;
      if (dy > 0) edges.push_back({a.x, a.y, dx / dy, b.y, shape == &clip});
    });
  }
  for (const TEdge& a : edges) {
    for (const TEdge& b : edges) {
      const long double level = a.y + (b.At(a.y) - a.x) / (a.slope - b.slope);
      if (level > std::max(a.y, b.y) && level < std::min(a.top, b.top)) levels.push_back(level);
    }
  }
  std::sort(levels.begin(), levels.end());
  long double area = 0;
  std::vector<std::pair<long double, bool>> cuts;
  for (std::size_t i = 1; i < levels.size(); ++i) {
    const long double middle = (levels[i - 1] + levels[i]) / 2;
    cuts.clear();
    for (const TEdge& edge : edges) {
      if (edge.y < middle && middle < edge.top) cuts.emplace_back(edge.At(middle), edge.of_clip);
    }
    std::sort(cuts.begin(), cuts.end());
    bool in[2] = {};
    for (std::size_t k = 0; k + 1 < cuts.size(); ++k) {
      in[cuts[k].second] ^= true;
      if (!Combine(operation, in[0], in[1])) continue;
      area += (levels[i] - levels[i - 1]) * (cuts[k + 1].first - cuts[k].first);
    }
  }
  return area;
}

std::string ToText(const TShape& shape) {
  std::ostringstream text;
  text.precision(15);
  for (std::size_t i = 0; i < shape.rings.size(); ++i) {
    text << (i ? "; " : "") << (!shape.holes.empty() && shape.holes[i] ? "hole " : "");
    for (const Tgpc_vertex& vertex : shape.rings[i]) {
      text << (&vertex == &shape.rings[i][0] ? "" : " ") << vertex.x << ',' << vertex.y;
    }
  }
  return text.str();
}

}  // namespace Ketril::Tools::Tests
