// Places as people name them, and which components a tool moved.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Editor/Model/Board.h"
#include "Editor/Selection/Length.h"

namespace Ketril::Command {

// "100,80": a place as the board file has it; or where a click would meet the component, room or zone of that
// name. Empty for neither.
std::optional<TCoordPoint> PlaceOf(Editor::Board& board, const std::string& text, Editor::LengthUnit unit);

struct Move {
  std::string component;
  TCoordPoint from, to;
  TCoordRect from_box, to_box;
};

// Where the components of a board are, noted when it is made.
class ComponentPlaces {
 public:
  explicit ComponentPlaces(const Editor::Board& board);
  std::vector<Move> Moves() const;  // of those that are somewhere else by now, in the order of the board

 private:
  struct Place {
    Ref<Editor::Primitive> component;
    TCoordPoint at;
    TCoordRect box;
  };
  std::vector<Place> places_;
};

// [{"component": "U1", "from": [x, y], "to": [x, y]}], places as in the board file, in the unit.
nlohmann::ordered_json MoveTable(const std::vector<Move>& moves, Editor::LengthUnit unit);
// "  U1 (10mm,20mm) -> (30mm,20mm)" a line.
std::string MoveLines(const std::vector<Move>& moves, Editor::LengthUnit unit);

}  // namespace Ketril::Command
