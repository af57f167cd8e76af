#include "DLLs/Tools/Convertors/Microstripe.h"

#include <algorithm>

#include "DLLs/Tools/Frame/NumberText.h"
#include "DLLs/Tools/Frame/PCB_Layer.h"
#include "DLLs/Tools/Geometry/ContourMaker.h"

namespace Ketril::Tools {

namespace {

constexpr std::int32_t kArcResolution = 10;

// Entries of the points in the order of the ring: five, from `First` on by `Step`.
struct TWalk {
  int First, Step;
};

bool StartsAt(const TPolySegment& segment, const TPolySegment& other) {
  return segment.vx == other.vx && segment.vy == other.vy;
}

// A segment of the outline, which grows as needed.
void PutSegment(TPolygonalShape* outline, std::int32_t index, const TPolySegment& segment) {
  if (index >= outline->PointCount()) outline->SetState_PointCount(index + 1);
  outline->SetState_Segments(index, segment);
}

// Walks the points from the track's frame onto the board, into the outline from index k on, which moves
// behind them. Gives what it wrote.
std::array<TPolySegment, 5> PutPoints(TPolygonalShape* outline, std::int32_t& k,
                                      const TMicrostripePoints& points, TWalk walk,
                                      const TMicrostripeFrame& frame, bool mirror, double axis) {
  std::array<TPolySegment, 5> written;
  int entry = walk.First;
  for (TPolySegment& segment : written) {
    GeoPointType point = points[static_cast<std::size_t>(entry)];
    TransformPoint(point, frame.Right.x, frame.Right.y, frame.Angle(), mirror, axis);
    segment.vx = CutToCoord(point.x);
    segment.vy = CutToCoord(point.y);
    PutSegment(outline, k++, segment);
    entry += walk.Step;
  }
  return written;
}

// How many of the vertices that a ring began with are left, after redundant ones were taken out of it.
std::int32_t CountLeft(const TPolygonalShape* outline, const std::array<TPolySegment, 5>& began_with) {
  const std::int32_t count = outline->PointCount();
  std::int32_t left = 0;
  for (const TPolySegment& segment : began_with) {
    if (left < count && StartsAt(outline->GetState_Segments(left), segment)) ++left;
  }
  return left;
}

}  // namespace

TMicrostripe::TMicrostripe(TBoard* ABoard, TTrack* ATrack) : FTrack(ATrack), FBoard(ABoard) {
  const TCoordPoint a{FTrack->x1(), FTrack->y1()}, b{FTrack->x2(), FTrack->y2()};
  FLeft = {std::min(a.x, b.x), std::min(a.y, b.y)};
  FRight = {std::max(a.x, b.x), std::max(a.y, b.y)};
}

std::u16string TMicrostripe::EndKey(TCoordPoint end) const {
  return u"x:" + Int64ToText(end.x) + u";y:" + Int64ToText(end.y) + u";layer:" +
         LayerToString(FTrack->Layer());
}

const std::u16string& TMicrostripe::LeftEndUniqueString() {
  if (FLeftEndUniqueString.empty()) FLeftEndUniqueString = EndKey(FLeft);
  return FLeftEndUniqueString;
}

const std::u16string& TMicrostripe::RightEndUniqueString() {
  if (FRightEndUniqueString.empty()) FRightEndUniqueString = EndKey(FRight);
  return FRightEndUniqueString;
}

void TMicrostripe::Set(TMicrostripeFlag flag, bool value) {
  FBitField = value ? FBitField | flag : FBitField & ~std::uint32_t{flag};
}

void TMicrostripe::BuildContour() {
  if (Has(ContourBuilt)) return;
  SetFalseAllFields();
  if (FTrackContour) FTrackContour->Free();
  FTrackContour = nullptr;
  TContourMaker maker;
  maker.SetArcResolution(kArcResolution);
  const Ref<IPCB_GeometricPolygon> area = maker.MakeContour(FTrack, 0, FTrack->Layer());
  FTrackContour = TPolyRegion::Create();
  if (area) FTrackContour->SetRegionData(area.Get());
  FTrackContour->SynchronizeShapeFromGPCPoly();
  // The closing segment goes behind those that count.
  if (Outline()->PointCount() > 0) Outline()->DecrementPointCount();
  const std::int32_t half = (Outline()->PointCount() + 1) / 2;
  SkipLeftIndex = SkipRightIndex = SkipVertCountLToR = half;
  Set(ContourBuilt);
}

void TMicrostripe::CalcMicrostripe(double AOutsideMiter, double AInsideMiter,
                                   TMicrostripePoints& AIntersectionPoints) const {
  AIntersectionPoints = BendPoints(Frame(), AOutsideMiter, AInsideMiter);
}

void TMicrostripe::CreateRightOfMicrostripe(const TMicrostripePoints& AIntersectionPoints, bool ACanMirror) {
  if (!Has(ContourBuilt) || Has(RightDone)) return;
  Set(RightDone);
  Set(RightMirrored, ACanMirror);
  const TMicrostripeFrame frame = Frame();
  std::int32_t k = SkipLeftIndex;
  PutPoints(Outline(), k, AIntersectionPoints, ACanMirror ? TWalk{4, -1} : TWalk{0, 1}, frame, ACanMirror,
            frame.Right.y);
  SkipVertCountLToR = k - SkipLeftIndex;
  PutSegment(Outline(), k, Outline()->GetState_Segments(0));
  Outline()->SetState_PointCount(k);
}

void TMicrostripe::CreateLeftOfMicrostripe(const TMicrostripePoints& AIntersectionPoints, bool ACanMirror) {
  if (!Has(ContourBuilt) || Has(LeftMirrored)) return;
  // Where the right end begins. An outline whose left end was done before is no longer as it was built.
  const std::int32_t right_end = Has(LeftDone) ? SkipLeftIndex : SkipRightIndex;
  Set(LeftDone);
  Set(LeftMirrored, ACanMirror);
  const TMicrostripeFrame frame = Frame();
  TPolyRegion* const region = TPolyRegion::Create();
  TPolygonalShape* const outline = region->Shape();
  outline->SetState_PointCount(0);
  std::int32_t k = 0;
  const auto written = PutPoints(outline, k, AIntersectionPoints, ACanMirror ? TWalk{5, 1} : TWalk{9, -1},
                                 frame, ACanMirror, frame.Turned().y);
  // The vertices of the right end and the closing one behind them, in whose place comes the new first one.
  const std::int32_t count = Outline()->PointCount();
  const std::int32_t last = count > 0 ? std::min(right_end + SkipVertCountLToR, count) : -1;
  for (std::int32_t i = right_end; i <= last; ++i) PutSegment(outline, k++, Outline()->GetState_Segments(i));
  --k;
  PutSegment(outline, k, written.front());
  outline->SetState_PointCount(k);
  region->RemoveRedundantVertices();
  // The right end's points would else go behind vertices that are no longer there.
  SkipLeftIndex = CountLeft(outline, written);
  FTrackContour->Free();
  FTrackContour = region;
}

void TMicrostripe::TrimArcs() {
  if (Has(LeftDone) == Has(RightDone)) return;
  const TMicrostripePoints points = SquarePoints(Frame());
  if (Has(RightDone))
    CreateLeftOfMicrostripe(points, false);
  else
    CreateRightOfMicrostripe(points, false);
}

}  // namespace Ketril::Tools
