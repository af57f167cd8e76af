#include "DLLs/Tools/Placement/NaturalOrder.h"

#include <algorithm>
#include <optional>
#include <string>

#include "DLLs/Tools/Frame/NumberText.h"

namespace Ketril::Tools {

namespace {

bool IsNumeral(char16_t c) {
  return (c >= u'0' && c <= u'9') || c == u'.';
}

bool IsSign(char16_t c) {
  return c == u'+' || c == u'-';
}

std::optional<double> NumberOf(std::u16string_view text) {
  if (text.empty()) return 0;
  return IsNumeral(text.front()) || IsSign(text.front()) ? TextToDouble(text) : std::nullopt;
}

char16_t Lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

int CompareText(std::u16string_view a, std::u16string_view b) {
  const auto [at, bt] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char16_t x, char16_t y) { return Lower(x) == Lower(y); });
  if (at == a.end() || bt == b.end()) return (at != a.end()) - (bt != b.end());
  return Lower(*at) < Lower(*bt) ? -1 : 1;
}

int CompareNumbersOrText(std::u16string_view a, std::u16string_view b) {
  const auto x = NumberOf(a), y = NumberOf(b);
  if (x && y) return (*x > *y) - (*x < *y);
  return CompareText(a, b);
}

// Cuts the leading chunk off; at the very start of a text a sign belongs to it.
std::u16string_view CutChunk(std::u16string_view& text, bool at_start) {
  std::size_t end = at_start && !text.empty() && IsSign(text.front()) ? 1 : 0;
  const bool numeral = end < text.size() && IsNumeral(text[end]);
  while (end < text.size() && IsNumeral(text[end]) == numeral) ++end;
  const std::u16string_view chunk = text.substr(0, end);
  text.remove_prefix(end);
  return chunk;
}

}  // namespace

int CompareNatural(std::u16string_view a, std::u16string_view b) {
  if (a == b) return 0;
  if (NumberOf(a) && NumberOf(b)) return CompareNumbersOrText(a, b);
  if (std::none_of(a.begin(), a.end(), IsNumeral) || std::none_of(b.begin(), b.end(), IsNumeral))
    return CompareText(a, b);
  std::u16string without_blanks[] = {std::u16string(a), std::u16string(b)};
  for (std::u16string& text : without_blanks) std::erase(text, u' ');
  std::u16string_view rest_a = without_blanks[0], rest_b = without_blanks[1], chunk_a, chunk_b;
  bool at_start = true;
  do {
    chunk_a = CutChunk(rest_a, at_start);
    chunk_b = CutChunk(rest_b, at_start);
    at_start = false;
  } while (CompareText(chunk_a, chunk_b) == 0 && !chunk_a.empty());
  return CompareNumbersOrText(chunk_a, chunk_b);
}

}  // namespace Ketril::Tools
