// `TMicrostripe`: a selected track on its way into a microstrip, and its outline as it is edited.
#pragma once

#include <string>

#include "DLLs/Tools/Convertors/MicrostripePoints.h"
#include "DLLs/Tools/Frame/PrimitivesAreas.h"
#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesLines.h"

namespace Ketril::Tools {

enum TMicrostripeFlag : std::uint32_t {
  LeftMirrored = 1,   // the points of the left end were mirrored about the track's centre line
  RightMirrored = 2,  // those of the right end
  LeftDone = 4,       // the left end has its new points
  RightDone = 8,      // the right end has
  Listed = 16,        // it is in the chain
  ContourBuilt = 32,  // there is an outline
  Consumed = 64,      // the outline went into a polygon; the track will be removed
};

// The ends of a track are the low and the high corner of its box. A track that falls to the right has no end
// at either, and so meets others only there, where it is not.
//
// All operations raise EHostError.
class TMicrostripe {
 public:
  // Neither is owned. Reads the ends, which count for the whole run.
  TMicrostripe(TBoard* ABoard, TTrack* ATrack);

  TBoard* Board() const { return FBoard; }
  TTrack* Track() const { return FTrack; }
  TCoordPoint Left() const { return FLeft; }
  TCoordPoint Right() const { return FRight; }
  // "x:100;y:200;layer:Top Layer"; made once.
  const std::u16string& LeftEndUniqueString();
  const std::u16string& RightEndUniqueString();
  bool Has(TMicrostripeFlag flag) const { return (FBitField & flag) != 0; }
  void Set(TMicrostripeFlag flag, bool value = true);
  void SetFalseAllFields() { FBitField = 0; }

  // The outline, once it is built, which is the object scope's: a region on no board, without layer and net.
  // The segment at its count closes it.
  TPolygonalShape* Outline() const { return FTrackContour->Shape(); }

  // The outline of the track as it is, unless there is one. What follows takes its ring for counter-clockwise
  // from the top of the left end, the first half of its vertices round the left end and the others round the
  // right one: the order that IPCB_ContourMaker tells. Of a track without width it has no points.
  void BuildContour();
  // The points of a bend at either end, see BendPoints.
  void CalcMicrostripe(double AOutsideMiter, double AInsideMiter,
                       TMicrostripePoints& AIntersectionPoints) const;
  // Put the points in the place of the vertices of one end; mirrored, the partner leaves upwards in the
  // track's frame. Nothing before the outline is built. A right end takes points once. A left end takes them
  // again unless it was mirrored: the later ones then stand in the place of the earlier ones.
  void CreateLeftOfMicrostripe(const TMicrostripePoints& AIntersectionPoints, bool ACanMirror);
  void CreateRightOfMicrostripe(const TMicrostripePoints& AIntersectionPoints, bool ACanMirror);
  // Where one end alone is done, cuts the other one square at the track's end point.
  void TrimArcs();

 private:
  TMicrostripeFrame Frame() const { return {FLeft, FRight, double(FTrack->Width())}; }
  std::u16string EndKey(TCoordPoint end) const;

  TTrack* FTrack;
  TPolyRegion* FTrackContour = nullptr;
  TBoard* FBoard;
  std::uint32_t FBitField = 0;
  std::u16string FLeftEndUniqueString, FRightEndUniqueString;
  std::int32_t SkipLeftIndex = 0;      // how many vertices of the ring are the left end's
  std::int32_t SkipRightIndex = 0;     // the first vertex of the right end, in the outline as built
  std::int32_t SkipVertCountLToR = 0;  // how many are the right end's
  TCoordPoint FLeft, FRight;
};

}  // namespace Ketril::Tools
