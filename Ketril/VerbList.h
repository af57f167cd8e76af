// What the command line offers, as a list. The manual page and the shells' completions are made from it, so
// that they tell what the command does.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Ketril::Command {

struct OfferedOption {
  std::vector<std::string> names;  // as typed, "-o" and "--output"; empty for an operand
  std::string value;               // what stands for its value, "FILE"; empty for a switch
  std::vector<std::string> choices;
  bool takes_list = false;              // several choices with commas between
  std::vector<std::string> extensions;  // of the files that it names, "kicad_pcb"
  bool required = false;
  std::string help;
};

struct OfferedVerb {
  std::string name;  // "tear-drops", or of two words: "report board"
  std::string group;
  std::string help;
  std::vector<OfferedOption> operands;  // in their order
  std::vector<OfferedOption> options;
};

// In the order of the help. A verb that is nothing without a second word stands before those of two.
std::vector<OfferedVerb> OfferedVerbs(const CLI::App& app);

}  // namespace Ketril::Command
