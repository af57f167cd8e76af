#include "DLLs/Tools/Teardrops/TeardropPartners.h"

#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {

namespace {

TTemporary<TPad> MakeRoundPad(TCoordPoint place, TCoord size, TV7_Layer layer, TBoard* board) {
  TTemporary<TPad> pad(TPad::Create());
  pad->SetX(place.x);
  pad->SetY(place.y);
  pad->SetLayer(layer);
  pad->SetStackSizeX(eV6_TopLayer, size);
  pad->SetStackSizeY(eV6_TopLayer, size);
  pad->SetMultiLayerHighBits(0);
  pad->SetOwnerBoard(board);
  return pad;
}

// Whether a teardrop that touches both ends on B and runs along A.
bool IsDropBetween(TPrimitive* D, TPrimitive* A, TPrimitive* B) {
  if (const auto* region = dynamic_cast<TPolyRegion*>(D)) {
    const Ref<IPCB_GeometricPolygon> area = region->RegionData();
    if (!area || On(area).Read(&IPCB_GeometricPolygon::GetState_Count) == 0) return false;
    const Ref<IPCB_Contour> outline = On(area).Read(&IPCB_GeometricPolygon::GetState_Contour, 0);
    if (On(outline).Read(&IPCB_Contour::GetState_Count) == 0) return false;
    // An outline begins with a tail.
    return IsPointOnTrackOrArc(On(outline).Read(&IPCB_Contour::GetState_PointX, 0),
                               On(outline).Read(&IPCB_Contour::GetState_PointY, 0), A);
  }
  TCoordPoint start, end;
  if (const auto* arc = dynamic_cast<TArc*>(D)) {
    start = {arc->SX(), arc->SY()};
    end = {arc->EX(), arc->EY()};
  } else if (const auto* track = dynamic_cast<TTrack*>(D)) {
    start = {track->x1(), track->y1()};
    end = {track->x2(), track->y2()};
  } else {
    return false;
  }
  const TCoordPoint tail = IsPointTouching(start.x, start.y, B) ? end : start;
  return IsPointOnTrackOrArc(tail.x, tail.y, A);
}

}  // namespace

bool IsTrackOrArc(const TPrimitive* P) {
  const TObjectId kind = P->ObjectID();
  return kind == eTrackObject || kind == eArcObject;
}

std::vector<GeoPointType> FindCrossings(const TPrimitive* P, const TPrimitive* T) {
  if (P->ObjectID() != eTrackObject) return {};
  const LineType line = TrackToLine(P, 0);
  GeoPointType points[2];
  int count = 0;
  if (T->ObjectID() == eTrackObject) {
    bool found = false;
    IntersectLines(line, TrackToLine(T, 0), true, points[0], found);
    count = found ? 1 : 0;
  } else {
    IntersectArcLine(ArcToThinArc(T), line, points[0], points[1], count);
  }
  return {points, points + count};
}

TTemporary<TPad> MakeViaPad(const TVia* via, TV7_Layer layer, TBoard* board) {
  return MakeRoundPad({via->GetState_X(), via->GetState_Y()}, via->StackSize(layer), layer, board);
}

TTemporary<TPad> MakeVirtualPad(GeoPointType point, TCoord width, TV7_Layer layer, TBoard* board) {
  return MakeRoundPad({Round(point.x), Round(point.y)}, width, layer, board);
}

void ForEachDropBetween(TPrimitive* P, TPrimitive* T, FunctionRef<void(TTouchList&, std::int32_t)> visit) {
  const bool along_P = IsTrackOrArc(P) && (!IsTrackOrArc(T) || TrackOrArcWidth(P) <= TrackOrArcWidth(T));
  if (!along_P && !IsTrackOrArc(T)) return;
  TPrimitive* A = along_P ? P : T;
  TPrimitive* B = along_P ? T : P;
  TTouchList touching_A, touching_B;
  CollectTouchingPrimitives(A, touching_A);
  CollectTouchingPrimitives(B, touching_B);
  for (std::int32_t i = touching_A.Count() - 1; i >= 0; --i) {
    TPrimitive* D = touching_A.At(i);
    if (D->TearDrop() && D->FindInContainer(touching_B.List()) >= 0 && IsDropBetween(D, A, B))
      visit(touching_A, i);
  }
}

}  // namespace Ketril::Tools
