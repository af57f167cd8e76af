// Footprints for the tools that report on a library: those of a board, or of a library's folder.
#pragma once

#include <string>

#include "Editor/Model/Board.h"
#include "Editor/Model/Library.h"

namespace Ketril::Command {

struct Footprints {
  Ref<Editor::Library> library;
  Ref<Editor::Board> editing;  // holds copies of what the current component consists of
};

// One component for each footprint that the board's components have, in the order in which they come; the
// current one is that of the component of that designator, as it lies there. The editing board has the
// layers, the unit and the name of the board. An empty designator leaves none current. Raises Failure when
// there is no such component.
Footprints FootprintsOf(const Editor::Board& board, const std::string& designator);

// Those of a folder of footprint files, or of one such file; the current one is that of the name, of a file
// the only one. Raises Failure when a file cannot be read, or there is no such footprint.
Footprints FootprintsIn(const std::string& path, const std::string& name);
bool IsFootprintPath(const std::string& path);  // a folder, or a file that ends in .kicad_mod

}  // namespace Ketril::Command
