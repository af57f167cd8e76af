#include "Ketril/Completion.h"

#include <algorithm>
#include <map>

namespace Ketril::Command {

namespace {

std::string Joined(const std::vector<std::string>& words, const char* separator) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
  return text;
}

// Within single quotes, as every shell takes them: fish too reads '\''.
std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

bool TakesFile(const OfferedOption& option) {
  return option.value == "FILE" || option.value == "BOARD";
}

// The first words of all verbs, in the place of an operand.
OfferedOption VerbWords(const std::vector<OfferedVerb>& verbs) {
  OfferedOption words;
  words.value = "VERB";
  for (const OfferedVerb& verb : verbs) {
    if (verb.name.find(' ') == verb.name.npos) words.choices.push_back(verb.name);
  }
  return words;
}

bool HasVerbsBelow(const OfferedVerb& verb, const std::vector<OfferedVerb>& verbs) {
  return std::ranges::any_of(
      verbs, [&](const OfferedVerb& other) { return other.name.starts_with(verb.name + " "); });
}

// The command without a verb, for the shells that treat it like one.
OfferedVerb NoVerb(const std::vector<OfferedVerb>& verbs) {
  OfferedVerb none;
  none.operands.push_back(VerbWords(verbs));
  OfferedOption help, version;
  help.names = {"-h", "--help"};
  help.help = "The verbs";
  version.names = {"--version"};
  version.help = "The version";
  none.options = {help, version};
  return none;
}

// --- bash

// The table sets `table`, lines of a verb: an option or the number of an operand, and what it takes:
// nothing (-), text, dir, file, file:EXTENSION,.., words:WORD,.. or list:WORD,.. with commas between.
constexpr const char* kBash = R"(
_ketril_files() {
  local extension
  for extension in ${1//,/ }; do compgen -f -X "!*.$extension" -- "$cur"; done
  if [[ $1 ]]; then compgen -d -- "$cur"; else compgen -f -- "$cur"; fi
}

_ketril_load() {
  local table name takes
  _ketril_table "$1" || return
  verb=$1 offered=()
  while read -r name takes; do offered[$name]=$takes; done <<<"$table"
}

_ketril() {
  local cur=${COMP_WORDS[COMP_CWORD]} verb= operand=0 pending= word takes i
  local -A offered
  _ketril_load ''
  for ((i = 1; i < COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    if [[ $word == [=:] ]]; then
      # The shell has split a word: --option=value goes on as --option value, others are passed over.
      [[ $pending ]] || ((i++))
    elif [[ $pending ]]; then
      pending=
    elif [[ $word == -?* ]]; then
      [[ ${offered[$word]:--} == - ]] || pending=$word
    elif ((operand)) || ! _ketril_load "${verb:+$verb }$word"; then
      ((++operand))
    fi
  done
  [[ $cur == [=:] ]] && cur=
  takes=${offered[${pending:-$operand}]-}
  if [[ ! $pending ]] && [[ $cur == -* || ! $takes ]]; then
    # Options, which the numbers of the operands do not look like.
    cur=${cur:--} word="${!offered[*]}" takes=words:$word
  fi
  case $takes in
    words:*) mapfile -t COMPREPLY < <(takes=${takes#*:}; compgen -W "${takes//,/ }" -- "$cur") ;;
    list:*)
      word=; [[ $cur == *,* ]] && word=${cur%,*},
      compopt -o nospace 2>/dev/null
      mapfile -t COMPREPLY < <(takes=${takes#*:}; compgen -P "$word" -W "${takes//,/ }" -- "${cur##*,}")
      ;;
    file*)
      compopt -o filenames 2>/dev/null
      takes=${takes#file}; mapfile -t COMPREPLY < <(_ketril_files "${takes#:}")
      ;;
    dir) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- "$cur") ;;
    *) COMPREPLY=() ;;
  esac
}

complete -F _ketril ketril
)";

std::string BashTakes(const OfferedOption& option) {
  if (option.value.empty()) return "-";
  if (!option.choices.empty()) return (option.takes_list ? "list:" : "words:") + Joined(option.choices, ",");
  if (option.value == "DIR") return "dir";
  if (!TakesFile(option)) return "text";
  return option.extensions.empty() ? "file" : "file:" + Joined(option.extensions, ",");
}

std::string BashCase(const OfferedVerb& verb) {
  std::string text = "    " + Quoted(verb.name) + ") table='";
  for (std::size_t i = 0; i < verb.operands.size(); ++i)
    text += (i ? "\n" : "") + std::to_string(i) + " " + BashTakes(verb.operands[i]);
  for (const OfferedOption& option : verb.options) {
    for (const std::string& name : option.names) text += "\n" + name + " " + BashTakes(option);
  }
  return text + "' ;;\n";
}

std::string Bash(const std::vector<OfferedVerb>& verbs) {
  std::string text = "# Completion of ketril for bash 4 and later.\n_ketril_table() {\n  case $1 in\n";
  text += BashCase(NoVerb(verbs));
  for (const OfferedVerb& verb : verbs) text += BashCase(verb);
  return text + "    *) return 1 ;;\n  esac\n}\n" + kBash;
}

// --- zsh

// A verb's words are taken by its own specifications, with the word before them in the place of the command.
constexpr const char* kZsh = R"(
_ketril_run() {
  local -a specs
  local context state state_descr line result
  typeset -A opt_args
  _ketril_specs "$1" || return 1
  _arguments -S : $specs
  result=$?
  [[ $state == words ]] || return result
  _ketril_run "${1:+$1 }$words[1]"
}

_ketril() { _ketril_run ''; }

if [[ $zsh_eval_context[-1] == loadautofunc ]]; then _ketril "$@"; else compdef _ketril ketril; fi
)";

// The action of a specification of _arguments.
std::string ZshAction(const OfferedOption& option) {
  if (option.takes_list && !option.choices.empty())
    return "_values -s , " + option.value + " " + Joined(option.choices, " ");
  if (!option.choices.empty()) return "(" + Joined(option.choices, " ") + ")";
  if (option.value == "DIR") return "_files -/";
  if (!TakesFile(option)) return " ";
  if (option.extensions.empty()) return "_files";
  // Parentheses around a single word would not be taken for a choice.
  const std::string pattern = Joined(option.extensions, "|");
  return "_files -g \"*." + (option.extensions.size() > 1 ? "(" + pattern + ")" : pattern) + "\"";
}

std::string ZshText(const std::string& text) {
  std::string escaped;
  for (const char c : FirstLine(text)) {
    if (c == ':' || c == '[' || c == ']' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// `leads_on`: behind its first operand stands another verb.
std::string ZshCase(const OfferedVerb& verb, bool leads_on) {
  std::string text = "    " + Quoted(verb.name) + ") specs=(\n";
  const auto add = [&text](const std::string& spec) { text += "      " + Quoted(spec) + "\n"; };
  for (std::size_t i = 0; i < verb.operands.size(); ++i)
    add(std::to_string(i + 1) + ":" + verb.operands[i].value + ":" + ZshAction(verb.operands[i]));
  if (leads_on) add("*::rest:->words");
  for (const OfferedOption& option : verb.options) {
    for (const std::string& name : option.names) {
      const char* joint = option.value.empty() ? "" : name.starts_with("--") ? "=" : "+";
      const std::string value =
          option.value.empty() ? "" : ":" + ZshText(option.value) + ":" + ZshAction(option);
      add("*" + name + joint + "[" + ZshText(option.help) + "]" + value);
    }
  }
  return text + "    ) ;;\n";
}

std::string Zsh(const std::vector<OfferedVerb>& verbs) {
  std::string text = "#compdef ketril\n_ketril_specs() {\n  case $1 in\n" + ZshCase(NoVerb(verbs), true);
  for (const OfferedVerb& verb : verbs) text += ZshCase(verb, HasVerbsBelow(verb, verbs));
  return text + "    *) return 1 ;;\n  esac\n}\n" + kZsh;
}

// --- fish

std::string FishTakes(const OfferedOption& option) {
  if (!option.choices.empty()) return " -f -a " + Quoted(Joined(option.choices, " "));
  if (option.value == "DIR") return " -f -a '(__fish_complete_directories)'";
  if (!TakesFile(option)) return " -f";
  std::string files;
  for (const std::string& extension : option.extensions)
    files += "(__fish_complete_suffix ." + extension + ") ";
  return files.empty() ? " -F" : " -f -a " + Quoted(files);
}

std::string FishOption(const std::string& start, const OfferedOption& option) {
  std::string text = start;
  for (const std::string& name : option.names)
    text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  if (!option.value.empty()) text += " -r" + FishTakes(option);
  return text + " -d " + Quoted(FirstLine(option.help)) + "\n";
}

std::string FishVerb(const OfferedVerb& verb) {
  std::string seen = "__fish_seen_subcommand_from " + verb.name;
  if (const std::size_t blank = verb.name.find(' '); blank != verb.name.npos)
    seen = "__fish_seen_subcommand_from " + verb.name.substr(0, blank) +
           "; and __fish_seen_subcommand_from " + verb.name.substr(blank + 1);
  const std::string start = "complete -c ketril -n " + Quoted(seen);
  std::string text;
  for (const OfferedOption& operand : verb.operands) text += start + FishTakes(operand) + "\n";
  for (const OfferedOption& option : verb.options) text += FishOption(start, option);
  return text;
}

std::string Fish(const std::vector<OfferedVerb>& verbs) {
  const std::string start = "complete -c ketril -n __fish_use_subcommand";
  std::string text = "complete -c ketril -f\n";
  for (const OfferedOption& option : NoVerb(verbs).options) text += FishOption(start, option);
  for (const OfferedVerb& verb : verbs) {
    if (verb.name.find(' ') == verb.name.npos)
      text += start + " -a " + verb.name + " -d " + Quoted(FirstLine(verb.help)) + "\n";
    text += FishVerb(verb);
  }
  return text;
}

using Maker = std::string (*)(const std::vector<OfferedVerb>& verbs);
const std::map<std::string, Maker> kMakers{{"bash", Bash}, {"zsh", Zsh}, {"fish", Fish}};

}  // namespace

std::vector<std::string> Shells() {
  std::vector<std::string> shells;
  for (const auto& [shell, maker] : kMakers) shells.push_back(shell);
  return shells;
}

std::string Completion(const std::string& shell, const std::vector<OfferedVerb>& verbs) {
  return kMakers.at(shell)(verbs);
}

}  // namespace Ketril::Command
