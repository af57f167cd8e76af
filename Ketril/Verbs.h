// The verbs that run a tool, made from one table: a verb for each export that is built.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "Ketril/ToolCalls.h"
#include "Ketril/ViaDialogs.h"

namespace Ketril::Command {

// Settings of the editor that a command line may change for a tool.
enum class Settings : std::uint8_t { None, Grid, Shove };  // the component grid; that and those of the shove
// What stands behind the board on the command line.
enum class Operands { None, File, TwoComponents };

struct ToolVerb {
  const char* verb;
  const char* export_name;
  const char* group;  // under which heading of the help
  const char* help;
  bool takes_parameters;
  ToolCall* call;
  bool picks = false;  // asks the user for places
  Settings settings = Settings::None;
  Operands operands = Operands::None;        // a file goes to `call` as the parameter "FileName"
  std::span<const DialogField> fields = {};  // options that fill its dialog
  std::span<const DialogField> named = {};   // options that stand for its parameters
  bool ungroups = false;
};

// Exports that round a coordinate to the component grid and leave the board as it is.
struct GridVerb {
  const char* verb;
  const char* export_name;
  const char* help;
};

// What people say for a tool: `ketril align left` is `ketril auto-place-align-left`.
struct Saying {
  const char* verb;
  const char* word;
  const char* tool;
};

std::span<const ToolVerb> ToolVerbs();
std::span<const GridVerb> GridVerbs();
std::span<const Saying> Sayings();
const ToolVerb& FindToolVerb(std::string_view verb);  // one that is there

}  // namespace Ketril::Command
