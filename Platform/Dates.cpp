#include "Platform/Dates.h"

#include <clocale>
#include <memory>
#include <type_traits>

#include "Platform/Text.h"

namespace Ketril::Platform {

namespace {

struct FreeLocale {
  void operator()(locale_t locale) const { freelocale(locale); }
};

// The locale is asked for here and not set for the process: that is the editor's business.
std::u16string Format(std::time_t when, const char* format) {
  using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale>;
  Locale locale(newlocale(LC_TIME_MASK | LC_CTYPE_MASK, "", nullptr));
  if (!locale) locale.reset(newlocale(LC_ALL_MASK, "C", nullptr));
  std::tm fields{};
  if (!locale || !localtime_r(&when, &fields)) return {};
  char text[256];
  return ToUtf16({text, strftime_l(text, sizeof text, format, &fields, locale.get())});
}

}  // namespace

std::u16string DateText(std::time_t when, TDateStyle style) {
  return Format(when, style == TDateStyle::Short ? "%x" : "%A, %e %B %Y");
}

std::u16string TimeText(std::time_t when, TDateStyle style) {
  return Format(when, style == TDateStyle::Short ? "%R" : "%X");
}

}  // namespace Ketril::Platform
