#include "settings/property_text.h"

#include <cstdio>
#include <cstring>
#include <ctime>
#include <span>

#include "Foundation/text.h"
#include "common/escaped.h"
#include "common/json.h"

namespace varnix::cli {

namespace {

std::string hex(NSData* data) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "<";
  for (unsigned char byte : std::span(static_cast<const unsigned char*>(send(data, NSData::bytes)),
                                      send(data, NSData::length))) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text + ">";
}

std::string moment(NSDate* date) {
  constexpr double kReference = 978307200;  // 2001-01-01 in seconds since 1970
  const auto seconds =
      static_cast<std::time_t>(send(date, NSDate::timeIntervalSinceReferenceDate) + kReference);
  std::tm parts{};
  char text[64] = "";
  if (gmtime_r(&seconds, &parts) != nullptr) {
    const std::size_t year = std::snprintf(text, sizeof text, "%04d", parts.tm_year + 1900);
    std::strftime(text + year, sizeof text - year, "-%m-%dT%H:%M:%SZ", &parts);
  }
  return text;
}

SortedJson numberJson(NSNumber* number) {
  switch (*send<const char*>(number, "objCType"_sel)) {
    case 'c':
      return send(number, NSNumber::boolValue);
    case 'd':
      return send(number, NSNumber::doubleValue);
    case 'Q':
      return send<unsigned long long>(number, "unsignedLongLongValue"_sel);
    default:
      return send(number, NSNumber::longLongValue);
  }
}

SortedJson storedJson(NSObject* value) {
  if (auto* string = objc::as<NSString>(value)) return std::string(host::text(string));
  if (auto* number = objc::as<NSNumber>(value)) return numberJson(number);
  if (auto* data = objc::as<NSData>(value)) return hex(data);
  if (auto* date = objc::as<NSDate>(value)) return moment(date);
  if (auto* array = objc::as<NSArray>(value)) {
    SortedJson list = SortedJson::array();
    for (NSUInteger i = 0; i < send(array, NSArray::count); ++i)
      list.push_back(storedJson(send(array, NSArray::objectAtIndex, i)));
    return list;
  }
  if (auto* dictionary = objc::as<NSDictionary>(value)) {
    SortedJson object = SortedJson::object();
    NSArray* keys = send(dictionary, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      auto* key = static_cast<NSString*>(send(keys, NSArray::objectAtIndex, i));
      object[std::string(host::text(key))] =
          storedJson(send(dictionary, NSDictionary::objectForKey, key));
    }
    return object;
  }
  return nullptr;
}

}  // namespace

std::string valueText(NSObject* value) {
  const SortedJson converted = storedJson(value);
  return converted.is_string() ? converted.get<std::string>() : dump(converted);
}

std::string entryLine(std::string_view key, NSObject* value) {
  const std::string line =
      escaped(key) == key ? std::string(key) : dump(SortedJson(std::string(key)));
  // JSON does not escape control characters above 126.
  return escaped(line + " = " +
                 (objc::as<NSData>(value) != nullptr ? valueText(value) : dump(storedJson(value))));
}

}  // namespace varnix::cli
