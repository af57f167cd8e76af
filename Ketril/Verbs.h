// The verbs that run a tool, made from one table: a verb for each export that is built.
#pragma once

#include <span>

#include "Interfaces/Board.h"
#include "Interfaces/ParameterList.h"
#include "Ketril/ToolsLibrary.h"

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
};

std::span<const ToolVerb> ToolVerbs();

}  // namespace Ketril::Command
