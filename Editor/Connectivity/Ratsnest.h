// What is still to be routed.
#pragma once

#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// Of each net, the copper falls into parts that touch each other (see Touch in Editor/Copper/Distance.h).
// The parts that hold a pad are to be joined: by the shortest lines between their pads, one less than there
// are parts (Prim 1957; the square of a net's pads in time).
struct OpenConnection {
  Net* net;
  const Pad* from;
  const Pad* to;
};
std::vector<OpenConnection> FindOpenConnections(Board& board);

// Puts the open connections on the board as connection objects, as if it had been read with them, and takes
// off those that were there. No board file keeps connections.
void RefreshConnections(Board& board);

}  // namespace Ketril::Editor
