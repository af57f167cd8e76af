// Dates and times as the user's system writes them: in the language and order of the environment's locale
// (LC_TIME), in the local time zone.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>

namespace Ketril::Platform {

enum class TDateStyle { Short, Long };

// A day and a time of day, local.
struct TDate {
  int Year = 0;
  int Month = 0;  // from 1
  int Day = 0;    // from 1
};
struct TTime {
  int Hour = 0;
  int Minute = 0;
  int Second = 0;
  int Hundredth = 0;
};
void GetDateAndTime(TDate& date, TTime& time);
// From one moment to another in hundredths of a second, by the calendar: a change of the clock in between
// counts. Negative when the second is the earlier one.
std::int64_t HundredthsBetween(const TDate& date1, const TTime& time1, const TDate& date2,
                               const TTime& time2);

// Short: the locale's own date, "07/28/26" or "28.07.2026". Long: "Tuesday, 28 July 2026".
std::u16string DateText(std::time_t when, TDateStyle style);
std::u16string DateText(const TDate& date, TDateStyle style);

// Short: hours and minutes, "14:05". Long: the locale's own time, with seconds.
std::u16string TimeText(std::time_t when, TDateStyle style);
std::u16string TimeText(const TTime& time, TDateStyle style);

}  // namespace Ketril::Platform
