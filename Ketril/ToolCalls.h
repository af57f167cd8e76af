// How the verbs call the exports: one function for exports of each signature, or for one that needs more than
// the board and the parameters of the command line. Each raises Failure.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Interfaces/Board.h"
#include "Interfaces/ParameterList.h"
#include "Ketril/ToolsLibrary.h"

namespace Ketril::Command {

// `parameters` is empty where none were given.
using ToolCall = void(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                      IParameterList* parameters);

// Exports that take the board and nothing else, or with it the named parameters, a view of it, or both.
ToolCall CallWithBoard, CallWithParameters, CallWithView, CallWithDocumentView, CallWithViewAndParameters;
// Exports that work on one object: on each of the selected ones. None selected is a failure (usage).
ToolCall CallOnSelected;

// Exports with arguments of their own, which are parameters here. One that is missing or no value is a
// failure (usage).
ToolCall ShowTearDropsForNet;    // Net=NAME, Show=True|False
ToolCall RunArrange;             // Method=0 to 19
ToolCall RunArrangeToRectangle;  // Location1.x, Location1.y, Location2.x, Location2.y in units
ToolCall RunArrangeToRoom;       // RoomName
ToolCall RunArrangeToRoomRule;   // RoomName; fails when it is no room
ToolCall RunRoomArrange;         // RoomArrange_ColCount and the like, over the board's own options
ToolCall PlaceFromFile;          // FileName
ToolCall AutopositionText;       // NamePosition, CommentPosition; without one that text stays
ToolCall UnGroupKinds;           // Kinds, without it all of them; Selected=False by picks

// Kinds of objects that un-group takes, in the words of a selection: component, zone, dimension, coordinate.
std::vector<std::string> GroupKinds();

// The number of a place of a text, such as "top-left"; empty for no such word.
std::optional<TTextAutoposition> TextPositionOf(std::string_view word);
std::vector<std::string> TextPositionWords();

}  // namespace Ketril::Command
