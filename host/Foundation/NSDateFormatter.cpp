// Dates as text: the numeric fields of a fixed format.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string>

#include "Foundation/clock.h"
#include "Foundation/text.h"
#include "objc/define.h"

namespace {

struct Locale : NSLocale {
  static Locale* withIdentifier(NSString* identifier);
  Locale* initWithIdentifier(NSString* identifier) {
    identifier_ = Strong<NSString>::retain(identifier);
    return this;
  }
  NSString* localeIdentifier() { return identifier_; }

  Strong<NSString> identifier_;
};

struct TimeZone : NSTimeZone {
  static TimeZone* forSeconds(NSInteger seconds);

  NSInteger seconds;
};

struct DateFormatter : NSDateFormatter {
  NSString* format() { return format_; }
  void storeFormat(NSString* value) { format_ = Strong<NSString>::retain(value); }
  void storeLocale(NSLocale* value) { locale = Strong<NSLocale>::retain(value); }
  void storeTimeZone(NSTimeZone* value) { zone = Strong<NSTimeZone>::retain(value); }
  NSString* string(NSDate* date);

  Strong<NSString> format_;
  Strong<NSLocale> locale;
  Strong<NSTimeZone> zone;
};

/// The number of years by which a locale's calendar is ahead of ours.
int yearsAhead(std::string_view locale) {
  constexpr int kBuddhist = 543;
  return locale.ends_with("@calendar=buddhist") ? kBuddhist : 0;
}

struct DateFields {
  int year;
  unsigned month, day;
  int hour, minute, second;
};

/// The field that a pattern's letter stands for, as many digits wide as there are letters.
void appendField(std::string& out, const DateFields& fields, char letter, std::size_t width) {
  int value = 0;
  switch (letter) {
    case 'y':
      value = width == 2 ? fields.year % 100 : fields.year;
      break;
    case 'M':
      value = static_cast<int>(fields.month);
      break;
    case 'd':
      value = static_cast<int>(fields.day);
      break;
    case 'H':
      value = fields.hour;
      break;
    case 'm':
      value = fields.minute;
      break;
    case 's':
      value = fields.second;
      break;
    default:
      return;
  }
  char text[32];
  std::snprintf(text, sizeof text, "%0*d", static_cast<int>(std::min<std::size_t>(width, 16)),
                value);
  out += text;
}

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string written(std::string_view format, const DateFields& fields) {
  std::string out;
  for (std::size_t at = 0; at < format.size();) {
    const char c = format[at];
    if (c == '\'') {
      const std::size_t end = format.find('\'', at + 1);
      out += end == at + 1 ? "'" : format.substr(at + 1, end - at - 1);
      at = end == std::string_view::npos ? format.size() : end + 1;
    } else if (isLetter(c)) {
      const std::size_t end = std::min(format.find_first_not_of(c, at), format.size());
      appendField(out, fields, c, end - at);
      at = end;
    } else {
      out += c;
      ++at;
    }
  }
  return out;
}

}  // namespace

OBJC_CLASS_NAMED(NSLocale, NSObject, Locale, NSObject,
                 objc::Ivar<"_identifier", &Locale::identifier_>,
                 objc::ClassMethod<"localeWithLocaleIdentifier:", &Locale::withIdentifier>,
                 objc::Method<"initWithLocaleIdentifier:", &Locale::initWithIdentifier>,
                 objc::Method<"localeIdentifier", &Locale::localeIdentifier>)

OBJC_CLASS_NAMED(NSTimeZone, NSObject, TimeZone, NSObject,
                 objc::Readable<"secondsFromGMT", &TimeZone::seconds, "_seconds">,
                 objc::ClassMethod<"timeZoneForSecondsFromGMT:", &TimeZone::forSeconds>)

OBJC_CLASS_NAMED(NSDateFormatter, NSObject, DateFormatter, NSObject,
                 objc::Ivar<"_format", &DateFormatter::format_>,
                 objc::Ivar<"_locale", &DateFormatter::locale>,
                 objc::Ivar<"_timeZone", &DateFormatter::zone>,
                 objc::Method<"dateFormat", &DateFormatter::format>,
                 objc::Method<"setDateFormat:", &DateFormatter::storeFormat>,
                 objc::Method<"setLocale:", &DateFormatter::storeLocale>,
                 objc::Method<"setTimeZone:", &DateFormatter::storeTimeZone>,
                 objc::Method<"stringFromDate:", &DateFormatter::string>)

Locale* Locale::withIdentifier(NSString* identifier) {
  auto* locale = static_cast<Locale*>(class_createInstance(&objc_class_NSLocale, 0));
  return static_cast<Locale*>(objc_autorelease(locale->initWithIdentifier(identifier)));
}

/// Nil beyond 18 hours from GMT.
TimeZone* TimeZone::forSeconds(NSInteger seconds) {
  constexpr NSInteger kFarthest = NSInteger{18} * 3600;
  if (seconds > kFarthest || seconds < -kFarthest) return nullptr;
  auto* zone = static_cast<TimeZone*>(class_createInstance(&objc_class_NSTimeZone, 0));
  zone->seconds = seconds;
  return static_cast<TimeZone*>(objc_autorelease(zone));
}

NSString* DateFormatter::string(NSDate* date) {
  using namespace std::chrono;
  if (date == nullptr) return nullptr;
  const double since2001 = send(date, NSDate::timeIntervalSinceReferenceDate);
  constexpr double kCalendarsEnd = 9e11;
  if (!(std::fabs(since2001) < kCalendarsEnd)) return nullptr;
  const long offset =
      zone == nullptr ? host::localTimeZone() : static_cast<TimeZone*>(zone.get())->seconds;
  const auto local = sys_days{2001y / January / 1} +
                     seconds{static_cast<long long>(std::floor(since2001)) + offset};
  const auto day = floor<days>(local);
  const year_month_day on{day};
  const hh_mm_ss at{local - day};
  const std::string user = host::userLocale();
  const std::string_view region =
      locale == nullptr ? std::string_view(user)
                        : host::text(static_cast<Locale*>(locale.get())->localeIdentifier());
  return host::makeString(
      written(host::text(format_),
              {static_cast<int>(on.year()) + yearsAhead(region), static_cast<unsigned>(on.month()),
               static_cast<unsigned>(on.day()), static_cast<int>(at.hours().count()),
               static_cast<int>(at.minutes().count()), static_cast<int>(at.seconds().count())}));
}
