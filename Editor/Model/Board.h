// The board: what is on it, its stack of layers, its setup, and what keeps these findable and undoable.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "Editor/Model/Copper.h"
#include "Editor/Model/Groups.h"
#include "Editor/Model/Journal.h"
#include "Editor/Model/Records.h"
#include "Editor/Model/SpatialIndex.h"
#include "Editor/Model/Warehouse.h"

namespace Ketril::Editor {

// A layer of the board file: its number there, its name in the items, the name that the user gave it.
struct BoardLayer {
  TV7_Layer id;
  std::int32_t file_number = 0;
  std::string file_name;      // "F.Cu"; in the oldest version copper may have a name of the user's
  std::u16string user_name;   // shown to people
  std::string kind;           // "signal", "power", "mixed", "jumper", "user"
};

// The board's values that the tools and the objects read; lengths in units.
struct BoardSetup {
  TCoordPoint origin;       // of the user's coordinates
  double grid_x = 250000;   // of components: 25 mil
  double grid_y = 250000;
  bool electrical_grid = true;
  TUnit display_unit = eMetric;
  TCoord thickness = 0;
  TCoord solder_mask_margin = 0;
  TCoord paste_margin = 0;
  double paste_ratio = 0;
  TCoord clearance = 78740;  // 0.2 mm, where no net class says otherwise
  TCoord track_width = 98425;
};

// The text that the board was read from, kept whole: a save copies from it what nobody changed.
struct BoardText {
  std::string text;
  std::string path;          // UTF-8, empty for a board that was never saved
  std::int32_t version = 20221018;
  std::u16string title;
};

class Board final : public PrimitiveObject<Board, Primitive, IPCB_Board3> {
 public:
  static constexpr TObjectId kKind = eBoardObject;
  struct Data {};
  Data data;  // a board is not copied

  BoardText file;
  BoardSetup setup;
  std::vector<BoardLayer> layers;  // of the file: copper from top to bottom, then the others
  bool is_library = false;
  bool document_changed = false;

  Warehouse objects;
  SpatialIndex index;
  Journal journal;

  // Puts an object, with its members, onto the board or takes it off, as the interface does, through the
  // journal. `Load` is for readers: no journal, no document mark.
  void Add(Primitive* primitive);
  void Remove(Primitive* primitive);
  void Load(Primitive* primitive);

  Net* FindNet(const std::u16string& name) const;  // null when there is none
  const BoardLayer* FindLayer(TV7_Layer id) const;
  const BoardLayer* FindLayer(std::string_view file_name) const;
  // Copper layers from top to bottom.
  std::vector<TV7_Layer> CopperLayers() const;
  // The net class of a net: the first that names it, else "Default"; null when there is no class.
  const ObjectClass* ClassOf(const Net* net) const;
  // Rings chained from the lines on the layer of the board's edge; empty when there are none.
  Ref<BoardOutline> Outline() const;

  std::int64_t LiveIterators() const { return objects.LiveIterators(); }
};

}  // namespace Ketril::Editor
