// The verbs that run a tool, made from one table: a verb for each export that is built.
#pragma once

#include <span>
#include <string_view>

#include "Interfaces/Board.h"
#include "Interfaces/ParameterList.h"
#include "Ketril/ToolsLibrary.h"
#include "Ketril/ViaDialogs.h"

namespace Ketril::Command {

struct ToolVerb {
  const char* verb;
  const char* export_name;
  const char* group;  // under which heading of the help
  const char* help;
  bool takes_parameters;
  // `parameters` is empty where none were given.
  void (*call)(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
               IParameterList* parameters);
  bool picks = false;                        // asks the user for places
  std::span<const DialogField> fields = {};  // options that fill its dialog
};

// What people say for a tool: `ketril align left` is `ketril auto-place-align-left`.
struct Saying {
  const char* verb;
  const char* word;
  const char* tool;
};

std::span<const ToolVerb> ToolVerbs();
std::span<const Saying> Sayings();
const ToolVerb& FindToolVerb(std::string_view verb);  // one that is there

}  // namespace Ketril::Command
