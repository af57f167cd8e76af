// What the older builder does with each object that it serves: partners that touch it, and the round pads and
// straight tracks that stand for vias, wider tracks, elongated pads and arcs.
#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Teardrops/LegacyTeardropBuilder.h"
#include "DLLs/Tools/Teardrops/LegacyTeardropGeometry.h"
#include "DLLs/Tools/Teardrops/TeardropPartners.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {

namespace {

TCoordPoint CenterOf(const TPad* pad) {
  return {pad->GetState_X(), pad->GetState_Y()};
}

// What was tried on a stand-in is told of what it stands for.
void PassOnMarks(const TPrimitive* stand_in, TPrimitive* owner) {
  if (stand_in->MiscFlag1()) owner->SetMiscFlag1(true);
  if (stand_in->MiscFlag3()) owner->SetMiscFlag3(true);
}

}  // namespace

void TTearDroper::AddDropsOnTouchingTracks(TPrimitive* TrackOrArc) {
  TPrimitive* const P = TrackOrArc;
  TTouchList touching;
  CollectTouchingPrimitives(P, touching);
  const TObjectId kind = P->ObjectID();
  // A teardrop between P and a partner touches P: without one here there is none to look for, until one is
  // placed.
  may_hold_drops_ = touching.HasTearDrop();
  for (std::int32_t i = 0; i < touching.Count(); ++i) {
    TPrimitive* T = touching.At(i);
    if (!IsPartner(P, T)) continue;
    const TV7_Layer layer = T->Layer();
    if (kind == ePadObject) {
      TPad* pad = CheckedCast<TPad>(P);
      if (pad->StackShape(layer) != eRounded) continue;
      RemoveOldDrops(P, T);
      if (pad->StackSizeX(layer) == pad->StackSizeY(layer)) {
        AddDropsOnTouchingTrack(pad, T);
      } else {
        AddDropsOnElongatedPad(pad, T);
      }
    } else if (kind == eViaObject) {
      const TTemporary<TPad> pad = MakeViaPad(CheckedCast<TVia>(P), layer, Board);
      RemoveOldDrops(P, T);
      AddDropsOnTouchingTrack(pad.get(), T);
      PassOnMarks(pad.get(), P);
    } else {
      for (const GeoPointType point : FindCrossings(P, T)) {
        const TTemporary<TPad> pad = MakeVirtualPad(point, TrackOrArcWidth(P), P->Layer(), Board);
        RemoveOldDrops(P, T);
        AddDropsOnTouchingTrack(pad.get(), T);
      }
    }
  }
  may_hold_drops_ = true;
}

// Whether a teardrop may run along T into P.
bool TTearDroper::IsPartner(const TPrimitive* P, const TPrimitive* T) const {
  if (!IsTrackOrArc(T)) return false;
  if (T->ObjectID() == eTrackObject) {
    const std::int32_t width = TrackOrArcWidth(T), own_width = TrackOrArcWidth(P);
    if (width == own_width || (P->ObjectID() == eTrackObject && own_width < width)) return false;
  }
  return !T->TearDrop();
}

void TTearDroper::RemoveOldDrops(TPrimitive* P, TPrimitive* T) {
  if (may_hold_drops_) RemoveDropsBetweenObjects(P, T);
}

void TTearDroper::AddDropsOnTouchingTrack(TPad* APadOrVia, TPrimitive* ATouchingObject) {
  const auto add = [&](TPrimitive* track) {
    APadOrVia->SetMiscFlag3(true);
    AddTearDrop(APadOrVia, track);
  };
  if (ATouchingObject->ObjectID() == eTrackObject) {
    add(ATouchingObject);
  } else if (ATouchingObject->ObjectID() == eArcObject) {
    for (const TTemporary<TTrack>& track : ArcToTracks(APadOrVia, CheckedCast<TArc>(ATouchingObject)))
      add(track.get());
  }
}

std::vector<TCoordPoint> TTearDroper::ArcHitsOnPad(TPad* APad, TArc* AArc) {
  Lay = AArc->Layer();
  SetTearDroppingParameterForPad(APad);
  return ArcHitsOnBox(ArcToThinArc(AArc), {{blx, bly}, {tlx, tly}, {trx, ttry}, {brx, bry}});
}

std::vector<TTemporary<TTrack>> TTearDroper::ArcToTracks(TPad* APad, TArc* AArc) {
  std::vector<TTemporary<TTrack>> tracks;
  const TCoord width = AArc->LineWidth();
  for (const TChord& chord :
       ArcToChords(ArcToThinArc(AArc), width, ArcHitsOnPad(APad, AArc), CenterOf(APad))) {
    TTemporary<TTrack>& track = tracks.emplace_back(TTrack::Create());
    track->SetX1(chord.First.x);
    track->SetY1(chord.First.y);
    track->SetX2(chord.Second.x);
    track->SetY2(chord.Second.y);
    track->SetWidth(width);
    TakeAfter(AArc, track.get());
    track->SetOwnerBoard(AArc->OwnerBoard());
  }
  return tracks;
}

void TTearDroper::AddDropsOnElongatedPad(TPad* APad, TPrimitive* ATouchingObject) {
  TPrimitive* const T = ATouchingObject;
  const TV7_Layer layer = T->Layer();
  const TPadSpine spine =
      MakePadSpine(CenterOf(APad), APad->StackSizeX(layer), APad->StackSizeY(layer), APad->Rotation());
  GeoPointType places[2];
  const int n = T->ObjectID() == eTrackObject
                    ? ElongatedPadCrossings(spine, TrackToLine(T, 0), places[0], places[1])
                    : ElongatedPadCrossings(spine, ArcToThinArc(T), places[0], places[1]);
  for (int i = 0; i < n; ++i) {
    const TTemporary<TPad> pad = MakeVirtualPad(places[i], spine.Width, layer, Board);
    if (auto* track = dynamic_cast<TTrack*>(T)) {
      const TTemporary<TTrack> cropped = CropTrackAtPoint(track, APad, CenterOf(pad.get()));
      AddDropsOnTouchingTrack(pad.get(), cropped.get());
    } else {
      AddDropsOnTouchingTrack(pad.get(), T);
    }
    PassOnMarks(pad.get(), APad);
  }
}

// A copy of the track that ends beside the place instead of in the pad.
TTemporary<TTrack> TTearDroper::CropTrackAtPoint(TTrack* T, const TPad* APad, TCoordPoint place) {
  TTemporary<TTrack> cropped(T->Replicate(eFullCopy));
  cropped->SetOwnerBoard(Board);  // hit tests ask for one
  const LineType line = TrackToLine(T, 0);
  GeoPointType foot;
  if (!FootOnSegment({double(place.x), double(place.y)}, line, foot)) return cropped;
  const TV7_Layer layer = T->Layer();
  const TCoordPoint center = CenterOf(APad);
  const auto is_in_pad = [&](TCoord x, TCoord y) {
    return IsPointInElongatedPad({x, y}, center, APad->StackSizeX(layer), APad->StackSizeY(layer),
                                 APad->Rotation());
  };
  bool moves_first = is_in_pad(T->x1(), T->y1());
  if (!moves_first && !is_in_pad(T->x2(), T->y2())) {
    GeoPointType of_center;
    if (!FootOnSegment({double(center.x), double(center.y)}, line, of_center)) return cropped;
    moves_first = PointDistanceSquared(line.P1(), of_center) <= PointDistanceSquared(line.P1(), foot);
  }
  if (moves_first) {
    cropped->SetX1(Round(foot.x));
    cropped->SetY1(Round(foot.y));
  } else {
    cropped->SetX2(Round(foot.x));
    cropped->SetY2(Round(foot.y));
  }
  return cropped;
}

}  // namespace Ketril::Tools
