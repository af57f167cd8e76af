#include "Editor/Files/TextEdits.h"

#include <algorithm>

namespace Ketril::Editor {

void TextEdits::Replace(std::uint32_t begin, std::uint32_t end, std::string replacement) {
  if (text_.compare(begin, end - begin, replacement) == 0) return;
  edits_.push_back({begin, end, std::move(replacement)});
}

void TextEdits::Drop(std::uint32_t begin, std::uint32_t end) {
  edits_.push_back({BlanksBegin(begin), end, {}});
}

std::uint32_t TextEdits::BlanksBegin(std::uint32_t at) const {
  constexpr std::string_view kBlanks = " \t\r\n";
  while (at > 0 && kBlanks.find(text_[at - 1]) != std::string_view::npos) --at;
  return at;
}

std::string_view TextEdits::BlanksBefore(std::uint32_t at) const {
  const std::uint32_t begin = BlanksBegin(at);
  std::string_view blanks = std::string_view(text_).substr(begin, at - begin);
  const std::size_t line = blanks.rfind('\n');
  if (line == std::string_view::npos) return blanks;
  return blanks.substr(line > 0 && blanks[line - 1] == '\r' ? line - 1 : line);
}

bool TextEdits::ChangedSince(std::uint32_t at) const {
  // Those of one expression are the last ones.
  return !edits_.empty() && edits_.back().begin >= at;
}

void TextEdits::Apply(const TextSink& sink) {
  std::ranges::stable_sort(edits_, {}, &Edit::begin);
  const std::string_view text = text_;
  std::uint32_t done = 0;
  for (const Edit& edit : edits_) {
    const std::uint32_t begin = std::max(edit.begin, done);
    sink(text.substr(done, begin - done));
    sink(edit.text);
    done = std::max(edit.end, begin);
  }
  sink(text.substr(done));
}

}  // namespace Ketril::Editor
