#include "Ketril/Footprints.h"

#include <algorithm>

#include "Ketril/Exit.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Editor::Board;
using Editor::Component;

const Component& FindComponent(const Board& board, const std::string& designator) {
  const Component* found = nullptr;
  board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& object) {
    const auto& component = static_cast<const Component&>(object);
    if (!found && Platform::EqualsIgnoringAsciiCase(component.Identifier(), Platform::ToUtf16(designator)))
      found = &component;
  });
  if (!found) throw Failure(kExit_Usage, "the board has no component \"" + designator + "\"");
  return *found;
}

}  // namespace

Ref<Editor::Library> FootprintsOf(const Board& board, const std::string& designator) {
  const Ref<Editor::Library> library = Editor::MakeHost<Editor::Library>();
  const auto place_of = [&](const std::u16string& pattern) {
    return std::ranges::find_if(library->components,
                                [&](const auto& entry) { return entry->data.pattern == pattern; });
  };
  library->file_name = Platform::ToUtf16(board.file.path);
  board.objects.ForEach({eComponentObject}, [&](const Editor::Primitive& object) {
    const std::u16string& pattern = static_cast<const Component&>(object).data.pattern;
    if (place_of(pattern) != library->components.end()) return;
    library->components.push_back(Editor::MakeHost<Editor::LibComponent>());
    library->components.back()->data.pattern = pattern;
  });
  library->current = library->components.size();
  if (!designator.empty()) {
    const auto current = place_of(FindComponent(board, designator).data.pattern);
    library->current = static_cast<std::size_t>(current - library->components.begin());
  }
  return library;
}

Ref<Board> FootprintBoard(const Board& board, const std::string& designator) {
  const Ref<Board> footprint = Editor::MakeHost<Board>();
  footprint->is_library = true;
  footprint->layers = board.layers;
  footprint->setup = board.setup;
  footprint->file.path = board.file.path;
  if (designator.empty()) return footprint;
  for (const Ref<Editor::Primitive>& member : FindComponent(board, designator).Members())
    footprint->Load(member->Copy().Get());
  return footprint;
}

}  // namespace Ketril::Command
