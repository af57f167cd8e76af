#include "Ketril/TeardropDialog.h"

#include <algorithm>
#include <charconv>
#include <istream>
#include <ostream>
#include <string_view>

namespace Ketril::Command {

namespace {

constexpr const char* kRows[] = {"TeardropParam_PercentForVias", "TeardropParam_PercentForPads",
                                 "TeardropParam_PercentForTracks", "TeardropParam_PercentForTJunctions"};
constexpr const char* kFlags = "TeardropParam_FlagsEx";

std::string Trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r");
  if (begin == text.npos) return {};
  return std::string(text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin));
}

}  // namespace

std::vector<std::pair<std::string, double>> TeardropFields(const TTeardropOptionsEx& options) {
  std::vector<std::pair<std::string, double>> fields;
  for (int row = 0; row < 4; ++row) {
    fields.emplace_back(std::string(kRows[row]) + "_Length", options.SizePercentArray[row].Length);
    fields.emplace_back(std::string(kRows[row]) + "_Width", options.SizePercentArray[row].Width);
  }
  fields.emplace_back(kFlags, options.Flags);
  return fields;
}

bool SetTeardropField(TTeardropOptionsEx& options, const std::string& name, const std::string& text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  if (name == kFlags) {
    if (value < 0 || value > 1023 || value != static_cast<int>(value)) return false;
    options.Flags = static_cast<std::int32_t>(value);
    return true;
  }
  for (int row = 0; row < 4; ++row) {
    TTeardropObjectSize& size = options.SizePercentArray[row];
    if (name == std::string(kRows[row]) + "_Length") return size.Length = value, true;
    if (name == std::string(kRows[row]) + "_Width") return size.Width = value, true;
  }
  return false;
}

bool EditTeardropOptions(TTeardropOptionsEx& options, std::istream& in, std::ostream& out) {
  TTeardropOptionsEx edited = options;
  out << "Teardrops. Sizes in percent: of a via's diameter, of the track's width. Flags are a sum of\n"
         "1 keep violations, 2 selected only, 4 report, 8 scale the width, 16 straight, 32 add (else "
         "remove),\n"
         "64 vias and through-hole pads, 128 surface pads, 256 wider tracks, 512 junctions.\n";
  for (const auto& [name, value] : TeardropFields(edited)) out << "  " << name << "=" << value << "\n";
  out << "NAME=VALUE changes one, an empty line accepts, cancel cancels.\n" << std::flush;
  for (std::string line; out << "> " << std::flush, std::getline(in, line);) {
    line = Trimmed(line);
    if (line == "cancel") return false;
    if (line.empty()) {
      options = edited;
      return true;
    }
    const std::size_t equals = line.find('=');
    if (equals == line.npos ||
        !SetTeardropField(edited, Trimmed(line.substr(0, equals)), Trimmed(line.substr(equals + 1))))
      out << "  this is no NAME=VALUE of the list above\n";
  }
  return false;
}

}  // namespace Ketril::Command
