#include "DLLs/Tools/Teardrops/TeardropTJunctionNodeList.h"

#include <algorithm>
#include <tuple>

#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {

namespace {

void Assert(bool holds) {
  if (!holds) throw EAssertionFailed("DLLs/Tools/Teardrops/TeardropTJunctionNodeList");
}

// By its wrapper: the host, which IsTrackOrArc asks, has no part in it.
bool WrapsTrackOrArc(const TPrimitive* primitive) {
  return dynamic_cast<const TTrack*>(primitive) || dynamic_cast<const TArc*>(primitive);
}

bool IsEndOf(const LineType& line, GeoPointType p) {
  return p == line.P1() || p == line.P2();
}

auto Key(const LineType& line) {
  return std::tuple(line.x1, line.y1, line.x2, line.y2);
}

// The boxes of the pads and vias on one layer, for the question whether a place is in one of them.
class TPadBoxes {
 public:
  TPadBoxes(TBoard* board, TV7_Layer layer) {
    TBoardIterator iterator(board);
    iterator.SetState_FilterObject({ePadObject, eViaObject});
    iterator.SetState_FilterLayers(
        TLayerPartitionSet{eV7_TopLayer, eMidLayers, eV7_BottomLayer, eV7_MultiLayer});
    iterator.SetState_FilterMethod(eProcessAll);
    for (TPrimitive* found = iterator.First(); found; found = iterator.Next()) {
      const TTemporary<TPrimitive> pad(found);
      TCoord x1 = 0, y1 = 0, x2 = 0, y2 = 0;
      pad->GetState_BoundingRectangle_OnLayer(layer, x1, y1, x2, y2);
      boxes_.push_back({std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)});
    }
    std::ranges::sort(boxes_, {}, &TCoordRect::x1);
    double highest = -1e300;
    for (const TCoordRect& box : boxes_) highest_x2_.push_back(highest = std::max<double>(highest, box.x2));
  }

  bool Hold(double x, double y) const {
    // From the last box that begins to the left of the place down to where none reaches it any more.
    constexpr double kNear = 100;
    auto i = std::ranges::upper_bound(boxes_, x + kNear, {},
                                      [](const TCoordRect& box) { return double(box.x1); }) -
             boxes_.begin();
    while (i-- > 0 && highest_x2_[static_cast<std::size_t>(i)] >= x - kNear) {
      const TCoordRect& box = boxes_[static_cast<std::size_t>(i)];
      if (IsPointInSegmentBox(x, y, box.x1, box.y1, box.x2, box.y2)) return true;
    }
    return false;
  }

 private:
  std::vector<TCoordRect> boxes_;   // by their left side
  std::vector<double> highest_x2_;  // of the boxes up to each one
};

}  // namespace

TTeardropTJunctionNode::TTeardropTJunctionNode(const TNodePoint& ANodePoint, TPrimitive* AReferencePrimitive,
                                               const LineType& ATrackLine)
    : TTeardropTJunctionNode(ANodePoint) {
  Assert(AReferencePrimitive && WrapsTrackOrArc(AReferencePrimitive));
  FReferencePrimitive = AReferencePrimitive;
  FTrackList.push_back({ATrackLine, TrackOrArcWidth(AReferencePrimitive)});
}

TTeardropTJunctionNode::TTeardropTJunctionNode(const TNodePoint& ANodePoint, TTrack* ATrack)
    : TTeardropTJunctionNode(ANodePoint) {
  Assert(ATrack);
  FReferencePrimitive = ATrack;
  FTrackList.push_back({TrackToLine(ATrack, 0), TrackOrArcWidth(ATrack)});
}

TTeardropTJunctionNode::TTeardropTJunctionNode(const TNodePoint& ANodePoint, TPrimitive* ATrackOrArc)
    : TTeardropTJunctionNode(ANodePoint) {
  if (auto* track = dynamic_cast<TTrack*>(ATrackOrArc)) *this = TTeardropTJunctionNode(ANodePoint, track);
}

void TTeardropTJunctionNode::Add(const TPrimitive* ATrackOrArc) {
  if (dynamic_cast<const TTrack*>(ATrackOrArc))
    AddTrackLine({TrackToLine(ATrackOrArc, 0), TrackOrArcWidth(ATrackOrArc)});
}

void TTeardropTJunctionNode::AddTrackLine(const TNodeTrack& Track) {
  if (Track.Width > PointDistance(Track.Line.P1(), Track.Line.P2())) return;
  if (std::ranges::find(FTrackList, Track) == FTrackList.end()) FTrackList.push_back(Track);
}

bool TTeardropTJunctionNode::CheckInPad(TBoard* Board) const {
  return FReferencePrimitive &&
         TPadBoxes(Board, FReferencePrimitive->Layer()).Hold(FNodePoint.X, FNodePoint.Y);
}

void TTeardropTJunctionNodeList::AddTouchingPair(TPrimitive* ATrackOrArc1, TPrimitive* ATrackOrArc2) {
  if (dynamic_cast<TArc*>(ATrackOrArc1) || dynamic_cast<TArc*>(ATrackOrArc2)) return;
  if (TrackOrArcWidth(ATrackOrArc1) != TrackOrArcWidth(ATrackOrArc2)) return;
  const LineType line1 = TrackToLine(ATrackOrArc1, 0), line2 = TrackToLine(ATrackOrArc2, 0);
  GeoPointType X;
  bool found = false;
  IntersectLines(line1, line2, true, X, found);
  if (!found) return;
  if (!IsEndOf(line1, X) && !IsEndOf(line2, X) && Key(line2) < Key(line1))
    IntersectLines(line2, line1, true, X, found);
  const auto cut = [&](const LineType& line, TPrimitive* primitive) {
    if (PointsNear(X, line.P1())) {
      AddTrackLine(MakeLine(X, line.P2()), primitive);
    } else if (PointsNear(X, line.P2())) {
      AddTrackLine(MakeLine(line.P1(), X), primitive);
    } else {
      AddTrackLine(MakeLine(line.P1(), X), primitive);
      AddTrackLine(MakeLine(X, line.P2()), primitive);
    }
  };
  cut(line1, ATrackOrArc1);
  cut(line2, ATrackOrArc2);
}

void TTeardropTJunctionNodeList::AddTrackLine(const LineType& ATrackLine, TPrimitive* AReferencePrimitive) {
  if (!WrapsTrackOrArc(AReferencePrimitive) || PointsNear(ATrackLine.P1(), ATrackLine.P2())) return;
  const TV7_Layer layer = AReferencePrimitive->Layer();
  for (const GeoPointType end : {ATrackLine.P1(), ATrackLine.P2()}) {
    const TNodePoint key = {Round(end.x), Round(end.y), layer};
    if (TTeardropTJunctionNode* node = Find(key)) {
      node->AddTrackLine({ATrackLine, TrackOrArcWidth(AReferencePrimitive)});
    } else {
      Enter(std::make_unique<TTeardropTJunctionNode>(key, AReferencePrimitive, ATrackLine));
    }
  }
}

void TTeardropTJunctionNodeList::AddTrackOrArc(TPrimitive* ATrackOrArc) {
  if (!ATrackOrArc || !WrapsTrackOrArc(ATrackOrArc) || ATrackOrArc->TearDrop()) return;
  const TV7_Layer layer = ATrackOrArc->Layer();
  TNodePoint ends[2];
  if (const auto* track = dynamic_cast<TTrack*>(ATrackOrArc)) {
    ends[0] = {track->x1(), track->y1(), layer};
    ends[1] = {track->x2(), track->y2(), layer};
  } else if (const auto* arc = dynamic_cast<TArc*>(ATrackOrArc)) {
    ends[0] = {arc->SX(), arc->SY(), layer};
    ends[1] = {arc->EX(), arc->EY(), layer};
  }
  for (const TNodePoint& end : ends) {
    if (TTeardropTJunctionNode* node = Find(end)) {
      node->Add(ATrackOrArc);
    } else {
      Enter(std::make_unique<TTeardropTJunctionNode>(end, ATrackOrArc));
    }
  }
}

// The boxes of pads and vias are the same for all nodes of a layer: they are asked for once.
void TTeardropTJunctionNodeList::ProcessList(TBoard* Board) {
  std::vector<std::pair<TV7_Layer, TPadBoxes>> boxes;
  const auto is_in_pad = [&](const TTeardropTJunctionNode& node) {
    const TV7_Layer layer = node.ReferencePrimitive()->Layer();
    auto found = std::ranges::find(boxes, layer, [](const auto& entry) { return entry.first; });
    if (found == boxes.end()) found = boxes.emplace(boxes.end(), layer, TPadBoxes(Board, layer));
    return found->second.Hold(node.NodePoint().X, node.NodePoint().Y);
  };
  const auto falls_out = [&](const std::unique_ptr<TTeardropTJunctionNode>& node) {
    if (node->Count() >= 3 && node->ReferencePrimitive() && !is_in_pad(*node)) return false;
    FDictionary.erase(node->NodePoint());
    return true;
  };
  std::erase_if(FNodes, falls_out);
}

void TTeardropTJunctionNodeList::Clear() {
  FDictionary.clear();
  FNodes.clear();
}

std::size_t TTeardropTJunctionNodeList::THash::operator()(const TNodePoint& point) const {
  const std::uint64_t place =
      std::uint64_t{static_cast<std::uint32_t>(point.X)} << 32 | static_cast<std::uint32_t>(point.Y);
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15;
  return ((place ^ std::uint64_t{point.Layer.ID} << 40) * kSpread) >> 16;
}

TTeardropTJunctionNode* TTeardropTJunctionNodeList::Find(const TNodePoint& point) const {
  const auto found = FDictionary.find(point);
  return found == FDictionary.end() ? nullptr : found->second;
}

void TTeardropTJunctionNodeList::Enter(std::unique_ptr<TTeardropTJunctionNode> node) {
  FDictionary.emplace(node->NodePoint(), node.get());
  FNodes.push_back(std::move(node));
}

}  // namespace Ketril::Tools
