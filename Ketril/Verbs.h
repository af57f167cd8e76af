// The verbs that run a tool, made from one table: a verb for each export that is built.
#pragma once

#include <span>
#include <string_view>

#include "Interfaces/Board.h"
#include "Interfaces/ParameterList.h"
#include "Ketril/ToolsLibrary.h"

namespace Ketril::Command {

// What stands behind the board on the command line.
enum class Operands { None, File, TwoComponents };

struct ToolVerb {
  const char* verb;
  const char* export_name;
  const char* group;  // under which heading of the help
  const char* help;
  bool takes_parameters;
  // `parameters` is empty where none were given.
  void (*call)(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
               IParameterList* parameters);
  bool picks = false;                  // asks the user for places
  Operands operands = Operands::None;  // a file goes to `call` as the parameter "FileName"
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
