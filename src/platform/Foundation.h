// Foundation: strings, numbers, collections, bundles.
#pragma once

#include <cstdint>

#include "objc/constant_string.h"
#include "objc/object.h"

#if defined(__LP64__)
using NSInteger = long;
using NSUInteger = unsigned long;
#else
using NSInteger = int;
using NSUInteger = unsigned int;
#endif

struct NSData;

inline constexpr NSUInteger NSASCIIStringEncoding = 1;

struct NSString : NSObject {
  /// Nil for text that is not UTF-8.
  static NSString* stringWithUTF8String(const char* text) {
    return send<NSString*>(objc::classOf<NSString>(), "stringWithUTF8String:"_sel, text);
  }
  template <class... A>
  static NSString* stringWithFormat(NSString* format, A... arguments) {
    return objc::sendVariadic<NSString*>(objc::classOf<NSString>(), "stringWithFormat:"_sel, format,
                                         arguments...);
  }

  /// In UTF-16 units.
  NSUInteger length() { return send<NSUInteger>(this, "length"_sel); }
  const char* UTF8String() { return send<const char*>(this, "UTF8String"_sel); }
  /// Nil for bytes that the encoding does not have. The receiver comes from alloc.
  NSString* initWithData(NSData* data, NSUInteger encoding) {
    return send<NSString*>(this, "initWithData:encoding:"_sel, data, encoding);
  }
  NSString* stringByAppendingString(NSString* tail) {
    return send<NSString*>(this, "stringByAppendingString:"_sel, tail);
  }
  bool isEqualToString(NSString* other) { return send<bool>(this, "isEqualToString:"_sel, other); }
  NSString* lastPathComponent() { return send<NSString*>(this, "lastPathComponent"_sel); }
  NSString* stringByDeletingPathExtension() {
    return send<NSString*>(this, "stringByDeletingPathExtension"_sel);
  }
};

struct NSNumber : NSObject {
  static NSNumber* numberWithBool(bool value) {
    return send<NSNumber*>(objc::classOf<NSNumber>(), "numberWithBool:"_sel, value);
  }
  static NSNumber* numberWithLongLong(long long value) {
    return send<NSNumber*>(objc::classOf<NSNumber>(), "numberWithLongLong:"_sel, value);
  }
  static NSNumber* numberWithDouble(double value) {
    return send<NSNumber*>(objc::classOf<NSNumber>(), "numberWithDouble:"_sel, value);
  }

  bool boolValue() { return send<bool>(this, "boolValue"_sel); }
  int intValue() { return send<int>(this, "intValue"_sel); }
  long long longLongValue() { return send<long long>(this, "longLongValue"_sel); }
  float floatValue() { return send<float>(this, "floatValue"_sel); }
  double doubleValue() { return send<double>(this, "doubleValue"_sel); }
};

struct NSURL : NSObject {
  /// Nil for text that is no URL: one with a blank or another character that must be escaped.
  /// Raises for nil.
  static NSURL* URLWithString(NSString* text) {
    return send<NSURL*>(objc::classOf<NSURL>(), "URLWithString:"_sel, text);
  }
  NSString* absoluteString() { return send<NSString*>(this, "absoluteString"_sel); }
};

struct NSData : NSObject {
  static NSData* dataWithBytes(const void* bytes, NSUInteger length) {
    return send<NSData*>(objc::classOf<NSData>(), "dataWithBytes:length:"_sel, bytes, length);
  }

  const void* bytes() { return send<const void*>(this, "bytes"_sel); }
  NSUInteger length() { return send<NSUInteger>(this, "length"_sel); }
};

/// Seconds since the first moment of 2001, GMT.
struct NSDate : NSObject {
  /// Now.
  static NSDate* date() { return send<NSDate*>(objc::classOf<NSDate>(), "date"_sel); }
  static NSDate* dateWithTimeIntervalSinceReferenceDate(double seconds) {
    return send<NSDate*>(objc::classOf<NSDate>(), "dateWithTimeIntervalSinceReferenceDate:"_sel,
                         seconds);
  }

  double timeIntervalSinceReferenceDate() {
    return send<double>(this, "timeIntervalSinceReferenceDate"_sel);
  }
};

struct NSArray : NSObject {
  static NSArray* arrayWithObjects(NSObject* const* objects, NSUInteger count) {
    return send<NSArray*>(objc::classOf<NSArray>(), "arrayWithObjects:count:"_sel, objects, count);
  }

  NSUInteger count() { return send<NSUInteger>(this, "count"_sel); }
  /// Raises beyond the end.
  NSObject* objectAtIndex(NSUInteger index) {
    return send<NSObject*>(this, "objectAtIndex:"_sel, index);
  }
};

struct NSMutableArray : NSArray {
  static NSMutableArray* array() {
    return send<NSMutableArray*>(objc::classOf<NSMutableArray>(), "array"_sel);
  }

  /// Raises for nil.
  void addObject(NSObject* object) { send<void>(this, "addObject:"_sel, object); }
};

struct NSDictionary : NSObject {
  static NSDictionary* dictionaryWithObjectForKey(NSObject* object, NSString* key) {
    return send<NSDictionary*>(objc::classOf<NSDictionary>(), "dictionaryWithObject:forKey:"_sel,
                               object, key);
  }
  /// A nil ends the list, wherever it stands.
  template <class... A>
  static NSDictionary* dictionaryWithObjectsAndKeys(NSObject* first, A... rest) {
    return objc::sendVariadic<NSDictionary*>(objc::classOf<NSDictionary>(),
                                             "dictionaryWithObjectsAndKeys:"_sel, first, rest...);
  }
  /// Nil where the file is missing, is no property list or holds no dictionary on top.
  static NSDictionary* dictionaryWithContentsOfFile(NSString* path) {
    return send<NSDictionary*>(objc::classOf<NSDictionary>(), "dictionaryWithContentsOfFile:"_sel,
                               path);
  }

  NSUInteger count() { return send<NSUInteger>(this, "count"_sel); }
  /// Nil for an absent or nil key.
  NSObject* objectForKey(NSObject* key) { return send<NSObject*>(this, "objectForKey:"_sel, key); }
  NSArray* allKeys() { return send<NSArray*>(this, "allKeys"_sel); }
  /// As an XML property list. NO where the file cannot be written.
  bool writeToFile(NSString* path, bool atomically) {
    return send<bool>(this, "writeToFile:atomically:"_sel, path, atomically);
  }
};

struct NSMutableDictionary : NSDictionary {
  static NSMutableDictionary* dictionary() {
    return send<NSMutableDictionary*>(objc::classOf<NSMutableDictionary>(), "dictionary"_sel);
  }

  static NSMutableDictionary* dictionaryWithCapacity(NSUInteger count) {
    return send<NSMutableDictionary*>(objc::classOf<NSMutableDictionary>(),
                                      "dictionaryWithCapacity:"_sel, count);
  }

  /// Raises for a nil object or key.
  void setObjectForKey(NSObject* object, NSObject* key) {
    send<void>(this, "setObject:forKey:"_sel, object, key);
  }
  void removeObjectForKey(NSObject* key) { send<void>(this, "removeObjectForKey:"_sel, key); }
  /// The other's entries replace those of the same key.
  void addEntriesFromDictionary(NSDictionary* other) {
    send<void>(this, "addEntriesFromDictionary:"_sel, other);
  }
};

struct NSBundle : NSObject {
  static NSBundle* mainBundle() {
    return send<NSBundle*>(objc::classOf<NSBundle>(), "mainBundle"_sel);
  }

  /// Nil for a process that is no bundle.
  NSString* bundleIdentifier() { return send<NSString*>(this, "bundleIdentifier"_sel); }
};

/// Notifications inside this process.
struct NSNotificationCenter : NSObject {
  static NSNotificationCenter* defaultCenter() {
    return send<NSNotificationCenter*>(objc::classOf<NSNotificationCenter>(), "defaultCenter"_sel);
  }

  /// The observer is not kept alive. A nil object is any sender.
  void addObserver(NSObject* observer, SEL selector, NSString* name, NSObject* object) {
    send<void>(this, "addObserver:selector:name:object:"_sel, observer, selector, name, object);
  }
  /// For all names.
  void removeObserver(NSObject* observer) { send<void>(this, "removeObserver:"_sel, observer); }
  /// To every observer, before it returns.
  void postNotificationName(NSString* name, NSObject* object) {
    send<void>(this, "postNotificationName:object:"_sel, name, object);
  }
};

struct NSThread : NSObject {
  static bool isMainThread() { return send<bool>(objc::classOf<NSThread>(), "isMainThread"_sel); }
};

struct NSKeyedArchiver : NSObject {
  /// A binary property list. Raises for an object that cannot be encoded.
  static NSData* archivedDataWithRootObject(NSObject* root) {
    return send<NSData*>(objc::classOf<NSKeyedArchiver>(), "archivedDataWithRootObject:"_sel, root);
  }
};

struct NSKeyedUnarchiver : NSObject {
  /// Raises for data that is no archive, and for one of classes that the process lacks.
  static NSObject* unarchiveObjectWithData(NSData* data) {
    return send<NSObject*>(objc::classOf<NSKeyedUnarchiver>(), "unarchiveObjectWithData:"_sel,
                           data);
  }
};

struct NSLocale : NSObject {
  static NSLocale* localeWithLocaleIdentifier(NSString* identifier) {
    return send<NSLocale*>(objc::classOf<NSLocale>(), "localeWithLocaleIdentifier:"_sel,
                           identifier);
  }
};

struct NSTimeZone : NSObject {
  static NSTimeZone* timeZoneForSecondsFromGMT(NSInteger seconds) {
    return send<NSTimeZone*>(objc::classOf<NSTimeZone>(), "timeZoneForSecondsFromGMT:"_sel,
                             seconds);
  }
};

/// New ones have the user's locale, with its calendar, and the device's time zone.
struct NSDateFormatter : NSObject {
  void setLocale(NSLocale* locale) { send<void>(this, "setLocale:"_sel, locale); }
  void setDateFormat(NSString* format) { send<void>(this, "setDateFormat:"_sel, format); }
  void setTimeZone(NSTimeZone* zone) { send<void>(this, "setTimeZone:"_sel, zone); }
  NSString* stringFromDate(NSDate* date) {
    return send<NSString*>(this, "stringFromDate:"_sel, date);
  }
};

struct NSFileManager : NSObject {
  static NSFileManager* defaultManager() {
    return send<NSFileManager*>(objc::classOf<NSFileManager>(), "defaultManager"_sel);
  }
  bool isExecutableFileAtPath(NSString* path) {
    return send<bool>(this, "isExecutableFileAtPath:"_sel, path);
  }
};

struct NSFileHandle : NSObject {
  /// Waits for the end.
  NSData* readDataToEndOfFile() { return send<NSData*>(this, "readDataToEndOfFile"_sel); }
};

struct NSPipe : NSObject {
  static NSPipe* pipe() { return send<NSPipe*>(objc::classOf<NSPipe>(), "pipe"_sel); }

  NSFileHandle* fileHandleForReading() {
    return send<NSFileHandle*>(this, "fileHandleForReading"_sel);
  }
};

/// A child process, launched once.
struct NSTask : NSObject {
  void setLaunchPath(NSString* path) { send<void>(this, "setLaunchPath:"_sel, path); }
  void setArguments(NSArray* arguments) { send<void>(this, "setArguments:"_sel, arguments); }
  /// A pipe's writing end is closed here once the child has it.
  void setStandardOutput(NSObject* pipe) { send<void>(this, "setStandardOutput:"_sel, pipe); }
  /// Raises where the file cannot be run.
  void launch() { send<void>(this, "launch"_sel); }
};

struct NSError : NSObject {
  NSInteger code() { return send<NSInteger>(this, "code"_sel); }
};

struct NSPropertyListSerialization : NSObject {
  /// The tree of a property list in any form; nil where it cannot be read. The references of a
  /// keyed archive are objects of CoreFoundation's own.
  static NSObject* propertyListWithData(NSData* data) {
    return send<NSObject*>(objc::classOf<NSPropertyListSerialization>(),
                           "propertyListWithData:options:format:error:"_sel, data, NSUInteger{0},
                           static_cast<NSUInteger*>(nullptr), static_cast<NSError**>(nullptr));
  }
};

#pragma GCC visibility push(default)
extern "C" {
/// Writes a line to the system log.
void NSLog(NSString* format, ...);
}
#pragma GCC visibility pop
