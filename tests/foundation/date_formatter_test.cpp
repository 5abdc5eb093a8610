// Dates as text.
#include <cmath>

#include "Foundation/clock.h"
#include "objc/autorelease_pool.h"
#include "support/hosted.h"

namespace {

using namespace test;

class DateFormatter : public testing::Test {
 protected:
  DateFormatter() { formatter = make<NSDateFormatter>("NSDateFormatter"); }
  std::string written(const char* format, double seconds) {
    send(formatter, NSDateFormatter::setDateFormat, string(format));
    auto* date = NSDate::dateWithTimeIntervalSinceReferenceDate(seconds);
    NSString* text = send(formatter, NSDateFormatter::stringFromDate, date);
    return text == nullptr ? "nil" : std::string(host::text(text));
  }

  objc::AutoreleasePool pool;
  NSDateFormatter* formatter = nullptr;
};

TEST_F(DateFormatter, WritesTheFieldsOfAPattern) {
  // 2004-02-29 23:05:09 GMT
  constexpr double kLeapDay = 99788709;
  EXPECT_EQ(written("yyyy-MM-dd HH:mm:ss", kLeapDay), "2004-02-29 23:05:09");
  EXPECT_EQ(written("y yy M d H m s yyyyyy", kLeapDay), "2004 04 2 29 23 5 9 002004");
  EXPECT_EQ(written("'year' yyyy ''yyyy'", kLeapDay), "year 2004 '2004");
  EXPECT_EQ(written("Q!", kLeapDay), "!");
  EXPECT_EQ(written("", kLeapDay), "");
}

TEST_F(DateFormatter, BeginsAYearInItsTimeZone) {
  EXPECT_EQ(written("yyyy", 0), "2001");
  EXPECT_EQ(written("yyyy", -0.5), "2000");
  send(formatter, NSDateFormatter::setTimeZone, NSTimeZone::timeZoneForSecondsFromGMT(-3600));
  EXPECT_EQ(written("yyyy HH", 0), "2000 23");
  send(formatter, NSDateFormatter::setTimeZone, nullptr);
  host::setLocalTimeZone(-7200);
  EXPECT_EQ(written("yyyy HH", 0), "2000 22");
  EXPECT_EQ(NSTimeZone::timeZoneForSecondsFromGMT(19 * 3600), nullptr);
}

TEST_F(DateFormatter, CountsYearsInItsLocalesCalendar) {
  host::setUserLocale("th_TH@calendar=buddhist");
  EXPECT_EQ(written("yyyy", 0), "2544");
  send(formatter, NSDateFormatter::setLocale,
       NSLocale::localeWithLocaleIdentifier("en_US_POSIX"_ns));
  EXPECT_EQ(written("yyyy", 0), "2001");
}

TEST_F(DateFormatter, WritesNothingForWhatNoCalendarHas) {
  for (double seconds : {1e300, -1e300, std::nan(""), 1e12, static_cast<double>(INFINITY)})
    EXPECT_EQ(written("yyyy", seconds), "nil") << seconds;
  EXPECT_EQ(send(formatter, NSDateFormatter::stringFromDate, nullptr), nullptr);
}

TEST(Clock, GoesOnUnlessItIsStopped) {
  const objc::AutoreleasePool pool;
  host::setClock(42);
  EXPECT_EQ(send(NSDate::date(), NSDate::timeIntervalSinceReferenceDate), 42);
  host::setClock(std::nullopt);
  const double now = send(NSDate::date(), NSDate::timeIntervalSinceReferenceDate);
  constexpr double kFirstOf2001 = 978307200;
  EXPECT_NEAR(now, static_cast<double>(std::time(nullptr)) - kFirstOf2001, 5);
}

}  // namespace
