// The older builder of teardrops, which widens a track's way into round copper with a fan of tracks or a set
// of arcs of the track's own width. It serves round pads, elongated ones too, vias and wider tracks; each
// teardrop is checked for clearances before it is placed, and the board changes at once.
//
// Its teardrops are marked as those of TTeardropBuilder are, so removing takes both.
//
// An arc that meets a pad is worked on as one or two chords; an elongated pad, a via and a wider track as a
// round pad that is on no board, at each place where the track reaches the middle line.
#pragma once

#include <array>
#include <vector>

#include "DLLs/Tools/Frame/FunctionRef.h"
#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Frame/Progress.h"
#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"
#include "DLLs/Tools/Teardrops/LegacyTeardropOptions.h"

namespace Ketril::Tools {

// Of the last run's options: only selected objects.
extern bool TeardropSelectedOnly;

// Serves one command. Every operation raises EHostError when the host fails.
//
// During a run `MiscFlag2` of a pad, via, track or arc says that it is to be served; of a pad or via
// `MiscFlag3` that a teardrop was tried, `MiscFlag1` that one failed. What is tried on the round pads that
// stand for vias and elongated pads is told of these; at a wider track it is told of nothing.
class TTearDroper {
 public:
  // The one teardrop that is worked on: of a round pad and a straight track.
  bool b1 = false, b2 = false;                // does the track's first, second end touch the pad
  TCoord px = 0, py = 0;                      // the pad's centre
  TCoord tx1 = 0, tx2 = 0, ty1 = 0, ty2 = 0;  // the track: point 1 at the pad, point 2 the far end
  TCoord AnchorX = 0, AnchorY = 0;            // where the fan leaves the track
  TCoord ax = 0, ay = 0;                      // where it would, were the track long enough
  TCoord DropX = 0, DropY = 0;                // the end in the pad of the next track of the fan
  double TrackAngle = 0;                      // radians, from point 1 to point 2
  double tx = 0, ty = 0;                      // what the fan aims at
  double blx = 0, bly = 0, tlx = 0, tly = 0, trx = 0, ttry = 0, brx = 0, bry = 0;  // corners of the pad's box
  double px1 = 0, px2 = 0, py1 = 0, py2 = 0;                                       // centres of its ends
  TCoord pRadius = 0;  // half of the pad's smaller side
  TV7_Layer Lay;
  GeoPointType Pnt;                                // where the way to the far end leaves the box
  std::array<TTemporary<TTrack>, 20> DropTrack{};  // candidates; the first `DropCount` are there
  std::vector<TTemporary<TArc>> DropArc;
  std::int32_t DropCount = 0;
  TCoord TrackRadius = 0;  // half of the track's width
  TCoord xSize = 0, ySize = 0;
  CircleType c1, c2;
  GeoPointType Int1, Int2;
  int Count = 0;
  TBoard* Board;
  TCoord Arcx = 0, Arcy = 0, ArcRadius = 0;
  double DropAngle1 = 0, DropAngle2 = 0;  // degrees, counter-clockwise from the first to the second
  bool TearDropAborted = false;
  TTearDropOptions Options;
  Ref<IParameterList> Parameters;
  Ref<IPCB_ViolationReport> ViolationReport;

  // The board's wrapper outlives the builder; the parameters may be null. Asks the board for a report of
  // clearance violations.
  TTearDroper(TBoard* ABoard, IParameterList* AParameters);
  TTearDroper(const TTearDroper&) = delete;
  TTearDroper& operator=(const TTearDroper&) = delete;

  // The whole command: options from the parameters, or the store and the dialog, which can be cancelled;
  // walks over pads, vias and tracks, with progress and ESC; a report after adding.
  void Execute();
  void Execute_AddDrops();
  void Execute_RemoveDrops();

  // All teardrops of one pad, via, track or arc; those of one pad and one track or arc.
  void AddDropsOnTouchingTracks(TPrimitive* TrackOrArc);
  void AddDropsOnTouchingTrack(TPad* APadOrVia, TPrimitive* ATouchingObject);
  void AddDropsOnElongatedPad(TPad* APad, TPrimitive* ATouchingObject);

  // Teardrops that touch the object, or a track that touches it, but for those on the overlays. An object
  // that is part of a component, or on a library, keeps them.
  void RemoveDropsFromTouchingObjects(TPrimitive* APrimitive);
  void RemoveDropsFromConnectedTracks(TPrimitive* APrimitive);
  // Those on the pads of a component, whatever wraps it: these go, although the pads are part of one.
  void RemoveDropsFromComponent(TPrimitive* APrimitive);
  void RemoveDropsBetweenObjects(TPrimitive* APrimitive1, TPrimitive* APrimitive2);  // of one net
  void RemoveTearDrop(TPrimitive* ATouchingObject);
  void ShowDropsForNet(TGroup* ANet, bool AShow);  // null: nothing

  // One teardrop, of a round pad and a track; of anything else none.
  void AddTearDrop(TPad* APadOrVia, TPrimitive* ATouchingPrimitive);
  void SetTearDroppingParameterForPad(const TPad* APad);
  // P when the point touches it on the layer, else null; null for one that knows no board.
  TPrimitive* GetState_HitTest(TPrimitive* P, TCoord HitX, TCoord HitY, TV7_Layer ALayerToCheck);
  void PlaceTrackDrops(TPad* APadOrVia, TTrack* ATouchingTrack);
  // The fan runs from the anchor, that many track widths past the pad, to pairs of points on circles in the
  // pad, a track width from one to the next, and to the centre.
  void MakeTracksToTest(std::int32_t AStepSize, TTrack* ATouchingTrack);
  void MakeTrackAndAddToWorkingArray(TTrack* ATouchingTrack);
  bool DropTracksNotNil() const;
  void PlaceArcDrops(TPad* APadOrVia, TTrack* ATouchingTrack);
  void MakeArcsToTest(TPad* APadOrVia, TTrack* ATouchingTrack);
  void MakeArcAndAddToWorkingArray(TPad* APadOrVia, TTrack* ATouchingTrack);
  bool DropArcsNotNil() const { return !DropArc.empty(); }
  std::vector<TTemporary<TTrack>> ArcToTracks(TPad* APad, TArc* AArc);
  std::vector<TCoordPoint> ArcHitsOnPad(TPad* APad, TArc* AArc);
  bool TestObject(TPrimitive* P);  // does the candidate keep all clearances

 private:
  bool GetState_Parameter();
  bool Import_FromUser();
  void MarkObjects(TObjectSet kinds);
  void ResetSelected();
  void Report();
  void ForEachObject(TObjectSet kinds, FunctionRef<bool(TPrimitive*)> visit);
  void Walk(TObjectSet kinds, FunctionRef<void(TPrimitive*)> visit);
  void AddDropsOnSelected(TObjectSet kinds);
  void RemoveDropsOnSelected(TObjectSet kinds);
  bool IsPartner(const TPrimitive* P, const TPrimitive* T) const;
  void RemoveTouchingDrops(TPrimitive* P);
  void RemoveOldDrops(TPrimitive* P, TPrimitive* T);
  TTemporary<TTrack> CropTrackAtPoint(TTrack* T, const TPad* APad, TCoordPoint place);

  void Place(TPad* P, TTrack* T);
  static void TakeAfter(const TPrimitive* from, TPrimitive* copper);
  template <class Drops>
  bool PassTest(const Drops& candidates);
  void PlaceCandidate(TPrimitive* drop);
  void TakeTrackAngle();
  void MakeArcFan(bool Side, double Offset, double Reach, TPad* P, TTrack* T);

  TProgress* progress_ = nullptr;
  bool may_hold_drops_ = true;  // can there be teardrops on the object that is being served
};

}  // namespace Ketril::Tools
