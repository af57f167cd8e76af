#include "Platform/Dates.h"

#include <chrono>
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
std::u16string Format(const std::tm& fields, const char* format) {
  using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale>;
  Locale locale(newlocale(LC_TIME_MASK | LC_CTYPE_MASK, "", nullptr));
  if (!locale) locale.reset(newlocale(LC_ALL_MASK, "C", nullptr));
  if (!locale) return {};
  char text[256];
  return ToUtf16({text, strftime_l(text, sizeof text, format, &fields, locale.get())});
}

std::u16string Format(std::time_t when, const char* format) {
  std::tm fields{};
  return localtime_r(&when, &fields) ? Format(fields, format) : std::u16string();
}

const char* DateFormat(TDateStyle style) {
  return style == TDateStyle::Short ? "%x" : "%A, %e %B %Y";
}

const char* TimeFormat(TDateStyle style) {
  return style == TDateStyle::Short ? "%R" : "%X";
}

std::chrono::sys_days DayOf(const TDate& date) {
  return std::chrono::year(date.Year) / date.Month / date.Day;
}

}  // namespace

void GetDateAndTime(TDate& date, TTime& time) {
  std::timespec now{};
  std::timespec_get(&now, TIME_UTC);
  std::tm fields{};
  localtime_r(&now.tv_sec, &fields);
  date = {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday};
  time = {fields.tm_hour, fields.tm_min, fields.tm_sec, static_cast<int>(now.tv_nsec / 10000000)};
}

std::int64_t HundredthsBetween(const TDate& date1, const TTime& time1, const TDate& date2,
                               const TTime& time2) {
  const auto within_day = [](const TTime& time) {
    return ((std::int64_t{time.Hour} * 60 + time.Minute) * 60 + time.Second) * 100 + time.Hundredth;
  };
  constexpr std::int64_t kDay = 24 * 60 * 60 * 100;
  return (DayOf(date2) - DayOf(date1)).count() * kDay + within_day(time2) - within_day(time1);
}

std::u16string DateText(std::time_t when, TDateStyle style) {
  return Format(when, DateFormat(style));
}

std::u16string DateText(const TDate& date, TDateStyle style) {
  std::tm fields{};
  fields.tm_year = date.Year - 1900;
  fields.tm_mon = date.Month - 1;
  fields.tm_mday = date.Day;
  fields.tm_wday = static_cast<int>(std::chrono::weekday(DayOf(date)).c_encoding());
  return Format(fields, DateFormat(style));
}

std::u16string TimeText(std::time_t when, TDateStyle style) {
  return Format(when, TimeFormat(style));
}

std::u16string TimeText(const TTime& time, TDateStyle style) {
  std::tm fields{};
  fields.tm_hour = time.Hour;
  fields.tm_min = time.Minute;
  fields.tm_sec = time.Second;
  return Format(fields, TimeFormat(style));
}

}  // namespace Ketril::Platform
