// The shapes of the older builder: the fan of tracks and the arcs of one round pad and one straight track.
#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Teardrops/LegacyTeardropBuilder.h"
#include "DLLs/Tools/Teardrops/LegacyTeardropGeometry.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {

namespace {

constexpr TCoord kLeastTrackRadius = 1000;   // a narrower track gets no teardrop
constexpr std::int32_t kAnchorInWidths = 3;  // how far past the pad the fan begins
constexpr TCoord kProbeSize = 20, kProbeHole = 5;
constexpr double kFirstArcAngle = 0.7853981633974483;  // 45 degrees
constexpr double kArcAngleStep = 0.001;                // degrees

// Is there no arc at all between these angles, or a whole circle.
bool IsNoArc(double angle1, double angle2) {
  const double sweep = std::abs(angle1 - angle2);
  return sweep < 0.001 || (sweep > 359.999 && sweep < 360.001);
}

}  // namespace

void TTearDroper::AddTearDrop(TPad* APadOrVia, TPrimitive* ATouchingPrimitive) {
  Lay = ATouchingPrimitive->Layer();
  SetTearDroppingParameterForPad(APadOrVia);
  if (ATouchingPrimitive->ObjectID() != eTrackObject) return;
  TTrack* const T = CheckedCast<TTrack>(ATouchingPrimitive);
  const TCoord x1 = T->x1(), y1 = T->y1(), x2 = T->x2(), y2 = T->y2();
  b1 = GetState_HitTest(APadOrVia, x1, y1, Lay) != nullptr;
  b2 = GetState_HitTest(APadOrVia, x2, y2, Lay) != nullptr;
  px = APadOrVia->GetState_X();
  py = APadOrVia->GetState_Y();
  TrackRadius = T->Width() / 2;
  if (TrackRadius < kLeastTrackRadius || (b1 && b2)) return;
  const auto place = [&](TCoordPoint at_pad, TCoordPoint far_end) {
    tx1 = at_pad.x;
    ty1 = at_pad.y;
    tx2 = far_end.x;
    ty2 = far_end.y;
    Place(APadOrVia, T);
  };
  if (b1) return place({x1, y1}, {x2, y2});
  if (b2) return place({x2, y2}, {x1, y1});
  // The track passes through.
  const LineType line = TrackToLine(T, 0);
  const GeoPointType center = {double(px), double(py)};
  GeoPointType foot;
  bool found = false;
  IntersectLines(line, NormalThroughPoint(line, center), false, foot, found);
  if (!found) foot = center;
  place({Round(foot.x), Round(foot.y)}, {x2, y2});
  place({Round(foot.x), Round(foot.y)}, {x1, y1});
}

void TTearDroper::Place(TPad* P, TTrack* T) {
  if (Options.Style == eArcTearDrop) PlaceArcDrops(P, T);
  if (Options.Style == eTrackTearDrop) PlaceTrackDrops(P, T);
}

void TTearDroper::SetTearDroppingParameterForPad(const TPad* APad) {
  xSize = APad->StackSizeX(Lay);
  ySize = APad->StackSizeY(Lay);
  pRadius = std::min(xSize, ySize) / 2;
  const TCoord x = APad->X(), y = APad->Y();
  px1 = px2 = x;
  py1 = py2 = y;
  const TPadBox box =
      MakePadBox({double{1} * x - APad->XPadOffset(Lay), double{1} * y - APad->YPadOffset(Lay)}, xSize, ySize,
                 APad->Rotation());
  blx = box.bl.x;
  bly = box.bl.y;
  tlx = box.tl.x;
  tly = box.tl.y;
  trx = box.tr.x;
  ttry = box.tr.y;
  brx = box.br.x;
  bry = box.br.y;
}

TPrimitive* TTearDroper::GetState_HitTest(TPrimitive* P, TCoord HitX, TCoord HitY, TV7_Layer ALayerToCheck) {
  const Ref<IPCB_Board> board = On(P->IPrimitive()).Read(&IPCB_Primitive::GetState_Board);
  if (!board) return nullptr;
  TCoord x1, y1, x2, y2;
  P->GetState_BoundingRectangle_OnLayer(ALayerToCheck, x1, y1, x2, y2);
  if (!IsPointInSegmentBox(HitX, HitY, x1, y1, x2, y2)) return nullptr;
  const TTemporary<TPad> probe(TPad::Create());
  probe->SetLayer(ALayerToCheck);
  probe->SetOwnerBoard(P->OwnerBoard());
  probe->SetMode(ePadMode_Simple);
  probe->SetX(HitX);
  probe->SetY(HitY);
  probe->SetStackSizeX(ALayerToCheck, kProbeSize);
  probe->SetStackSizeY(ALayerToCheck, kProbeSize);
  probe->SetStackShape(ALayerToCheck, eRounded);
  probe->SetHoleSize(kProbeHole);
  probe->ValidateSizeShape();
  const TCoord gap = On(probe->IPrimitive3()).Read(&IPCB_Primitive3::GetState_GapTo, P->IPrimitive().Get());
  return gap < 1 ? P : nullptr;
}

// New copper is on the layer, the net and the pour of the track or arc that it grows from.
void TTearDroper::TakeAfter(const TPrimitive* from, TPrimitive* copper) {
  copper->SetLayer(from->Layer());
  copper->SetVNet(from->vNet());
  if (const TTemporary<TGroup> pour(from->vPolygon()); pour) copper->SetVPolygon(pour.get());
  copper->SetUserRouted(false);
}

void TTearDroper::TakeTrackAngle() {
  TrackAngle = DegToRad(PointAngle(tx2, ty2, tx1, ty1));
}

// Whether the candidates may be placed: all keep clear, or that is not asked for.
template <class Drops>
bool TTearDroper::PassTest(const Drops& candidates) {
  return std::ranges::all_of(candidates, [&](const auto& drop) { return TestObject(drop.get()); }) ||
         Options.Force;
}

void TTearDroper::PlaceCandidate(TPrimitive* drop) {
  Board->RegisterWithPrimaryWarehouse(drop);
  drop->SetTearDrop(true);
  may_hold_drops_ = true;
}

void TTearDroper::PlaceTrackDrops(TPad* APadOrVia, TTrack* ATouchingTrack) {
  const LineType way = {double(px), double(py), double(tx2), double(ty2)};
  if (!FindBoxCrossing({{blx, bly}, {tlx, tly}, {trx, ttry}, {brx, bry}}, way, Pnt)) return;
  TakeTrackAngle();
  DropCount = 0;
  MakeTracksToTest(kAnchorInWidths, ATouchingTrack);
  if (!DropTracksNotNil()) return;
  const std::span drops(DropTrack.data(), static_cast<std::size_t>(DropCount));
  if (PassTest(drops)) {
    Board->SetState_DocumentHasChanged();
    const bool ends_in_center = tx1 == px && ty1 == py;
    for (const TTemporary<TTrack>& drop : drops) {
      // From the centre to the anchor the track itself runs.
      if (!ends_in_center || drop->x1() != px || drop->y1() != py) PlaceCandidate(drop.get());
    }
  } else {
    APadOrVia->SetMiscFlag1(true);
  }
  for (TTemporary<TTrack>& drop : drops) drop.reset();
  DropCount = 0;
}

void TTearDroper::MakeTracksToTest(std::int32_t AStepSize, TTrack* ATouchingTrack) {
  const double reach =
      CoordDistance(tx1, ty1, Pnt.x, Pnt.y) + double{1} * AStepSize * ATouchingTrack->Width();
  ax = Round(tx1 + reach * std::cos(TrackAngle));
  ay = Round(ty1 + reach * std::sin(TrackAngle));
  const auto [low_x, high_x] = std::minmax(tx1, tx2);
  const auto [low_y, high_y] = std::minmax(ty1, ty2);
  const bool is_past_the_end = ax < low_x || ay < low_y || ax > high_x || ay > high_y;
  AnchorX = is_past_the_end ? tx2 : ax;
  AnchorY = is_past_the_end ? ty2 : ay;
  tx = px;
  ty = py;
  c1 = {double(AnchorX), double(AnchorY), CoordDistance(AnchorX, AnchorY, tx, ty)};
  c2 = {tx, ty, double(pRadius - TrackRadius)};
  const auto add = [&](GeoPointType end) {
    DropX = Round(end.x);
    DropY = Round(end.y);
    MakeTrackAndAddToWorkingArray(ATouchingTrack);
  };
  for (; c2.Radius > TrackRadius; c2.Radius -= 2.0 * TrackRadius) {
    IntersectCircles(c1, c2, Int1, Int2, Count);
    if (Count == 0) continue;
    add(Int1);
    add(Int2);
  }
  add({tx, ty});
}

void TTearDroper::MakeTrackAndAddToWorkingArray(TTrack* ATouchingTrack) {
  if (static_cast<std::size_t>(DropCount) == DropTrack.size()) return;
  TTemporary<TTrack>& drop = DropTrack[static_cast<std::size_t>(DropCount++)];
  drop.reset(TTrack::Create());
  drop->SetX1(DropX);
  drop->SetY1(DropY);
  drop->SetX2(AnchorX);
  drop->SetY2(AnchorY);
  drop->SetWidth(ATouchingTrack->Width());
  TakeAfter(ATouchingTrack, drop.get());
}

bool TTearDroper::DropTracksNotNil() const {
  const auto end = DropTrack.begin() + DropCount;
  return DropCount != 0 && std::all_of(DropTrack.begin(), end, [](const auto& drop) { return bool(drop); });
}

void TTearDroper::PlaceArcDrops(TPad* APadOrVia, TTrack* ATouchingTrack) {
  TakeTrackAngle();
  MakeArcsToTest(APadOrVia, ATouchingTrack);
  if (DropArcsNotNil() && PassTest(DropArc)) {
    Board->SetState_DocumentHasChanged();
    for (const TTemporary<TArc>& drop : DropArc) PlaceCandidate(drop.get());
  } else {
    APadOrVia->SetMiscFlag1(true);
  }
  DropArc.clear();
}

void TTearDroper::MakeArcsToTest(TPad* APadOrVia, TTrack* ATouchingTrack) {
  DropArc.clear();
  const LineType line = {double(tx1), double(ty1), double(tx2), double(ty2)};
  const GeoPointType center = {double(px), double(py)};
  GeoPointType foot;
  bool found = false;
  IntersectLines(line, NormalThroughPoint(line, center), false, foot, found);
  const double reach = PointDistance(found ? foot : center, line.P2());
  const double length = PointDistance(line.P1(), line.P2());
  double offset =
      length > 0
          ? std::abs(CrossProduct(SubtractPoints(line.P2(), line.P1()), SubtractPoints(center, line.P1()))) /
                length
          : PointDistance(center, line.P1());
  if (offset > 0) {
    const double a = DegToRad(PointAngle(px, py, tx1, ty1));
    const int quadrant = AngleQuadrant(RadToDeg(TrackAngle - a));
    if (quadrant <= 2) offset = -offset;  // the centre lies to the right of the way
  }
  if (pRadius > reach) return;
  MakeArcFan(false, -offset, reach, APadOrVia, ATouchingTrack);
  MakeArcFan(true, offset, reach, APadOrVia, ATouchingTrack);
}

// An arc of a teardrop touches the track's middle line and a circle of radius c about the pad's centre, which
// is `Offset` beside that line. With theta the angle at the pad's centre between the way of the track and the
// arc's centre, the radius is f(theta) = (c + k Offset) / (k - 1), k = 1 / sin theta, and the arc's centre
// that plus c from the pad's.
void TTearDroper::MakeArcFan(bool Side, double Offset, double Reach, TPad* P, TTrack* T) {
  const double step = DegToRad(kArcAngleStep);
  const TCoord width = T->Width();
  double theta = kFirstArcAngle, c = pRadius - width / 2;
  const auto radius = [&](double k) { return Round((c + k * Offset) / (k - 1)); };
  // Narrower, until the arc no longer meets the track past its far end; by the radius of the step before.
  ArcRadius = radius(1 / std::sin(theta));
  while ((ArcRadius + c) * std::cos(theta) > Reach && theta > step) {
    ArcRadius = radius(1 / std::sin(theta));
    theta -= step;
  }
  if (!(theta > step)) return;

  const double k = 1 / std::sin(theta);
  const double way = Side ? TrackAngle + theta : TrackAngle - theta;
  DropAngle1 = RadToDeg(Side ? way + std::numbers::pi : TrackAngle + std::numbers::pi / 2);
  DropAngle2 = RadToDeg(Side ? TrackAngle + 1.5 * std::numbers::pi : way + std::numbers::pi);
  const CircleType pad = {double(px), double(py), double(pRadius)};
  for (; c + k * Offset > 0; c -= width) {
    ArcRadius = radius(k);
    Arcx = Round(px + (ArcRadius + c) * std::cos(way));
    Arcy = Round(py + (ArcRadius + c) * std::sin(way));
    const auto is_in_pad = [&](double angle) {
      return IsPointInCircle(pad, {double{1} * Round(ArcRadius * CosDeg(angle)) + Arcx,
                                   double{1} * Round(ArcRadius * SinDeg(angle)) + Arcy});
    };
    if (is_in_pad(DropAngle1) && is_in_pad(DropAngle2)) return;
    MakeArcAndAddToWorkingArray(P, T);
  }
}

void TTearDroper::MakeArcAndAddToWorkingArray(TPad* APadOrVia, TTrack* ATouchingTrack) {
  TTemporary<TArc> drop(TArc::Create());
  drop->SetX(Arcx);
  drop->SetY(Arcy);
  drop->SetRadius(ArcRadius);
  drop->SetAngle1(DropAngle1);
  drop->SetAngle2(DropAngle2);
  drop->SetLineWidth(ATouchingTrack->Width());
  TakeAfter(ATouchingTrack, drop.get());
  drop->SetState_XSizeYSize();
  if (IsNoArc(drop->Angle1(), drop->Angle2())) return;
  // Only what links the two is of use.
  const TCoordPoint start = {drop->SX(), drop->SY()}, end = {drop->EX(), drop->EY()};
  const auto is_on = [&](TPrimitive* object, TCoordPoint place) {
    return GetState_HitTest(object, place.x, place.y, Lay) != nullptr;
  };
  if ((is_on(APadOrVia, start) && is_on(ATouchingTrack, end)) ||
      (is_on(APadOrVia, end) && is_on(ATouchingTrack, start)))
    DropArc.push_back(std::move(drop));
}

}  // namespace Ketril::Tools
