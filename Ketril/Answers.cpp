#include "Ketril/Answers.h"

#include <fstream>
#include <istream>
#include <optional>
#include <ostream>

#include "Editor/Selection/Selection.h"
#include "Ketril/Exit.h"
#include "Ketril/TeardropDialog.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Platform::TDialogAnswer;

std::optional<bool> YesOrNo(std::u16string_view word) {
  const std::u16string_view trimmed = Platform::Trim(word);
  for (const auto* yes : {u"yes", u"y"}) {
    if (Platform::EqualsIgnoringAsciiCase(trimmed, yes)) return true;
  }
  for (const auto* no : {u"no", u"n"}) {
    if (Platform::EqualsIgnoringAsciiCase(trimmed, no)) return false;
  }
  return std::nullopt;
}

}  // namespace

Answers::Answers(bool always_yes, std::istream* terminal_in, std::ostream& terminal_out)
    : always_yes_(always_yes), in_(terminal_in), out_(terminal_out) {}

void Answers::ReadFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw Failure(kExit_Usage, path + ": the answers file cannot be read");
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    const std::u16string text = Platform::ToUtf16(line);
    const std::u16string_view trimmed = Platform::Trim(text);
    if (trimmed.empty() || trimmed.front() == u'#') continue;
    // The answer is behind the last sign: a question may hold one.
    const std::size_t sign = trimmed.rfind(u'=');
    const bool is_field = sign != std::u16string_view::npos && trimmed.starts_with(u"TeardropParam_");
    if (is_field) {
      const auto part = [](std::u16string_view text) { return Platform::ToUtf8(Platform::Trim(text)); };
      teardrops_.emplace_back(part(trimmed.substr(0, sign)), part(trimmed.substr(sign + 1)));
      TTeardropOptionsEx tried;
      if (SetTeardropField(tried, teardrops_.back().first, teardrops_.back().second)) continue;
      throw Failure(kExit_Usage,
                    path + ":" + std::to_string(number) + ": no option of teardrops has that name and value");
    }
    const auto answer = sign == std::u16string_view::npos ? std::nullopt : YesOrNo(trimmed.substr(sign + 1));
    if (!answer) {
      throw Failure(kExit_Usage,
                    path + ":" + std::to_string(number) + ": expected `question = yes` or `question = no`");
    }
    lines_.emplace_back(Platform::Trim(trimmed.substr(0, sign)), *answer);
  }
}

TDialogAnswer Answers::Answer(const std::u16string& text, Platform::TDialogKind,
                              Platform::TDialogButtons buttons) {
  const std::string shown = Platform::ToUtf8(text);
  if (buttons == Platform::TDialogButtons::Ok) {
    out_ << shown << "\n";
    return TDialogAnswer::Ok;
  }
  if (always_yes_) return TDialogAnswer::Yes;
  for (const auto& [pattern, yes] : lines_) {
    if (Editor::MatchesPattern(text, pattern)) return yes ? TDialogAnswer::Yes : TDialogAnswer::No;
  }
  std::string line;
  while (in_ && out_ << shown << " [yes/no] " << std::flush && std::getline(*in_, line)) {
    if (const auto answer = YesOrNo(Platform::ToUtf16(line)))
      return *answer ? TDialogAnswer::Yes : TDialogAnswer::No;
  }
  unanswered_.push_back(shown);
  return TDialogAnswer::Cancelled;
}

bool Answers::EditTeardropOptions(TTeardropOptionsEx& options) {
  for (const auto& [name, value] : teardrops_) SetTeardropField(options, name, value);
  if (always_yes_ || !teardrops_.empty()) return true;
  if (in_) return Command::EditTeardropOptions(options, *in_, out_);
  unanswered_.emplace_back("Teardrop options");
  return false;
}

}  // namespace Ketril::Command
