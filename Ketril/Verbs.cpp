#include "Ketril/Verbs.h"

#include <array>

namespace Ketril::Command {

namespace {

// An export that takes the board and nothing else.
void CallWithBoard(const ToolsLibrary& library, const char* export_name, IPCB_Board* board, IParameterList*) {
  library.Find<void(IPCB_Board*)>(export_name)(board);
}

void CallWithParameters(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                        IParameterList* parameters) {
  library.Find<void(IPCB_Board*, IParameterList*)>(export_name)(board, parameters);
}

constexpr std::array kToolVerbs{
    ToolVerb{"tear-drops", "Tools_TearDrops", "Teardrops",
             "Add teardrops to the board, or remove them; -D TeardropParam_FlagsEx=1000 and the like, or the "
             "dialog",
             true, CallWithParameters},
    ToolVerb{"remove-tear-drops-on-selected", "Tools_RemoveTearDropsOnSelected", "Teardrops",
             "Remove the teardrops on the selected pads, vias, tracks and arcs", false, CallWithBoard},
    ToolVerb{"remove-drops-violation", "Tools_RemoveDropsViolation", "Teardrops",
             "Remove the teardrops that violate a clearance", false, CallWithBoard},
    ToolVerb{"replace-selected-pads-with-vias", "Tools_ReplaceSelectedPadsWithVias", "Pads and vias",
             "Turn the selected free through-hole pads into vias", false, CallWithBoard},
    ToolVerb{"replace-selected-vias-with-pads", "Tools_ReplaceSelectedViasWithPads", "Pads and vias",
             "Turn the selected vias into free pads", false, CallWithBoard},
};

}  // namespace

std::span<const ToolVerb> ToolVerbs() {
  return kToolVerbs;
}

}  // namespace Ketril::Command
