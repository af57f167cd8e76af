#include "Ketril/VerbList.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

namespace Ketril::Command {

namespace {

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    parts.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

// The type is told as "NAME", "one|other", or with what is checked behind it: "NAME:{one,other}".
void ReadType(OfferedOption& option, const std::string& type) {
  const std::size_t checked = type.find(':');
  option.value = type.substr(0, checked);
  if (const std::size_t brace = type.find('{'); brace != type.npos)
    option.choices = Split(type.substr(brace + 1, type.find('}') - brace - 1), ',');
  else if (option.value.find('|') != option.value.npos)
    option.choices = Split(option.value, '|');
  if (option.value == "TEXT") option.value = option.choices.empty() ? "TEXT" : "WORD";
  if (option.value == "INT" || option.value == "UINT") option.value = "NUMBER";
}

// Which files an option takes stands in its help, in parentheses: "Board file (.kicad_pcb)".
std::vector<std::string> ExtensionsIn(const std::string& help) {
  std::vector<std::string> extensions;
  for (std::size_t at = 0; (at = help.find("(.", at)) != help.npos; ++at)
    extensions.push_back(help.substr(at + 2, help.find(')', at) - at - 2));
  return extensions;
}

OfferedOption Offered(const CLI::Option& from) {
  OfferedOption option;
  for (const std::string& name : from.get_snames()) option.names.push_back("-" + name);
  for (const std::string& name : from.get_lnames()) option.names.push_back("--" + name);
  if (from.get_items_expected_max() > 0) ReadType(option, from.get_type_name());
  if (from.get_positional()) option.value = from.get_name(true);
  option.takes_list = from.get_delimiter() == ',';
  option.required = from.get_required();
  option.help = from.get_description();
  option.extensions = ExtensionsIn(option.help);
  return option;
}

void AddOptions(OfferedVerb& verb, const CLI::App& app) {
  for (const CLI::Option* option : app.get_options(nullptr))
    (option->get_positional() ? verb.operands : verb.options).push_back(Offered(*option));
}

void AddVerb(std::vector<OfferedVerb>& verbs, const CLI::App& app, const OfferedVerb& above) {
  const std::string before = above.name.empty() ? "" : above.name + " ";
  const std::size_t at = verbs.size();
  verbs.push_back({before + app.get_name(),
                   before.empty() ? app.get_group() : above.group,
                   app.get_description(),
                   {},
                   {}});
  AddOptions(verbs[at], app);
  OfferedOption words;
  for (const CLI::App* part : app.get_subcommands({})) {
    if (part->get_name().empty()) {
      AddOptions(verbs[at], *part);  // a group of options
    } else {
      words.choices.push_back(part->get_name());
      AddVerb(verbs, *part, OfferedVerb(verbs[at]));
    }
  }
  if (words.choices.empty()) return;
  words.value = "WHAT";
  words.required = true;
  verbs[at].operands.push_back(std::move(words));
}

}  // namespace

std::vector<OfferedVerb> OfferedVerbs(const CLI::App& app) {
  std::vector<std::string> groups;
  for (const CLI::App* verb : app.get_subcommands({})) {
    if (std::ranges::find(groups, verb->get_group()) == groups.end()) groups.push_back(verb->get_group());
  }
  std::vector<OfferedVerb> verbs;
  for (const std::string& group : groups) {
    for (const CLI::App* verb : app.get_subcommands({})) {
      if (verb->get_group() == group) AddVerb(verbs, *verb, {});
    }
  }
  return verbs;
}

}  // namespace Ketril::Command
