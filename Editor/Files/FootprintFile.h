// Footprint libraries: folders of .kicad_mod files, each of which holds one footprint as a board file would,
// of the versions of those.
#pragma once

#include <filesystem>
#include <string>

#include "Editor/Model/Board.h"
#include "Editor/Model/Library.h"

namespace Ketril::Editor {

// The footprint in a file's text, its reference point in the origin; `path` names it in messages. Raises
// FileError.
Ref<LibComponent> ReadFootprintText(const std::string& text, const std::string& path = {});

// The footprints of a folder in the order of their files' names, or that of one file; none of several is the
// current one. Raises FileError: a file that cannot be read, a folder without footprints.
Ref<Library> ReadFootprints(const std::filesystem::path& path);

// The footprint of a component as it lies on its board, by copies of its members.
Ref<LibComponent> FootprintOf(const Component& component);

// An empty board for footprints, with the layers that their files know.
Ref<Board> MakeFootprintBoard();

}  // namespace Ketril::Editor
