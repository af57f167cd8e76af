#include "Ketril/Footprints.h"

#include <algorithm>
#include <filesystem>

#include "Editor/Files/FootprintFile.h"
#include "Editor/Files/SExpression.h"
#include "Ketril/Exit.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Editor::Board;
using Editor::Component;
using Editor::Library;

void PutCurrentOnBoard(Footprints& footprints) {
  footprints.editing->is_library = true;
  const Library& library = *footprints.library;
  if (library.current >= library.components.size()) return;
  for (const Ref<Editor::Primitive>& member : library.components[library.current]->Members())
    footprints.editing->Load(member->Copy().Get());
}

std::size_t PlaceOf(const Library& library, const std::u16string& pattern) {
  const auto found = std::ranges::find_if(library.components,
                                          [&](const auto& entry) { return entry->data.pattern == pattern; });
  return static_cast<std::size_t>(found - library.components.begin());
}

}  // namespace

Footprints FootprintsOf(const Board& board, const std::string& designator) {
  Footprints footprints{Editor::MakeHost<Library>(), Editor::MakeHost<Board>()};
  Library& library = *footprints.library;
  const Component* chosen = nullptr;
  library.file_name = Platform::ToUtf16(board.file.path);
  board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& object) {
    const auto& component = static_cast<const Component&>(object);
    const std::size_t place = PlaceOf(library, component.data.pattern);
    if (place == library.components.size()) library.components.push_back(Editor::FootprintOf(component));
    if (designator.empty() || chosen) return;
    if (!Platform::EqualsIgnoringAsciiCase(component.Identifier(), Platform::ToUtf16(designator))) return;
    chosen = &component;
    library.components[place] = Editor::FootprintOf(component);
  });
  if (!designator.empty() && !chosen)
    throw Failure(kExit_Usage, "the board has no component \"" + designator + "\"");
  library.current = chosen ? PlaceOf(library, chosen->data.pattern) : library.components.size();
  footprints.editing->layers = board.layers;
  footprints.editing->setup = board.setup;
  footprints.editing->file.path = board.file.path;
  PutCurrentOnBoard(footprints);
  return footprints;
}

Footprints FootprintsIn(const std::string& path, const std::string& name) {
  // Without a separator at its end, behind which there is no name.
  std::filesystem::path file = std::filesystem::absolute(path).lexically_normal();
  if (!file.has_filename()) file = file.parent_path();
  Footprints footprints;
  try {
    footprints = {Editor::ReadFootprints(file), Editor::MakeFootprintBoard()};
  } catch (const Editor::FileError& error) {
    throw Failure(kExit_Unreadable, error.what());
  }
  if (!name.empty()) {
    footprints.library->current = PlaceOf(*footprints.library, Platform::ToUtf16(name));
    if (footprints.library->current == footprints.library->components.size())
      throw Failure(kExit_Usage, path + " has no footprint \"" + name + "\"");
  }
  footprints.editing->file.path = file.string();
  PutCurrentOnBoard(footprints);
  return footprints;
}

bool IsFootprintPath(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored) || path.ends_with(".kicad_mod");
}

}  // namespace Ketril::Command
