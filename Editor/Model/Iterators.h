// The editor's iterators, as a tool gets them from a board or a group. Each is handed back where it was made;
// one that was handed back, or whose board died, gives nothing.
//
// A layer filter is literal: an object passes when the set holds the object's own layer. A pad or via through
// the board stands on the layer `eV6_MultiLayer`, so {Top} does not pass it; who wants what touches the top
// layer puts the multilayer into the set. A set that is changed after `First` counts from the next `First`.
#pragma once

#include <cstdint>
#include <memory>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

// What a board shares with its iterators.
struct IteratorLedger {
  Board* board = nullptr;  // cleared when the board dies
  std::int64_t live = 0;   // made and not handed back
};

// True when the method passes the object: `eProcessFree` what is member of no component, polygon, dimension
// or coordinate, `eProcessComponent` the members of components.
bool PassesMethod(const Primitive& primitive, TIterationMethod method);

Ref<IPCB_BoardIterator> MakeBoardIterator(Board& board);
Ref<IPCB_SpatialIterator> MakeSpatialIterator(Board& board);
// Of a group, its members; of a net, the objects on the board that name it. In the order in which they
// joined.
Ref<IPCB_GroupIterator> MakeGroupIterator(Group& group);

// Takes an iterator back from a tool. InvalidArgument for one that `maker` (the board or group) did not make,
// or that came back before.
Status HandBackIterator(IInterface* iterator, const Primitive& maker);

}  // namespace Ketril::Editor
