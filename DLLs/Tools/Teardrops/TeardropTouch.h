// What touches what on a board, as the teardrop tools ask it.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Geometry/ListContainer.h"

namespace Ketril::Tools {

// The primitives of one touch search, each in a wrapper of its own. They are freed with the list, but for
// those that were taken out of it.
class TTouchList {
 public:
  TTouchList() = default;
  ~TTouchList();
  TTouchList(const TTouchList&) = delete;
  TTouchList& operator=(const TTouchList&) = delete;

  std::int32_t Count() const { return list_.Count(); }
  TPrimitive* At(std::int32_t index) const { return static_cast<TPrimitive*>(list_.At(index)); }
  bool HasTearDrop() const;  // does one of them have the flag; nothing was taken out yet
  // The wrapper is the caller's from then on; the place stays empty.
  TPrimitive* Take(std::int32_t index);
  TListContainer& List() { return list_; }

 private:
  TListContainer list_;
};

// Appends what touches P with its copper, in the board's order: arcs, tracks, pads, vias, regions, fills,
// texts, connections, component bodies, rules and embedded boards whose rectangle meets that of P, on P's
// layer, the multi-layer and the keep-out layer. P on one of those two meets every signal layer. Nothing when
// P has no board. Whether two touch is the editor's answer. Raises EHostError.
void CollectTouchingPrimitives(TPrimitive* P, TTouchList& list);

// Does a dot of 3 units at the place touch the primitive.
bool IsPointTouching(TCoord X, TCoord Y, TPrimitive* primitive);

// Is the place on the copper of a track, by less than 100 outside it, or of an arc, by 110; false for
// anything else.
bool IsPointOnTrackOrArc(TCoord X, TCoord Y, const TPrimitive* primitive);

}  // namespace Ketril::Tools
