// The outline of one teardrop: a contour that blends a track or an arc into a circle (a via, a round pad, the
// end of a wider track), into the polygon of a pad of another shape, or into a junction of tracks.
//
// Everything is worked out in doubles and rounded, a half to the even number, as it enters the contour; the
// hits of circles and lines forgive by 100 units. Nothing here raises but the reads of wrappers and the
// making of contours: an outline that cannot be made is an empty reference.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "DLLs/Tools/Frame/PrimitivesStack.h"
#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Teardrops/TeardropTJunctionNodeList.h"
#include "Interfaces/PolygonRecords.h"
#include "Interfaces/Teardrops.h"

namespace Ketril::Tools {

using TContourList = std::vector<Ref<IPCB_Contour>>;

// Exactly one of the two says along what a teardrop runs.
struct TTeardropPath {
  const LineType* Line = nullptr;
  const ThinArcType* Arc = nullptr;

  // Away from Ref by Shift, see MoveAlongLine and MoveAlongArc.
  void Move(GeoPointType& Pt, GeoPointType Ref, double Shift) const;
  void EdgePoints(double Width, GeoPointType P, GeoPointType& E1, GeoPointType& E2) const;
};

// The parallel of a path through a point: of a line a line, of an arc the arc about the same centre.
class TParallelPath {
 public:
  TParallelPath(const TTeardropPath& path, GeoPointType through);
  TParallelPath(const TParallelPath&) = delete;
  TParallelPath& operator=(const TParallelPath&) = delete;
  const TTeardropPath& Path() const { return path_; }

 private:
  LineType line_;
  ThinArcType arc_;
  TTeardropPath path_;
};

class TTeardropContourMaker {
 public:
  TTeardropContourMaker() = delete;

  // A track or an arc meets a circle, once or twice: one contour. The sizes are percentages of the circle's
  // diameter or of the track's width. Empty when the track misses the circle, when the circle about the
  // teardrop's end does not cross it, and when the foot is no wider than the track.
  static Ref<IPCB_Contour> LineToCircleContour(const LineType& ALine, std::int32_t ATrackWidth,
                                               const CircleType& ACircle, TTeardropObject ATeardropObject,
                                               const TTeardropOptionsEx& AOptions, bool UseDiameterAsWidth);
  static Ref<IPCB_Contour> ArcToCircleContour(const ThinArcType& AArc, std::int32_t AArcWidth,
                                              const CircleType& ACircle, TTeardropObject ATeardropObject,
                                              const TTeardropOptionsEx& AOptions, bool UseDiameterAsWidth);

  // A track or an arc meets a pad's outline on a layer, as the editor draws it, shrunk by 1200 units: a
  // contour for each crossing whose foot is wider than the track. Empty when it crosses nowhere.
  static std::optional<TContourList> TrackToPadContours(const TPrimitive* ATrackOrArc, const TPad* APad,
                                                        TV7_Layer ALayer, const TTeardropOptionsEx& AOptions);
  // The same of any polygon, of which the first contour that is no hole counts; the size is in units.
  static std::optional<TContourList> ToPolygonContours(const ThinArcType* Arc, const LineType* Line,
                                                       std::int32_t Width, const Tgpc_polygon& Polygon,
                                                       TTeardropObjectSize Size,
                                                       const TTeardropOptionsEx& Options);

  // Three or more tracks meet in the node's point. Tracks that leave in nearly the direction of an earlier
  // one do not count. Two vertices for each corner between neighbours if the flanks are straight. The flat
  // side of a straight run, and of curved flanks a corner of 170 degrees or more, is the node's point alone,
  // which two such corners in a row hold twice.
  static Ref<IPCB_Contour> TrackJunctionContour(const TTeardropTJunctionNode& ATeardropTJunctionNode,
                                                const TTeardropOptionsEx& AOptions);

  // Pull A and B to where the lines parallel to the way from O to P, Width to its left and right, meet the
  // circle or the edges. A negative Width leaves them with the circle.
  static void ParallelProjection(double Width, GeoPointType& A, GeoPointType& B, GeoPointType O,
                                 GeoPointType P, const CircleType& Circle);
  static void ParallelProjection(double Width, GeoPointType& A, GeoPointType& B, GeoPointType O,
                                 GeoPointType P, std::span<const LineType> Edges);
};

// Percentages made lengths; a negative width becomes -1.
TTeardropObjectSize ResolveObjectSize(TTeardropObjectSize Percent, double CircleRadius, std::int32_t Width,
                                      bool UseDiameterAsWidth);

}  // namespace Ketril::Tools
