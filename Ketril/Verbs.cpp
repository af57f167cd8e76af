#include "Ketril/Verbs.h"

#include <algorithm>
#include <array>

#include "Ketril/Microstrip.h"
#include "Ketril/PlacementDialogs.h"
#include "Ketril/TeardropDialog.h"

namespace Ketril::Command {

namespace {

constexpr std::array kGridVerbs{
    GridVerb{"comp-grid-correct-up-x", "Tools_CompGridCorrectUpX",
             "An x on the component grid that is not below the given one"},
    GridVerb{"comp-grid-correct-down-x", "Tools_CompGridCorrectDownX",
             "The x on the component grid next to the given one towards zero"},
    GridVerb{"comp-grid-correct-up-y", "Tools_CompGridCorrectUpY", "The same for a y, which grows upwards"},
    GridVerb{"comp-grid-correct-down-y", "Tools_CompGridCorrectDownY", "The same for a y"},
};

const std::array kToolVerbs{
    ToolVerb{"tear-drops", "Tools_TearDrops", "Teardrops",
             "Add teardrops to the board, or remove them; -D TeardropParam_FlagsEx=1000 and the like, or the "
             "dialog",
             true, CallWithParameters},
    ToolVerb{"remove-tear-drops-on-selected", "Tools_RemoveTearDropsOnSelected", "Teardrops",
             "Remove the teardrops on the selected pads, vias, tracks and arcs", false, CallWithBoard},
    ToolVerb{"remove-drops-violation", "Tools_RemoveDropsViolation", "Teardrops",
             "Remove the teardrops that violate a clearance", false, CallWithBoard},
    ToolVerb{"legacy-tear-drops", "Tools_LegacyTearDrops", "Teardrops",
             "Add teardrops of arcs or tracks to round pads, vias and wider tracks, or remove them", true,
             CallWithParameters, false, Settings::None, Operands::None, LegacyTeardropFields()},
    ToolVerb{"show-tear-drops-for-net", "Tools_ShowTearDropsForNet", "Teardrops",
             "Draw the teardrops of a net, or with -D Show=False leave them out of the picture: -D Net=NAME",
             true, ShowTearDropsForNet},
    ToolVerb{"remove-tear-drops-from-pad-via", "Tools_RemoveTearDropsFromPadVia", "Teardrops",
             "Remove the teardrops that touch the selected objects, but for parts of components", false,
             CallOnSelected},
    ToolVerb{"remove-tear-drops-from-component", "Tools_RemoveTearDropsFromComponent", "Teardrops",
             "Remove the teardrops on the pads of the selected components", false, CallOnSelected},
    ToolVerb{"remove-tear-drops-from-connected-tracks", "Tools_RemoveTearDropsFromConnectedTracks",
             "Teardrops", "Remove the teardrops on the selected tracks and on those that touch the selection",
             false, CallOnSelected},
    ToolVerb{"remove-tear-drops-from-touch", "Tools_RemoveTearDropsFromTouch", "Teardrops",
             "The one or the other, by what the selected objects are", false, CallOnSelected},
    ToolVerb{"replace-selected-pads-with-vias", "Tools_ReplaceSelectedPadsWithVias", "Pads and vias",
             "Turn the selected free through-hole pads into vias", false, CallWithBoard},
    ToolVerb{"replace-selected-vias-with-pads", "Tools_ReplaceSelectedViasWithPads", "Pads and vias",
             "Turn the selected vias into free pads", false, CallWithBoard},
    ToolVerb{"apply-via-stitching", "Tools_ApplyViaStitching", "Pads and vias",
             "Flood copper with vias of its net; -D Mode=Remove takes stitchings off again", true,
             CallWithDocumentView, false, Settings::None, Operands::None, StitchFields()},
    ToolVerb{"apply-via-shielding", "Tools_ApplyViaShielding", "Pads and vias",
             "Fence a net or what is selected with vias; -D Mode=RemoveShielding takes fences off again",
             true, CallWithDocumentView, false, Settings::None, Operands::None, ShieldFields()},
    ToolVerb{"remove-unused-pads", "Tools_RemoveUnusedPads", "Pads and vias",
             "Take the copper of pads and vias away on layers where nothing connects, or give it back", true,
             CallWithBoard, false, Settings::None, Operands::None, UnusedPadsFields()},
    ToolVerb{"auto-place-align-left", "Tools_AutoPlaceAlignLeft", "Arranging",
             "Line the selection up on its left edge", false, CallWithView},
    ToolVerb{"auto-place-align-right", "Tools_AutoPlaceAlignRight", "Arranging",
             "Line the selection up on its right edge", false, CallWithView},
    ToolVerb{"auto-place-align-top", "Tools_AutoPlaceAlignTop", "Arranging",
             "Line the selection up on its top edge", false, CallWithView},
    ToolVerb{"auto-place-align-bottom", "Tools_AutoPlaceAlignBottom", "Arranging",
             "Line the selection up on its bottom edge", false, CallWithView},
    ToolVerb{"auto-place-align-left-side-by-side", "Tools_AutoPlaceAlignLeftSideBySide", "Arranging",
             "Line the selection up on the left, each beside what is in its way", false, CallWithView},
    ToolVerb{"auto-place-align-right-side-by-side", "Tools_AutoPlaceAlignRightSideBySide", "Arranging",
             "Line the selection up on the right, each beside what is in its way", false, CallWithView},
    ToolVerb{"auto-place-align-top-side-by-side", "Tools_AutoPlaceAlignTopSideBySide", "Arranging",
             "Line the selection up at the top, each beside what is in its way", false, CallWithView},
    ToolVerb{"auto-place-align-bottom-side-by-side", "Tools_AutoPlaceAlignBottomSideBySide", "Arranging",
             "Line the selection up at the bottom, each beside what is in its way", false, CallWithView},
    ToolVerb{"auto-place-centre-horiziontal", "Tools_AutoPlaceCentreHoriziontal", "Arranging",
             "Centre the selection along x on an object that is picked", false, CallWithView, true},
    ToolVerb{"auto-place-centre-vertical", "Tools_AutoPlaceCentreVertical", "Arranging",
             "Centre the selection along y on an object that is picked", false, CallWithView, true},
    ToolVerb{"auto-place-expand-x-comps", "Tools_AutoPlaceExpandXComps", "Arranging",
             "Move the selection apart along x, a grid step further from group to group", false,
             CallWithView},
    ToolVerb{"auto-place-expand-y-comps", "Tools_AutoPlaceExpandYComps", "Arranging",
             "Move the selection apart along y", false, CallWithView},
    ToolVerb{"auto-place-contract-x-comps", "Tools_AutoPlaceContractXComps", "Arranging",
             "Move the selection together along x", false, CallWithView},
    ToolVerb{"auto-place-contract-y-comps", "Tools_AutoPlaceContractYComps", "Arranging",
             "Move the selection together along y", false, CallWithView},
    ToolVerb{"auto-place-spread-x-comps", "Tools_AutoPlaceSpreadXComps", "Arranging",
             "Spread the selection along x in equal steps", false, CallWithView},
    ToolVerb{"auto-place-spread-y-comps", "Tools_AutoPlaceSpreadYComps", "Arranging",
             "Spread the selection along y in equal steps", false, CallWithView},
    ToolVerb{"auto-place-run-dialog", "Tools_AutoPlaceRunDialog", "Arranging",
             "Arrange the selection as the alignment dialog says; -D Alignment_Horizontal=left and the like",
             true, CallWithView, true},
    ToolVerb{"auto-place-to-rectangle", "Tools_AutoPlaceToRectangle", "Arranging",
             "Pack the selected components into a rectangle: -D Location1.x, Location1.y, Location2.x, "
             "Location2.y in units of 1/10000 mil, or picked",
             true, CallWithViewAndParameters, true},
    ToolVerb{"auto-place-to-room", "Tools_AutoPlaceToRoom", "Arranging",
             "Pack the components of a room into it: -D RoomName=NAME, or picked", true,
             CallWithViewAndParameters, true},
    ToolVerb{"auto-place-outside-board", "Tools_AutoPlaceOutsideBoard", "Arranging",
             "Pack the selected components above the board and to its right", false, CallWithView},
    ToolVerb{"arrange-rooms", "Tools_ArrangeRooms", "Arranging",
             "Lay the selected rooms out as the dialog says; -D RoomArrange_ColCount=3 and the like", true,
             CallWithViewAndParameters, true},
    ToolVerb{"run-arrange", "Tools_RunArrange", "Arranging",
             "Arrange the selection by the number of a method: -D Method=4", true, RunArrange, true},
    ToolVerb{"run-arrange-to-rectangle", "Tools_RunArrangeToRectangle", "Arranging",
             "As auto-place-to-rectangle, with all four numbers given", true, RunArrangeToRectangle},
    ToolVerb{"run-arrange-to-room", "Tools_RunArrangeToRoom", "Arranging",
             "As auto-place-to-room, with -D RoomName=NAME given", true, RunArrangeToRoom},
    ToolVerb{"run-arrange-to-room-rule", "Tools_RunArrangeToRoomRule", "Arranging",
             "The same; fails when the rule of that name is no room", true, RunArrangeToRoomRule},
    ToolVerb{"run-arrange-outside-board", "Tools_RunArrangeOutsideBoard", "Arranging",
             "As auto-place-outside-board", false, CallWithView},
    ToolVerb{"run-room-arrange", "Tools_RunRoomArrange", "Arranging",
             "Lay the selected rooms out by -D RoomArrange_ColCount=3 and the like", true, RunRoomArrange},
    ToolVerb{"move-all-comps-to-grid", "Tools_MoveAllCompsToGrid", "Arranging",
             "Move the reference points of the selected components to the component grid", false,
             CallWithBoard, false, Settings::Grid},
    ToolVerb{"move-all-rooms-to-grid", "Tools_MoveAllRoomsToGrid", "Arranging",
             "Move the corners of the selected rooms to the component grid, with what they hold or without",
             false, CallWithBoard, false, Settings::Grid},
    ToolVerb{"shove-components", "Tools_ShoveComponents", "Arranging",
             "Shove what overlaps the components at --pick out of their way", false, CallWithView, true,
             Settings::Shove},
    ToolVerb{"autoposition-text", "Tools_AutopositionText", "Arranging",
             "Put texts of the selected components beside them: -D NamePosition=top-left for the "
             "designators, CommentPosition for the comments",
             true, AutopositionText},
    ToolVerb{"place-from-file", "Tools_PlaceFromFile", "Placing",
             "Put components where a pick-and-place file says, with its sides, rotations and comments", false,
             PlaceFromFile, false, Settings::None, Operands::File},
    ToolVerb{"swap-components", "Tools_SwapComponents", "Placing",
             "Two components, named, selected or picked, exchange their places", false, CallWithView, true,
             Settings::None, Operands::TwoComponents},
    ToolVerb{
        "un-group",
        "Tools_UnGroup",
        "Converting",
        "Turn components, zones, dimensions into their free parts: those selected, picked, or at a place",
        true,
        UnGroupKinds,
        true,
        Settings::None,
        Operands::None,
        {},
        {},
        true},
    ToolVerb{"make-microstripe",
             "Tools_MakeMicrostripe",
             "Converting",
             "Turn the selected tracks that meet at right angles into outlines with mitred bends: "
             "--outside-miter 0.5 and the like",
             true,
             MakeMicrostripe,
             false,
             Settings::None,
             Operands::None,
             {},
             MiterFields()},
};

constexpr std::array kSayings{
    Saying{"align", "left", "auto-place-align-left"},
    Saying{"align", "right", "auto-place-align-right"},
    Saying{"align", "top", "auto-place-align-top"},
    Saying{"align", "bottom", "auto-place-align-bottom"},
    Saying{"align", "left-side-by-side", "auto-place-align-left-side-by-side"},
    Saying{"align", "right-side-by-side", "auto-place-align-right-side-by-side"},
    Saying{"align", "top-side-by-side", "auto-place-align-top-side-by-side"},
    Saying{"align", "bottom-side-by-side", "auto-place-align-bottom-side-by-side"},
    Saying{"center", "x", "auto-place-centre-horiziontal"},
    Saying{"center", "y", "auto-place-centre-vertical"},
    Saying{"expand", "x", "auto-place-expand-x-comps"},
    Saying{"expand", "y", "auto-place-expand-y-comps"},
    Saying{"contract", "x", "auto-place-contract-x-comps"},
    Saying{"contract", "y", "auto-place-contract-y-comps"},
    Saying{"spread", "x", "auto-place-spread-x-comps"},
    Saying{"spread", "y", "auto-place-spread-y-comps"},
    Saying{"to-grid", "components", "move-all-comps-to-grid"},
    Saying{"to-grid", "rooms", "move-all-rooms-to-grid"},
};

}  // namespace

std::span<const ToolVerb> ToolVerbs() {
  return kToolVerbs;
}

std::span<const GridVerb> GridVerbs() {
  return kGridVerbs;
}

std::span<const Saying> Sayings() {
  return kSayings;
}

const ToolVerb& FindToolVerb(std::string_view verb) {
  return *std::find_if(kToolVerbs.begin(), kToolVerbs.end(),
                       [&](const ToolVerb& t) { return t.verb == verb; });
}

}  // namespace Ketril::Command
