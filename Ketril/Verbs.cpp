#include "Ketril/Verbs.h"

#include <array>

namespace Ketril::Command {

namespace {

// An export that takes the board and nothing else.
void CallWithBoard(const ToolsLibrary& library, const char* export_name, IPCB_Board* board) {
  library.Find<void(IPCB_Board*)>(export_name)(board);
}

constexpr std::array kToolVerbs{
    ToolVerb{"replace-selected-pads-with-vias", "Tools_ReplaceSelectedPadsWithVias", "Pads and vias",
             "Turn the selected free through-hole pads into vias", CallWithBoard},
    ToolVerb{"replace-selected-vias-with-pads", "Tools_ReplaceSelectedViasWithPads", "Pads and vias",
             "Turn the selected vias into free pads", CallWithBoard},
};

}  // namespace

std::span<const ToolVerb> ToolVerbs() {
  return kToolVerbs;
}

}  // namespace Ketril::Command
