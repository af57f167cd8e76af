#include "DLLs/Tools/Reports/NameOrder.h"

#include <algorithm>

namespace Ketril::Tools {

namespace {

// The place of a character in the order.
char16_t RankOf(char16_t c) {
  if (c >= u'a' && c <= u'z') return static_cast<char16_t>(c - u'a' + u'A');
  if (c >= 58 && c <= 64) return static_cast<char16_t>(c - 57);     // : to @ become 1 to 7
  if (c >= 91 && c <= 96) return static_cast<char16_t>(c - 83);     // [ to ` become 8 to 13
  if (c >= 123 && c <= 126) return static_cast<char16_t>(c - 108);  // { to ~ become 15 to 18
  return c;
}

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

std::size_t DigitsFrom(std::u16string_view text, std::size_t i) {
  const auto begin = text.begin() + static_cast<std::ptrdiff_t>(i);
  return static_cast<std::size_t>(std::find_if_not(begin, text.end(), IsDigit) - begin);
}

template <class Number>
int Order(Number a, Number b) {
  return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace

int CompareNames(std::u16string_view a, std::u16string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  std::size_t i = 0;
  while (i < common && RankOf(a[i]) == RankOf(b[i])) ++i;
  if (i == common) return Order(a.size(), b.size());
  const char16_t x = RankOf(a[i]), y = RankOf(b[i]);
  if (IsDigit(x) && IsDigit(y)) {
    const int by_length = Order(DigitsFrom(a, i), DigitsFrom(b, i));
    return by_length != 0 ? by_length : Order(x, y);
  }
  // One run of digits goes on where the other one ends.
  const bool within_run = i > 0 && IsDigit(a[i - 1]) && IsDigit(b[i - 1]);
  if (IsDigit(x) != IsDigit(y) && within_run) return IsDigit(x) ? 1 : -1;
  return Order(x, y);
}

std::vector<std::u16string> SortedNames(const std::vector<std::u16string>& names) {
  std::vector<std::u16string> sorted;
  for (const std::u16string& name : names) {
    const auto place = std::ranges::lower_bound(
        sorted, name,
        [](const std::u16string& a, const std::u16string& b) { return CompareNames(a, b) < 0; });
    sorted.insert(place, name);
  }
  return sorted;
}

}  // namespace Ketril::Tools
