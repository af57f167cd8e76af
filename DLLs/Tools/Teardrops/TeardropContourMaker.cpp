// The circle outline: a track or an arc meets a circle once, or passes through it.
#include "DLLs/Tools/Teardrops/TeardropContourMaker.h"

#include <algorithm>

#include "DLLs/Tools/Teardrops/TeardropCurves.h"

namespace Ketril::Tools {

TParallelPath::TParallelPath(const TTeardropPath& path, GeoPointType through) {
  if (path.Line) {
    line_ = LineThroughPoint(*path.Line, through);
    path_.Line = &line_;
  } else {
    arc_ = *path.Arc;
    arc_.Radius = PointDistance(through, arc_.Center());
    path_.Arc = &arc_;
  }
}

void TTeardropPath::Move(GeoPointType& Pt, GeoPointType Ref, double Shift) const {
  Line ? MoveAlongLine(Pt, *Line, Ref, Shift) : MoveAlongArc(Pt, *Arc, Ref, Shift);
}

void TTeardropPath::EdgePoints(double Width, GeoPointType P, GeoPointType& E1, GeoPointType& E2) const {
  Line ? LineEdgePoints(*Line, Width, P, E1, E2) : ArcEdgePoints(*Arc, Width, P, E1, E2);
}

TTeardropObjectSize ResolveObjectSize(TTeardropObjectSize Percent, double CircleRadius, std::int32_t Width,
                                      bool UseDiameterAsWidth) {
  const double base = UseDiameterAsWidth ? 2 * CircleRadius : Width;
  return {base * Percent.Length * 0.01, Percent.Width < 0 ? -1.0 : base * Percent.Width * 0.01};
}

namespace {

// One crossing of the path with the circle, and the teardrop there.
struct TSide {
  GeoPointType Hit;           // of the centre line
  GeoPointType Anchor;        // where the teardrop ends on it
  GeoPointType Tail1, Tail2;  // where it ends on the track's edges
  GeoPointType Foot1, Foot2;  // where it lands on the circle
  GeoPointType Ctrl1, Ctrl2;  // of the curves between them
};

class TCircleOutline {
 public:
  TCircleOutline(TTeardropPath path, std::int32_t width, const CircleType& circle, TTeardropObjectSize size,
                 const TTeardropOptionsEx& options)
      : path_(path), width_(width), circle_(circle), size_(size), options_(options) {}

  Ref<IPCB_Contour> Make() {
    GeoPointType hits[2];
    const int count = Hits(path_, hits);
    for (int i = 0; i < count; ++i) {
      TSide& side = sides_[i];
      side.Hit = side.Anchor = hits[i];
      path_.Move(side.Anchor, circle_.Center(), Run(false));
    }
    for (int i = 0; i < count; ++i) {
      if (!MakeSide(sides_[i])) return nullptr;
    }
    return Contour(count);
  }

 private:
  int Hits(const TTeardropPath& path, GeoPointType (&hits)[2]) const {
    int count = 0;
    if (path.Line) {
      IntersectCircleLine(circle_, *path.Line, count, hits[0], hits[1], true);
      return count;
    }
    IntersectCircles(circle_, path.Arc->Circle(), hits[0], hits[1], count);
    return KeepHitsOnArc(*path.Arc, 10, count, hits[0], hits[1]);
  }

  // How far the teardrop runs. On an arc not as far as that it would leave the ring about its centre.
  double Run(bool is_tail) const {
    if (path_.Line) return size_.Length;
    const double distance = PointDistance(circle_.Center(), path_.Arc->Center());
    const double run = std::min(distance - width_ - circle_.Radius, size_.Length);
    if (run >= 0) return run;
    if (!is_tail) return size_.Length;
    const double shortened = size_.Length - width_ / 2.0;
    return shortened > 0 ? shortened : width_ / 2.0;
  }

  bool MakeSide(TSide& side) const {
    double half_width = size_.Width * 0.5;
    if ((options_.Flags & TeardropFlag_ScaleWidth) != 0 && size_.Length > 0) {
      const double run = path_.Line ? PointDistance(side.Anchor, side.Hit)
                                    : ArcLengthBetween(side.Anchor, side.Hit, *path_.Arc);
      half_width *= std::min(1.0, run / size_.Length);
    }
    path_.EdgePoints(width_, side.Anchor, side.Tail1, side.Tail2);
    MoveTail(side.Tail1);
    MoveTail(side.Tail2);
    if (!FindFeet(side)) return false;
    const GeoPointType O = circle_.Center();
    OrderAroundCentre(side.Tail1, side.Tail2, O);
    OrderAroundCentre(side.Foot1, side.Foot2, O);
    TTeardropContourMaker::ParallelProjection(half_width, side.Foot1, side.Foot2, O, side.Hit, circle_);
    if ((options_.Flags & TeardropFlag_Straight) == 0) {
      side.Ctrl1 = Control(side.Tail1, side.Foot1);
      side.Ctrl2 = Control(side.Tail2, side.Foot2);
    }
    return true;
  }

  // Along its own parallel of the track, from that one's own crossing.
  void MoveTail(GeoPointType& tail) const {
    const TParallelPath parallel(path_, tail);
    GeoPointType hits[2];
    const int count = Hits(parallel.Path(), hits);
    if (count == 0) return;
    const bool second = count == 2 && PointDistance(hits[1], tail) <= PointDistance(hits[0], tail);
    tail = hits[second ? 1 : 0];
    parallel.Path().Move(tail, circle_.Center(), Run(true));
  }

  bool FindFeet(TSide& side) const {
    const double distance = PointDistance(circle_.Center(), side.Anchor);
    for (const double factor : {0.8, 1.0}) {
      int count = 0;
      IntersectCircles({side.Anchor.x, side.Anchor.y, factor * distance}, circle_, side.Foot1, side.Foot2,
                       count);
      if (count == 2) return true;
    }
    return false;
  }

  GeoPointType Control(GeoPointType tail, GeoPointType foot) const {
    return path_.Line ? CurveControlPoint(*path_.Line, tail, foot, circle_.Center())
                      : ArcCurveControlPoint(*path_.Arc, tail, foot, circle_.Center());
  }

  bool IsWiderThanTrack(const TSide& side) const { return width_ < PointDistance(side.Foot1, side.Foot2); }

  Ref<IPCB_Contour> Contour(int count) const {
    int first = 0;
    if (count == 2 && !IsWiderThanTrack(sides_[1])) count = 1;
    if (count > 0 && !IsWiderThanTrack(sides_[0])) {
      --count;
      first = 1;
    }
    if (count == 0) return nullptr;
    Ref<TContour> contour = MakeCounted<TContour>();
    const TSide& out = sides_[first];
    AddEdge(*contour, options_, out.Tail1, out.Foot1, out.Ctrl1);
    if (count == 2) {
      const TSide& back = sides_[1];
      AddEdge(*contour, options_, back.Foot1, back.Tail1, back.Ctrl1);
      AddEdge(*contour, options_, back.Tail2, back.Foot2, back.Ctrl2);
    }
    AddEdge(*contour, options_, out.Foot2, out.Tail2, out.Ctrl2);
    return contour;
  }

  const TTeardropPath path_;
  const std::int32_t width_;
  const CircleType circle_;
  const TTeardropObjectSize size_;  // in units
  const TTeardropOptionsEx& options_;
  TSide sides_[2];
};

Ref<IPCB_Contour> ToCircleContour(TTeardropPath path, std::int32_t width, const CircleType& circle,
                                  TTeardropObject kind, const TTeardropOptionsEx& options, bool by_diameter) {
  const TTeardropObjectSize size =
      ResolveObjectSize(options.SizePercentArray[kind], circle.Radius, width, by_diameter);
  return TCircleOutline(path, width, circle, size, options).Make();
}

// The point on the line's crossings with the circle, if one of them is not farther from P than the point is.
void PullToCrossing(GeoPointType& point, const CircleType& circle, const LineType& line, GeoPointType P) {
  GeoPointType hits[2];
  int count = 0;
  IntersectCircleLine(circle, line, count, hits[0], hits[1], true);
  if (count == 0) return;
  if (count == 1) hits[1] = hits[0];
  const double distance = PointDistance(point, P);
  const double distances[2] = {PointDistance(hits[0], P), PointDistance(hits[1], P)};
  if (distances[0] > distance && distances[1] > distance) return;
  point = distances[1] <= distances[0] ? hits[1] : hits[0];
}

}  // namespace

Ref<IPCB_Contour> TTeardropContourMaker::LineToCircleContour(const LineType& ALine, std::int32_t ATrackWidth,
                                                             const CircleType& ACircle,
                                                             TTeardropObject ATeardropObject,
                                                             const TTeardropOptionsEx& AOptions,
                                                             bool UseDiameterAsWidth) {
  return ToCircleContour({&ALine, nullptr}, ATrackWidth, ACircle, ATeardropObject, AOptions,
                         UseDiameterAsWidth);
}

Ref<IPCB_Contour> TTeardropContourMaker::ArcToCircleContour(const ThinArcType& AArc, std::int32_t AArcWidth,
                                                            const CircleType& ACircle,
                                                            TTeardropObject ATeardropObject,
                                                            const TTeardropOptionsEx& AOptions,
                                                            bool UseDiameterAsWidth) {
  return ToCircleContour({nullptr, &AArc}, AArcWidth, ACircle, ATeardropObject, AOptions, UseDiameterAsWidth);
}

void TTeardropContourMaker::ParallelProjection(double Width, GeoPointType& A, GeoPointType& B, GeoPointType O,
                                               GeoPointType P, const CircleType& Circle) {
  if (Width < 0) return;
  const GeoPointType d = SubtractPoints(P, O), reach = ScalePoint(d, 10);
  GeoPointType u;
  UnitVector(d, u);
  const GeoPointType s = ScalePoint(LeftNormal(u), Width);
  const GeoPointType a = SubtractPoints(P, s), b = AddPoints(P, s);
  PullToCrossing(A, Circle, MakeLine(SubtractPoints(a, reach), AddPoints(a, reach)), P);
  PullToCrossing(B, Circle, MakeLine(SubtractPoints(b, reach), AddPoints(b, reach)), P);
}

}  // namespace Ketril::Tools
