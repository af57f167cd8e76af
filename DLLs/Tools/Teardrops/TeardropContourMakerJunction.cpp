// The junction outline: three or more tracks of one width meet in a point.
#include <algorithm>
#include <cmath>

#include "DLLs/Tools/Teardrops/TeardropContourMaker.h"
#include "DLLs/Tools/Teardrops/TeardropCurves.h"

namespace Ketril::Tools {

namespace {

struct TTrackAngleRec {
  const TNodeTrack* Track = nullptr;
  double Angle = 0;  // degrees, of the way out of the junction
  GeoPointType Q;    // a little way out
};

GeoPointType Direction(const LineType& line) {
  GeoPointType u;
  UnitVector(SubtractPoints(line.P2(), line.P1()), u);
  return u;
}

bool IsCollinear(const TNodeTrack& K1, const TNodeTrack& K2) {
  return std::abs(DotProduct(Direction(K1.Line), Direction(K2.Line))) > 0.999;
}

// Of two tracks that leave a shared end in nearly one direction one is enough; so it is of two without one.
bool IsSameDirection(const TNodeTrack& K, const TNodeTrack& T) {
  const LineType &k = K.Line, &t = T.Line;
  const auto leave_together = [](GeoPointType shared, GeoPointType a, GeoPointType b) {
    GeoPointType u, v;
    UnitVector(SubtractPoints(shared, a), u);
    UnitVector(SubtractPoints(shared, b), v);
    return DotProduct(u, v) > 0.99;
  };
  if (PointsNear(k.P1(), t.P1())) return leave_together(k.P1(), k.P2(), t.P2());
  if (PointsNear(k.P2(), t.P1())) return leave_together(k.P2(), k.P1(), t.P2());
  if (PointsNear(k.P1(), t.P2())) return leave_together(k.P1(), k.P2(), t.P1());
  if (PointsNear(k.P2(), t.P2())) return leave_together(k.P2(), k.P1(), t.P1());
  return true;
}

// The tracks that count, by their angles.
std::vector<TTrackAngleRec> CollectTracks(const TTeardropTJunctionNode& node, GeoPointType C) {
  std::vector<TTrackAngleRec> accepted;
  for (const TNodeTrack& track : node.TrackList()) {
    const GeoPointType first = track.Line.P1(), second = track.Line.P2();
    const bool from_first = PointsNear(first, C);
    if (!from_first && !PointsNear(second, C)) continue;
    const GeoPointType far_end = from_first ? second : first;
    GeoPointType Q = from_first ? first : second;
    MovePointToward(Q, far_end, 100, true);
    if (std::ranges::any_of(
            accepted, [&](const TTrackAngleRec& known) { return IsSameDirection(*known.Track, track); }))
      continue;
    accepted.push_back({&track, PointAngle(far_end.x, far_end.y, C.x, C.y), Q});
  }
  std::ranges::stable_sort(accepted, {}, &TTrackAngleRec::Angle);
  return accepted;
}

class TJunctionOutline {
 public:
  TJunctionOutline(std::vector<TTrackAngleRec> tracks, GeoPointType C, const TTeardropOptionsEx& options)
      : tracks_(std::move(tracks)), C_(C), options_(options), stem_(FindStem()) {}

  Ref<IPCB_Contour> Make() {
    const int n = static_cast<int>(tracks_.size());
    for (int i = 0; i <= n; ++i) {
      const TTrackAngleRec& track = At(i);
      GeoPointType E1, E2;
      LineEdgePoints(track.Track->Line, track.Track->Width, track.Q, E1, E2);
      // E1 faces the next track.
      if (CrossProduct(SubtractPoints(E1, E2), SubtractPoints(C_, E2)) < 0) SwapPoints(E1, E2);
      if (i > 0) AddCorner(i, E2);
      edge_before_ = LineThroughPoint(track.Track->Line, E1);
      point_before_ = E1;
    }
    return contour_;
  }

 private:
  const TTrackAngleRec& At(int i) const { return tracks_[static_cast<std::size_t>(i) % tracks_.size()]; }

  // In a T the track that is not part of the straight run; -1 elsewhere.
  int FindStem() const {
    if (tracks_.size() != 3) return -1;
    const auto is_run = [&](int a, int b) { return IsCollinear(*At(a).Track, *At(b).Track); };
    return is_run(0, 1) ? 2 : is_run(1, 2) ? 0 : is_run(0, 2) ? 1 : -1;
  }

  // The arms of a T run only as far as the extra width asks.
  double ArmLength(int i) const {
    const int index = i % static_cast<int>(tracks_.size());
    const TTeardropObjectSize row = options_.SizePercentArray[eTeardropObject_TJunction];
    const double width = At(index).Track->Width;
    if (stem_ >= 0 && index != stem_) return (width * std::max(1.0001, row.Width / 100) - width) * 0.5;
    return width * row.Length / 100;
  }

  // A place beside the junction, square to the line, is in neither direction from it. The junction's own
  // point is whole, so it may be off by half a unit in x and y.
  bool IsBeside(GeoPointType X, const LineType& line) const {
    constexpr double kSquare = 1;
    return std::abs(DotProduct(Direction(line), SubtractPoints(X, C_))) <= kSquare;
  }

  // Between the track before and this one, whose edge begins in E2.
  void AddCorner(int i, GeoPointType E2) {
    const LineType edge = LineThroughPoint(At(i).Track->Line, E2);
    GeoPointType X, before = point_before_;
    bool found = false;
    IntersectLines(edge, edge_before_, true, X, found);
    if (found) {
      // The flat side of a straight run: its two edges are one line, on which nothing is to be rounded off.
      if (IsBeside(X, edge) || IsBeside(X, edge_before_)) return AddVertex(*contour_, C_);
      E2 = before = X;
      MoveAlongLine(E2, edge, C_, ArmLength(i));
      MoveAlongLine(before, edge_before_, C_, ArmLength(i - 1));
    }
    if ((options_.Flags & TeardropFlag_Straight) != 0) {
      AddVertex(*contour_, before);
      AddVertex(*contour_, E2);
      return;
    }
    if (!found) X = Midpoint(before, E2);
    double angle = PointAngle(E2.x, E2.y, X.x, X.y) - PointAngle(before.x, before.y, X.x, X.y);
    NormalizeAngle(angle);
    if (angle < 170) {
      CurveToContour(*contour_, before, X, E2, 0.1);
    } else {
      AddVertex(*contour_, C_);
    }
  }

  const std::vector<TTrackAngleRec> tracks_;
  const GeoPointType C_;
  const TTeardropOptionsEx& options_;
  const int stem_;
  const Ref<TContour> contour_ = MakeCounted<TContour>();
  LineType edge_before_;  // of the track before, on the side of this one, and where it begins
  GeoPointType point_before_;
};

}  // namespace

Ref<IPCB_Contour> TTeardropContourMaker::TrackJunctionContour(
    const TTeardropTJunctionNode& ATeardropTJunctionNode, const TTeardropOptionsEx& AOptions) {
  if (ATeardropTJunctionNode.Count() < 3) return nullptr;
  const TNodePoint place = ATeardropTJunctionNode.NodePoint();
  const GeoPointType C = {double(place.X), double(place.Y)};
  std::vector<TTrackAngleRec> tracks = CollectTracks(ATeardropTJunctionNode, C);
  if (tracks.size() < 3) return nullptr;
  return TJunctionOutline(std::move(tracks), C, AOptions).Make();
}

}  // namespace Ketril::Tools
