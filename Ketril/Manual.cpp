#include "Ketril/Manual.h"

#include <algorithm>
#include <functional>
#include <sstream>
#include <string_view>

#include "Editor/Files/FileStyle.h"
#include "Ketril/Exit.h"

namespace Ketril::Command {

namespace {

// An option that so many verbs have, told alike, is told once.
constexpr int kShared = 4;

// As running text: no sign means anything to roff, and what looks like a minus can be copied as one.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '\\':
        escaped += "\\e";
        break;
      case '-':
        escaped += "\\-";
        break;
      case '\'':
        escaped += "\\(aq";
        break;
      case '`':
        escaped += "\\(ga";
        break;
      case '^':
        escaped += "\\(ha";
        break;
      case '~':
        escaped += "\\(ti";
        break;
      default:
        escaped += c;
    }
  }
  return escaped.starts_with('.') ? "\\&" + escaped : escaped;
}

std::string Bold(std::string_view text) {
  return "\\fB" + Escaped(text) + "\\fR";
}

std::string Italic(std::string_view text) {
  return "\\fI" + Escaped(text) + "\\fR";
}

// A line that begins with blanks, such as an example within the text, starts a line of the page.
std::string Paragraph(const std::string& text) {
  std::istringstream lines(text);
  std::string paragraph;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t blanks = line.find_first_not_of(' ');
    if (blanks == line.npos) continue;
    if (blanks > 0) paragraph += ".br\n";
    paragraph += Escaped(std::string_view(line).substr(blanks)) + "\n";
  }
  return paragraph;
}

bool SameOption(const OfferedOption& a, const OfferedOption& b) {
  return a.names == b.names && a.value == b.value && a.choices == b.choices && a.help == b.help;
}

std::string OptionHead(const OfferedOption& option) {
  std::string head;
  for (const std::string& name : option.names) head += (head.empty() ? "" : ", ") + Bold(name);
  if (!option.value.empty()) head += (head.empty() ? "" : " ") + Italic(option.value);
  return head;
}

std::string ChoicesOf(const OfferedOption& option) {
  if (option.choices.empty() || option.value.find('|') != option.value.npos) return {};
  std::string words;
  for (const std::string& word : option.choices) words += (words.empty() ? "" : ", ") + word;
  return Escaped((option.takes_list ? "Some of: " : "One of: ") + words) + ".\n";
}

std::string OptionText(const OfferedOption& option) {
  std::string text = Paragraph(option.help);
  // The sentences of the list have no stop.
  if (!text.empty() && !option.choices.empty() && text.ends_with('\n')) text.insert(text.size() - 1, ".");
  return ".TP\n" + OptionHead(option) + "\n" + text + ChoicesOf(option);
}

// The options that several verbs have, in the order of their names.
std::vector<OfferedOption> SharedOptions(const std::vector<OfferedVerb>& verbs) {
  std::vector<std::pair<OfferedOption, int>> counted;
  for (const OfferedVerb& verb : verbs) {
    for (const OfferedOption& option : verb.options) {
      const auto found =
          std::ranges::find_if(counted, [&](const auto& known) { return SameOption(known.first, option); });
      found == counted.end() ? counted.emplace_back(option, 1).second : ++found->second;
    }
  }
  // Of an option that is told in several ways, the one that most verbs share.
  std::ranges::stable_sort(counted, std::greater(), &std::pair<OfferedOption, int>::second);
  std::vector<OfferedOption> shared;
  for (auto& [option, count] : counted) {
    if (count >= kShared && std::ranges::find(shared, option.names, &OfferedOption::names) == shared.end())
      shared.push_back(std::move(option));
  }
  const auto key = [](const OfferedOption& option) {
    return option.names.back().substr(option.names.back().find_first_not_of('-'));
  };
  std::ranges::sort(shared, {}, key);
  return shared;
}

std::string VerbText(const OfferedVerb& verb, const std::vector<OfferedOption>& shared) {
  std::string text = ".TP\n" + Bold("ketril " + verb.name);
  for (const OfferedOption& operand : verb.operands)
    text += operand.required ? " " + Italic(operand.value) : " [" + Italic(operand.value) + "]";
  text += "\n" + Paragraph(verb.help);
  std::string own, also;
  for (const OfferedOption& operand : verb.operands) {
    if (operand.value != "BOARD" || operand.choices.size() > 0) own += OptionText(operand);
  }
  for (const OfferedOption& option : verb.options) {
    const auto same = [&](const OfferedOption& other) { return SameOption(option, other); };
    if (std::ranges::none_of(shared, same)) {
      own += OptionText(option);
    } else if (option.names.back() != "--help") {
      also += (also.empty() ? "" : ", ") + Bold(option.names.back());
    }
  }
  if (!own.empty()) text += ".RS\n" + own + ".RE\n";
  if (!also.empty()) text += ".IP\nOptions of several verbs: " + also + "\n";
  return text;
}

constexpr const char* kBegin = R"(.SH NAME
ketril \- run board tools on board files from a shell
.SH SYNOPSIS
.B ketril
.I VERB BOARD
.RI [ OPTION .\|.\|.]
.br
.B ketril
.RI [ VERB ]
.B \-\-help
.br
.B ketril \-\-version
.SH DESCRIPTION
.B ketril
looks at printed\-circuit boards in
.I .kicad_pcb
files, and runs the tools of
.I libKetrilTools.so
on them: teardrops, via stitching and shielding, arranging and placing of components, reports.
.PP
A board is never overwritten unless
.B \-\-in\-place
says so.
A save that is interrupted loses nothing, and what no tool touched stays in the file to the byte.
.PP
Places are told as in the board file, X,Y with y downwards.
A length may have a unit behind it, as 0.5mm, 20mil or 0.1in; numbers without one are in that of
.BR \-\-units .
)";

constexpr const char* kEnd = R"(.SH ENVIRONMENT
.TP
.B XDG_CONFIG_HOME
The folder above that of the stored options; without it
.IR \(ti/.config .
.TP
.B KETRIL_TOOLS
The library that has the tools, instead of the
.I libKetrilTools.so
beside the other libraries.
.TP
.B KETRIL_TEST_MODE
With any value, each yes/no question of a tool is also written to standard error.
.SH FILES
.TP
.I NAME.kicad_pcb
A board.
.TP
.I NAME.kicad_pro
The project beside it, read for its net classes and the least hole clearance.
.TP
.I NAME.ketril.json
Beside a board, what its file has no word for: rules, unions, teardrop marks, design channels, fences and
stitchings of vias.
It is written when there is something to tell.
.TP
.I \(ti/.config/ketril/KETRIL.INI
The options that the tools keep from run to run.
.SH EXAMPLES
What is on a board, and a picture of a part of it:
.PP
.EX
    ketril info board.kicad_pcb
    ketril draw board.kicad_pcb \-o part.svg \-\-around 100,80,20,15
.EE
.PP
Teardrops on a copy of the board, with a picture that shows them brightly:
.PP
.EX
    ketril tear\-drops board.kicad_pcb \-D TeardropParam_FlagsEx=1000 \-o out.kicad_pcb \-\-picture out.svg
.EE
.PP
What would move, and then the move:
.PP
.EX
    ketril align left board.kicad_pcb \-\-select \(aqcomponent and name:R*\(aq \-\-dry\-run
    ketril align left board.kicad_pcb \-\-select \(aqcomponent and name:R*\(aq \-\-in\-place
.EE
.PP
The board information report in three forms:
.PP
.EX
    ketril report board board.kicad_pcb \-\-format html,csv,json
.EE
)";

}  // namespace

std::string Manual(const std::vector<OfferedVerb>& verbs) {
  std::string page =
      ".TH KETRIL 1 \"\" \"ketril " KETRIL_VERSION "\" \"Board tools\"\n.nh\n.ad l\n" + std::string(kBegin);
  page += "Board files of the versions " + std::string(Editor::kKnownVersions) + " are read and written.\n";
  const std::vector<OfferedOption> shared = SharedOptions(verbs);
  page += ".SH VERBS\n";
  std::string group;
  for (const OfferedVerb& verb : verbs) {
    if (verb.group != group) page += ".SS \"" + Escaped(group = verb.group) + "\"\n";
    page += VerbText(verb, shared);
  }
  page += ".SH OPTIONS OF SEVERAL VERBS\n";
  for (const OfferedOption& option : shared) page += OptionText(option);
  page += ".SH EXIT STATUS\n";
  for (std::size_t code = 0; code < std::size(kExitTexts); ++code)
    page += ".TP\n.B " + std::to_string(code) + "\n" + Paragraph(kExitTexts[code]);
  return page + kEnd;
}

}  // namespace Ketril::Command
