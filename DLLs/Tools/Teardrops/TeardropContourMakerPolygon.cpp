// The polygon outline: a track or an arc crosses the outline of a pad.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "DLLs/Tools/Geometry/ContourMaker.h"
#include "DLLs/Tools/Geometry/VertexList.h"
#include "DLLs/Tools/Teardrops/TeardropContourMaker.h"
#include "DLLs/Tools/Teardrops/TeardropCurves.h"

namespace Ketril::Tools {

namespace {

constexpr double kMost = std::numeric_limits<double>::max();
constexpr TCoord kInset = 1200;  // how far teardrops reach into the copper of a pad

int Sign(double value) {
  return value > 0 ? 1 : value < 0 ? -1 : 0;
}

// The outline that counts, and the closed list of its edges.
struct TOutline {
  explicit TOutline(const Tgpc_polygon& polygon) {
    std::int32_t first = 0;
    while (first < polygon.num_contours && polygon.hole[first] != 0) ++first;
    if (first == polygon.num_contours) return;
    const Tgpc_vertex_list& contour = polygon.contour[first];
    for (std::int32_t i = 0; i < contour.num_vertices; ++i) {
      Vertices.push_back({contour.vertex[i].x, contour.vertex[i].y});
      Centroid = AddPoints(Centroid, Vertices.back());
    }
    for (std::size_t i = 0; i < Vertices.size(); ++i) {
      Edges.push_back(MakeLine(Vertices[i], Vertices[(i + 1) % Vertices.size()]));
    }
    if (!Vertices.empty()) Centroid = ScalePoint(Centroid, 1.0 / static_cast<double>(Vertices.size()));
  }

  std::vector<GeoPointType> Vertices;
  std::vector<LineType> Edges;
  GeoPointType Centroid;
};

struct TCrossing {
  GeoPointType Point;
  LineType Edge;
};

// Calls `visit` with each point in which the path meets the edge.
template <class Visit>
void ForEachHit(const TTeardropPath& path, const LineType& edge, Visit visit) {
  GeoPointType hits[2];
  int count = 0;
  if (path.Line) {
    bool found = false;
    IntersectLines(*path.Line, edge, true, hits[0], found);
    count = found ? 1 : 0;
  } else {
    count = LineArcHits(edge, *path.Arc, hits[0], hits[1]);
  }
  for (int i = 0; i < count; ++i) visit(hits[i]);
}

std::vector<TCrossing> FindEdgeCrossings(const TTeardropPath& path, const TOutline& outline) {
  std::vector<TCrossing> crossings;
  for (const LineType& edge : outline.Edges) {
    ForEachHit(path, edge, [&](GeoPointType hit) {
      for (const TCrossing& known : crossings) {
        if (known.Point == hit) return;
      }
      crossings.push_back({hit, edge});
    });
  }
  return crossings;
}

// A point inside the outline, square to the edge at the crossing.
GeoPointType InsidePoint(const TCrossing& crossing, GeoPointType centroid) {
  GeoPointType d = SubtractPoints(crossing.Edge.P1(), crossing.Edge.P2());
  const GeoPointType c = SubtractPoints(crossing.Edge.P1(), centroid);
  d = ScalePoint(d, Sign(CrossProduct(d, c)));
  return SubtractPoints(crossing.Point, LeftNormal(d));
}

// The vertices that are seen from A at the widest angle from the track, one on each side.
void SilhouetteVertices(const std::vector<GeoPointType>& vertices, GeoPointType C, GeoPointType A,
                        GeoPointType& B1, GeoPointType& B2) {
  B1 = B2 = A;
  if (vertices.size() < 2) return;
  if (vertices.size() == 2) {
    B1 = vertices[0];
    B2 = vertices[1];
    return;
  }
  GeoPointType u;
  UnitVector(SubtractPoints(A, C), u);
  double best1 = kMost, best2 = kMost;
  for (const GeoPointType vertex : vertices) {
    GeoPointType v;
    UnitVector(SubtractPoints(A, vertex), v);
    const bool is_first = CrossProduct(u, v) > 0;
    double& best = is_first ? best1 : best2;
    const double dot = DotProduct(u, v);
    if (dot >= best) continue;
    best = dot;
    (is_first ? B1 : B2) = vertex;
  }
}

// Among the edges that end in B the one nearest to T; `otherwise` when there is none.
LineType EdgeAt(std::span<const LineType> edges, GeoPointType B, GeoPointType T, const LineType& otherwise) {
  LineType found = otherwise;
  double best = kMost;
  for (const LineType& edge : edges) {
    if (edge.P1() != B && edge.P2() != B) continue;
    const double distance = PointToSegmentDistance(T, edge);
    if (distance >= best) continue;
    best = distance;
    found = edge;
  }
  return found;
}

// Pads and tracks have whole coordinates: edges that run side by side but for rounding meet metres away.
bool AreParallel(const LineType& a, const LineType& b) {
  constexpr double kSine = 1e-3;  // by which rounding turns an edge of 0.1 mil
  GeoPointType u, v;
  UnitVector(SubtractPoints(a.P2(), a.P1()), u);
  UnitVector(SubtractPoints(b.P2(), b.P1()), v);
  return std::abs(CrossProduct(u, v)) < kSine;
}

// Where the pad's own edge meets the track's, so that the curve runs into the pad along it. Lines that are
// parallel but for rounding meet only in an end of one that lies on the other.
GeoPointType FootControlPoint(const LineType& edge, const LineType& axis, GeoPointType T, GeoPointType B) {
  const LineType track_edge = LineThroughPoint(axis, T);
  GeoPointType meet;
  bool found = false;
  IntersectLines(edge, track_edge, false, meet, found);
  const std::array ends = {edge.P1(), edge.P2(), track_edge.P1(), track_edge.P2()};
  if (found && std::ranges::find(ends, meet) == ends.end()) found = !AreParallel(edge, track_edge);
  return found ? meet : Midpoint(B, T);
}

class TPolygonTeardrop {
 public:
  TPolygonTeardrop(const TTeardropPath& path, std::int32_t width, const TOutline& outline,
                   TTeardropObjectSize size, const TTeardropOptionsEx& options)
      : path_(path), width_(width), outline_(outline), size_(size), options_(options) {}

  // Empty when the foot is no wider than the track.
  Ref<IPCB_Contour> Make(const TCrossing& crossing) const {
    const GeoPointType C = crossing.Point;
    GeoPointType A = C;
    path_.Move(A, InsidePoint(crossing, outline_.Centroid), size_.Length);
    GeoPointType T1, T2, B1, B2;
    path_.EdgePoints(width_, A, T1, T2);
    MoveTail(T1, SubtractPoints(A, C));
    MoveTail(T2, SubtractPoints(A, C));
    SilhouetteVertices(outline_.Vertices, C, A, B1, B2);
    double half_width = size_.Width * 0.5;
    if ((options_.Flags & TeardropFlag_ScaleWidth) != 0 && size_.Length > 0)
      half_width *= PointDistance(A, C) / size_.Length;
    TTeardropContourMaker::ParallelProjection(half_width, B1, B2, A, C, outline_.Edges);
    if (!(width_ < PointDistance(B1, B2))) return nullptr;
    if (DotProduct(SubtractPoints(T1, T2), SubtractPoints(B1, B2)) < 0) SwapPoints(T1, T2);

    GeoPointType ctrl1, ctrl2;
    if ((options_.Flags & TeardropFlag_Straight) == 0) {
      const LineType foot = MakeLine(B1, B2), axis = MakeLine(A, C);
      ctrl1 = FootControlPoint(EdgeAt(outline_.Edges, B1, T1, foot), axis, T1, B1);
      ctrl2 = FootControlPoint(EdgeAt(outline_.Edges, B2, T2, foot), axis, T2, B2);
    }
    Ref<TContour> contour = MakeCounted<TContour>();
    AddEdge(*contour, options_, T1, B1, ctrl1);
    AddEdge(*contour, options_, B2, T2, ctrl2);
    return contour;
  }

 private:
  // From where the track's edge itself meets the outline; `way` leads from the crossing to the anchor.
  void MoveTail(GeoPointType& tail, GeoPointType way) const {
    const TParallelPath parallel(path_, tail);
    double best = kMost;
    GeoPointType nearest;
    for (const LineType& edge : outline_.Edges) {
      ForEachHit(parallel.Path(), edge, [&](GeoPointType hit) {
        const double distance = PointDistance(hit, tail);
        if (distance >= best) return;
        best = distance;
        nearest = hit;
      });
    }
    if (best == kMost) return;
    tail = nearest;
    parallel.Path().Move(tail, SubtractPoints(nearest, way), size_.Length);
  }

  const TTeardropPath path_;
  const std::int32_t width_;
  const TOutline& outline_;
  const TTeardropObjectSize size_;
  const TTeardropOptionsEx& options_;
};

TPolygonOwner PolygonOf(const Ref<IPCB_GeometricPolygon>& area) {
  TPolygonOwner polygon(NewPolygon());
  if (!area) return polygon;
  const std::int32_t count = On(area).Read(&IPCB_GeometricPolygon::GetState_Count);
  for (std::int32_t i = 0; i < count; ++i) {
    const Ref<IPCB_Contour> contour = On(area).Read(&IPCB_GeometricPolygon::GetState_Contour, i);
    AddContour(polygon.get(), On(contour).Read(&IPCB_Contour::GetState_VertexList),
               On(area).Read(&IPCB_GeometricPolygon::GetState_IsHole, i));
  }
  return polygon;
}

// Which side of the first edge P lies on, by a hundredth of a unit: a crossing with that edge is on it,
// however it was rounded.
int SideOfFirstEdge(const LineType& edge, GeoPointType P) {
  constexpr double kOnTheLine = 0.01;
  const GeoPointType way = SubtractPoints(edge.P1(), edge.P2());
  const double cross = CrossProduct(way, SubtractPoints(edge.P1(), P));
  return std::abs(cross) <= kOnTheLine * PointLength(way) ? 0 : Sign(cross);
}

}  // namespace

std::optional<TContourList> TTeardropContourMaker::TrackToPadContours(const TPrimitive* ATrackOrArc,
                                                                      const TPad* APad, TV7_Layer ALayer,
                                                                      const TTeardropOptionsEx& AOptions) {
  constexpr std::int32_t kArcResolution = 2000;
  TPolygonOwner outline;
  {
    TContourMaker maker;
    maker.SetArcResolution(kArcResolution);
    outline = PolygonOf(maker.MakeContour(APad, -kInset, ALayer));
  }
  const std::int32_t width = TrackOrArcWidth(ATrackOrArc);
  const TTeardropObjectSize size =
      ResolveObjectSize(AOptions.SizePercentArray[eTeardropObject_Pad], 0, width, false);
  if (ATrackOrArc->ObjectID() == eTrackObject) {
    const LineType line = TrackToLine(ATrackOrArc, 0);
    return ToPolygonContours(nullptr, &line, width, *outline, size, AOptions);
  }
  if (ATrackOrArc->ObjectID() == eArcObject) {
    const ThinArcType arc = ArcToThinArc(ATrackOrArc);
    return ToPolygonContours(&arc, nullptr, width, *outline, size, AOptions);
  }
  return std::nullopt;
}

std::optional<TContourList> TTeardropContourMaker::ToPolygonContours(const ThinArcType* Arc,
                                                                     const LineType* Line, std::int32_t Width,
                                                                     const Tgpc_polygon& Polygon,
                                                                     TTeardropObjectSize Size,
                                                                     const TTeardropOptionsEx& Options) {
  const TTeardropPath path = {Line, Arc};
  const TOutline outline(Polygon);
  const std::vector<TCrossing> crossings = FindEdgeCrossings(path, outline);
  if (crossings.empty()) return std::nullopt;
  const TPolygonTeardrop teardrop(path, Width, outline, Size, Options);
  TContourList contours;
  for (const TCrossing& crossing : crossings) {
    if (Ref<IPCB_Contour> contour = teardrop.Make(crossing)) contours.push_back(std::move(contour));
  }
  return contours;
}

void TTeardropContourMaker::ParallelProjection(double Width, GeoPointType& A, GeoPointType& B, GeoPointType O,
                                               GeoPointType P, std::span<const LineType> Edges) {
  if (Edges.empty()) return;
  const double inset = -kInset * SideOfFirstEdge(Edges.front(), P);
  const GeoPointType d = SubtractPoints(P, O), reach = ScalePoint(d, 10);
  GeoPointType u;
  UnitVector(d, u);
  const GeoPointType w = LeftNormal(ScalePoint(u, Width));
  struct TPull {
    GeoPointType& point;
    LineType line;
    double best;
  };
  const auto pull_along = [&](GeoPointType& point, GeoPointType q) {
    return TPull{point, MakeLine(SubtractPoints(q, reach), AddPoints(q, reach)),
                 PointDistanceSquared(O, point)};
  };
  TPull pulls[] = {pull_along(A, AddPoints(P, w)), pull_along(B, SubtractPoints(P, w))};
  for (const LineType& edge : Edges) {
    GeoPointType along;
    UnitVector(SubtractPoints(edge.P2(), edge.P1()), along);
    for (TPull& pull : pulls) {
      GeoPointType meet;
      bool found = false;
      IntersectLines(pull.line, edge, true, meet, found);
      if (!found) continue;
      const double distance = PointDistanceSquared(O, meet);
      if (distance >= pull.best) continue;
      pull.best = distance;
      pull.point = AddPoints(meet, {along.y * inset, -along.x * inset});
    }
  }
}

}  // namespace Ketril::Tools
