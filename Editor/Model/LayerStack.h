// The layers of a board as tools see them. Both hold their board.
#pragma once

#include "Interfaces/Layers.h"

namespace Ketril::Editor {

class Board;

Ref<IPCB_LayerStack> MakeLayerStack(Board& board);
// Empty when the board has no such layer.
Ref<IPCB_LayerObject> MakeLayerObject(Board& board, TV7_Layer id);

}  // namespace Ketril::Editor
