// Where a component that is in the way of another one can go.
//
// Components carry a mark while they are shoved, their `vIndex`. Places are centres of rectangles; sums of
// coordinates are 64 bits wide, so that none of them wraps.
#pragma once

#include <vector>

#include "DLLs/Tools/Frame/PrimitivesGroups.h"

namespace Ketril::Tools {

enum TShoveMark : std::uint16_t {
  eShoveUntouched,
  eShoveFixed,   // nothing is put onto it any more, and nothing pushes it
  eShoveChosen,  // to be pushed in this step
};

// True for rectangles that have a point in common and for those that are at most 100 units apart along both
// axes.
bool RectanglesOverlap(const TCoordRect& a, const TCoordRect& b);

// Calls `each` with every object of the kinds whose bounding rectangle overlaps `area`, and with that
// rectangle. The wrapper is gone after its call. An empty layer set means all layers.
void ForEachOverlapping(TBoard* board, const TCoordRect& area, TObjectSet objects,
                        const Ref<IPCB_LayerSet>& layers,
                        FunctionRef<void(TPrimitive*, const TCoordRect&)> each);

class TPlaceFinder {
 public:
  explicit TPlaceFinder(TBoard* board);

  // Moves `o` beside `c`, towards the side on which its centre lies and by the shorter way where it can, else
  // to another side or past a corner; from each of these places it may slide sideways by up to ten steps of
  // the grid. Free is what lies on the board, off the keep-out fills, and off the components that are locked
  // or fixed. False when there is no such place; `o` then stays, as it always does when it is locked.
  bool PushAway(TComp* o, TComp* c);

 private:
  struct TPoint {
    std::int64_t x = 0, y = 0;
  };
  // A component and the room that it takes.
  struct TBody {
    TComp* Component;
    TPoint Reference, Center;
    std::int64_t Width, Height;  // with its clearance
  };
  // A place on the board, with the room that a body takes there.
  struct TPlace {
    TPoint Center;
    TCoordRect Room;
  };

  TBody BodyOf(TComp* component) const;
  TCoord ClearanceOf(const TComp* component) const;
  std::vector<std::vector<TPlace>> PlacesAround(const TBody& o, const TBody& c) const;
  std::vector<TCoordRect> ObstaclesOf(const std::vector<TPlace>& places);

  TBoard* const FBoard;
  const Ref<IPCB_LayerSet> FKeepOutLayers;
};

}  // namespace Ketril::Tools
