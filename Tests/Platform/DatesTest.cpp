#include "Platform/Dates.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace Ketril::Platform {
namespace {

TEST(Dates, FollowTheEnvironmentAlsoWhenItsLocaleIsUnknown) {
  constexpr std::time_t kWhen = 1'000'000'000;  // 2001-09-09 01:46:40 UTC
  ::setenv("TZ", "UTC-2", 1);
  ::tzset();
  for (const char* locale : {"C", "xx_NOWHERE"}) {
    ::setenv("LC_ALL", locale, 1);
    EXPECT_EQ(DateText(kWhen, TDateStyle::Short), u"09/09/01") << locale;
    EXPECT_EQ(DateText(kWhen, TDateStyle::Long), u"Sunday,  9 September 2001") << locale;
    EXPECT_EQ(TimeText(kWhen, TDateStyle::Short), u"03:46") << locale;
    EXPECT_EQ(TimeText(kWhen, TDateStyle::Long), u"03:46:40") << locale;
  }
}

}  // namespace
}  // namespace Ketril::Platform
