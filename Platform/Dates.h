// Dates and times as the user's system writes them: in the language and order of the environment's locale
// (LC_TIME), in the local time zone.
#pragma once

#include <ctime>
#include <string>

namespace Ketril::Platform {

enum class TDateStyle { Short, Long };

// Short: the locale's own date, "07/28/26" or "28.07.2026". Long: "Tuesday, 28 July 2026".
std::u16string DateText(std::time_t when, TDateStyle style);

// Short: hours and minutes, "14:05". Long: the locale's own time, with seconds.
std::u16string TimeText(std::time_t when, TDateStyle style);

}  // namespace Ketril::Platform
