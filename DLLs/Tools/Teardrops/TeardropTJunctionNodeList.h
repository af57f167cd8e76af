// The points in which tracks of one width meet: pairs of touching tracks are cut where they cross, and the
// pieces filed at the points in which they end. Where three or more are filed, away from pads and vias, is a
// junction.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesLines.h"
#include "DLLs/Tools/Geometry/RT_GeometryTypes.h"

namespace Ketril::Tools {

// Pieces meet only where their ends round to the same whole place on the same layer.
struct TNodePoint {
  std::int32_t X = 0;
  std::int32_t Y = 0;
  TV7_Layer Layer;
  friend constexpr bool operator==(const TNodePoint&, const TNodePoint&) = default;
};

struct TNodeTrack {
  LineType Line;  // not rounded
  std::int32_t Width = 0;
  friend constexpr bool operator==(const TNodeTrack&, const TNodeTrack&) = default;
};

// Raises EAssertionFailed when the library calls it with a wrong reference primitive.
class TTeardropTJunctionNode {
 public:
  explicit TTeardropTJunctionNode(const TNodePoint& ANodePoint) : FNodePoint(ANodePoint) {}
  TTeardropTJunctionNode(std::int32_t AX, std::int32_t AY, TV7_Layer ALayer)
      : TTeardropTJunctionNode(TNodePoint{AX, AY, ALayer}) {}
  // With a first piece, which is taken whatever its length; the primitive is a track or an arc.
  TTeardropTJunctionNode(const TNodePoint& ANodePoint, TPrimitive* AReferencePrimitive,
                         const LineType& ATrackLine);
  // With the whole line of the track.
  TTeardropTJunctionNode(const TNodePoint& ANodePoint, TTrack* ATrack);
  // Likewise for a track; for anything else without a piece and without a reference.
  TTeardropTJunctionNode(const TNodePoint& ANodePoint, TPrimitive* ATrackOrArc);

  void Add(const TPrimitive* ATrackOrArc);  // nothing for anything but a track
  // Nothing for a piece that is shorter than its width, or filed already, bit for bit.
  void AddTrackLine(const TNodeTrack& Track);

  std::int32_t Count() const { return static_cast<std::int32_t>(FTrackList.size()); }
  const std::vector<TNodeTrack>& TrackList() const { return FTrackList; }
  const TNodePoint& NodePoint() const { return FNodePoint; }
  // What the finished teardrop takes its marks from; null for a node that was made without a piece.
  TPrimitive* ReferencePrimitive() const { return FReferencePrimitive; }
  // Is the point, by 100 units, in the box of a pad or via of the board; a box, not the copper. Walks the
  // board.
  bool CheckInPad(TBoard* Board) const;

 private:
  TPrimitive* FReferencePrimitive = nullptr;  // of the object scope
  TNodePoint FNodePoint;
  std::vector<TNodeTrack> FTrackList;  // in order of arrival
};

class TTeardropTJunctionNodeList {
 public:
  TTeardropTJunctionNodeList() = default;
  TTeardropTJunctionNodeList(const TTeardropTJunctionNodeList&) = delete;
  TTeardropTJunctionNodeList& operator=(const TTeardropTJunctionNodeList&) = delete;

  // Files the pieces of two tracks of one width that cross. Whether (P1, P2) comes or (P2, P1), a crossing
  // within both is the same to the last bit, so a pair that comes from both sides is filed once.
  void AddTouchingPair(TPrimitive* ATrackOrArc1, TPrimitive* ATrackOrArc2);
  void AddTrackLine(const LineType& ATrackLine, TPrimitive* AReferencePrimitive);
  // Files a whole track or arc at both of its ends; nothing for teardrops, other kinds and null.
  void AddTrackOrArc(TPrimitive* ATrackOrArc);
  // Keeps the nodes with three pieces or more that are in no pad's or via's box; a node that an arc made has
  // nothing to take the marks of a teardrop from, and goes.
  void ProcessList(TBoard* Board);
  void Clear();

  // Nodes in order of arrival.
  auto begin() const { return FNodes.begin(); }
  auto end() const { return FNodes.end(); }

 private:
  struct THash {
    std::size_t operator()(const TNodePoint& point) const;
  };
  TTeardropTJunctionNode* Find(const TNodePoint& point) const;
  void Enter(std::unique_ptr<TTeardropTJunctionNode> node);

  std::vector<std::unique_ptr<TTeardropTJunctionNode>> FNodes;
  std::unordered_map<TNodePoint, TTeardropTJunctionNode*, THash> FDictionary;
};

}  // namespace Ketril::Tools
