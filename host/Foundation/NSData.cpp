// Data and dates.
#include <cstring>
#include <string>

#include "Foundation/clock.h"
#include "Foundation/file_contents.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "process/container.h"

namespace {

struct Data : NSData {
  static Data* withBytes(const void* bytes, NSUInteger length);
  static Data* withContentsOfFile(NSString* path);
  const void* start() { return contents.data(); }
  NSUInteger size() { return contents.size(); }
  bool equals(NSObject* other) {
    auto* data = objc::as<NSData>(other);
    return data != nullptr && send(data, NSData::length) == size() &&
           std::memcmp(send(data, NSData::bytes), start(), size()) == 0;
  }
  NSUInteger hashValue() { return std::hash<std::string>{}(contents); }
  Data* copy() { return static_cast<Data*>(objc_retain(this)); }

  std::string contents;
};

struct Date : NSDate {
  static Date* since(double seconds);
  static Date* current() { return since(host::now()); }
  bool equals(NSObject* other) {
    auto* moment = objc::as<NSDate>(other);
    return moment != nullptr && send(moment, NSDate::timeIntervalSinceReferenceDate) == seconds;
  }
  NSUInteger hashValue() { return std::hash<double>{}(seconds); }
  Date* copy() { return static_cast<Date*>(objc_retain(this)); }

  double seconds;
};

}  // namespace

OBJC_CLASS_NAMED(NSData, NSObject, Data, NSObject, objc::Ivar<"contents", &Data::contents>,
                 objc::ClassMethod<"dataWithBytes:length:", &Data::withBytes>,
                 objc::ClassMethod<"dataWithContentsOfFile:", &Data::withContentsOfFile>,
                 objc::Method<"bytes", &Data::start>, objc::Method<"length", &Data::size>,
                 objc::Method<"isEqual:", &Data::equals>, objc::Method<"hash", &Data::hashValue>,
                 objc::Method<"copy", &Data::copy>)

OBJC_CLASS_NAMED(NSDate, NSObject, Date, NSObject,
                 objc::Readable<"timeIntervalSinceReferenceDate", &Date::seconds, "seconds">,
                 objc::ClassMethod<"dateWithTimeIntervalSinceReferenceDate:", &Date::since>,
                 objc::ClassMethod<"date", &Date::current>, objc::Method<"isEqual:", &Date::equals>,
                 objc::Method<"hash", &Date::hashValue>, objc::Method<"copy", &Date::copy>)

Data* Data::withBytes(const void* bytes, NSUInteger length) {
  auto* data = static_cast<Data*>(class_createInstance(&objc_class_NSData, 0));
  if (length != 0) data->contents.assign(static_cast<const char*>(bytes), length);
  return static_cast<Data*>(objc_autorelease(data));
}

Data* Data::withContentsOfFile(NSString* path) {
  return static_cast<Data*>(
      host::fileData(host::readablePath(host::text(path)), host::kMaximumBytes));
}

NSData* host::fileData(const std::string& path, std::size_t limit) {
  auto contents = fileContents(path, limit);
  if (!contents) return nullptr;
  auto* data = static_cast<Data*>(class_createInstance(&objc_class_NSData, 0));
  data->contents = std::move(*contents);
  return static_cast<NSData*>(objc_autorelease(data));
}

Date* Date::since(double seconds) {
  auto* date = static_cast<Date*>(class_createInstance(&objc_class_NSDate, 0));
  date->seconds = seconds;
  return static_cast<Date*>(objc_autorelease(date));
}
