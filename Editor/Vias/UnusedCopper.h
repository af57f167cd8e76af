// Copper of pads and vias that nothing connects to.
#pragma once

#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// The copper layers of a pad or via through the board where its copper touches no track, arc, fill, region,
// pad or via of its net; with `keep_ends` without the first and the last layer. None for what has no plated
// hole or stands on no board. Copper that was taken away before counts as if it were there.
std::vector<TV7_Layer> UnusedLayers(const Pad& pad, bool keep_ends);
std::vector<TV7_Layer> UnusedLayers(const Via& via, bool keep_ends);

// Plated and through the board: others have no copper that could be unused.
bool GoesThrough(const Pad& pad);
bool GoesThrough(const Via& via);

// Takes that copper away, or gives all of it back. Data only; nothing for what does not go through.
template <class Object>
void RemoveUnusedCopper(Object& object, bool keep_ends) {
  if (!GoesThrough(object)) return;
  object.data.removed = UnusedLayers(object, keep_ends);
  object.data.remove_unused = true;
  object.data.keep_end_layers = keep_ends;
}
template <class Object>
void RestoreUnusedCopper(Object& object) {
  object.data.removed.clear();
  object.data.remove_unused = object.data.keep_end_layers = false;
}

// For readers: takes the copper away from the pads and vias of a board that say so.
void ApplyUnusedCopper(Board& board);

}  // namespace Ketril::Editor
