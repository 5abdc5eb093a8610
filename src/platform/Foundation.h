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
inline constexpr NSUInteger NSUTF8StringEncoding = 4;

struct NSString : objc::View<NSString, NSObject> {
  /// Nil for text that is not UTF-8.
  static constexpr ClassMessage<"stringWithUTF8String:", NSString*(const char*)>
      stringWithUTF8String{};
  static constexpr ClassMessage<"stringWithFormat:", NSString*(NSString*, ...)> stringWithFormat{};

  /// In UTF-16 units.
  static constexpr Message<"length", NSUInteger()> length{};
  static constexpr Message<"UTF8String", const char*()> UTF8String{};
  /// Nil for bytes that are invalid in the encoding. The receiver comes from alloc.
  static constexpr Message<"initWithData:encoding:", NSString*(NSData*, NSUInteger)> initWithData{};
  static constexpr Message<"stringByAppendingString:", NSString*(NSString*)>
      stringByAppendingString{};
  static constexpr Message<"isEqualToString:", bool(NSString*)> isEqualToString{};
  // NO for an empty text. The last compares as a reader of the user's language would.
  static constexpr Message<"hasPrefix:", bool(NSString*)> hasPrefix{};
  static constexpr Message<"hasSuffix:", bool(NSString*)> hasSuffix{};
  static constexpr Message<"localizedCaseInsensitiveContainsString:", bool(NSString*)>
      containsIgnoringCase{};
  /// In UTF-16 units. Raise beyond the end.
  static constexpr Message<"substringFromIndex:", NSString*(NSUInteger)> substringFromIndex{};
  static constexpr Message<"substringToIndex:", NSString*(NSUInteger)> substringToIndex{};
  static constexpr Message<"dataUsingEncoding:", NSData*(NSUInteger)> dataUsingEncoding{};
  static constexpr Message<"lastPathComponent", NSString*()> lastPathComponent{};
  static constexpr Message<"stringByDeletingPathExtension", NSString*()>
      stringByDeletingPathExtension{};

  // The value of the leading text; 0 and NO if it has none.
  static constexpr Message<"boolValue", bool()> boolValue{};
  static constexpr Message<"intValue", int()> intValue{};
  static constexpr Message<"integerValue", NSInteger()> integerValue{};
  static constexpr Message<"floatValue", float()> floatValue{};
};

struct NSNumber : objc::View<NSNumber, NSObject> {
  static constexpr ClassMessage<"numberWithBool:", NSNumber*(bool)> numberWithBool{};
  static constexpr ClassMessage<"numberWithLongLong:", NSNumber*(long long)> numberWithLongLong{};
  static constexpr ClassMessage<"numberWithDouble:", NSNumber*(double)> numberWithDouble{};

  static constexpr Message<"boolValue", bool()> boolValue{};
  static constexpr Message<"intValue", int()> intValue{};
  static constexpr Message<"integerValue", NSInteger()> integerValue{};
  static constexpr Message<"longLongValue", long long()> longLongValue{};
  static constexpr Message<"floatValue", float()> floatValue{};
  static constexpr Message<"doubleValue", double()> doubleValue{};
  /// The encoding of the value it was made from; "c" for a boolean.
  static constexpr Message<"objCType", const char*()> objCType{};
};

struct NSURL : objc::View<NSURL, NSObject> {
  /// Nil for text that is not a URL, such as one with a blank or another character that must be
  /// escaped. Raises for nil.
  static constexpr ClassMessage<"URLWithString:", NSURL*(NSString*)> URLWithString{};
  static constexpr Message<"absoluteString", NSString*()> absoluteString{};
};

struct NSData : objc::View<NSData, NSObject> {
  static constexpr ClassMessage<"dataWithBytes:length:", NSData*(const void*, NSUInteger)>
      dataWithBytes{};
  /// The contents of a file; nil if it cannot be read.
  static constexpr ClassMessage<"dataWithContentsOfFile:", NSData*(NSString*)>
      dataWithContentsOfFile{};

  static constexpr Message<"bytes", const void*()> bytes{};
  static constexpr Message<"length", NSUInteger()> length{};
};

/// Seconds since the start of 2001, GMT.
struct NSDate : objc::View<NSDate, NSObject> {
  /// Now.
  static constexpr ClassMessage<"date", NSDate*()> date{};
  static constexpr ClassMessage<"dateWithTimeIntervalSinceReferenceDate:", NSDate*(double)>
      dateWithTimeIntervalSinceReferenceDate{};

  static constexpr Message<"timeIntervalSinceReferenceDate", double()>
      timeIntervalSinceReferenceDate{};
};

struct NSArray : objc::View<NSArray, NSObject> {
  static constexpr ClassMessage<"arrayWithObjects:count:", NSArray*(NSObject* const*, NSUInteger)>
      arrayWithObjects{};

  static constexpr Message<"count", NSUInteger()> count{};
  /// Nil if it is empty.
  static constexpr Message<"lastObject", NSObject*()> lastObject{};
  static constexpr Message<"containsObject:", bool(NSObject*)> containsObject{};
  /// Raises beyond the end.
  static constexpr Message<"objectAtIndex:", NSObject*(NSUInteger)> objectAtIndex{};
};

struct NSMutableArray : objc::View<NSMutableArray, NSArray> {
  static constexpr ClassMessage<"array", NSMutableArray*()> array{};

  /// Raises for nil.
  static constexpr Message<"addObject:", void(NSObject*)> addObject{};
};

struct NSDictionary : objc::View<NSDictionary, NSObject> {
  static constexpr ClassMessage<"dictionaryWithObject:forKey:", NSDictionary*(NSObject*, NSString*)>
      dictionaryWithObjectForKey{};
  /// A nil ends the list, wherever it stands.
  static constexpr ClassMessage<"dictionaryWithObjectsAndKeys:", NSDictionary*(NSObject*, ...)>
      dictionaryWithObjectsAndKeys{};
  /// Nil if the file is missing, is not a property list, or its root is not a dictionary.
  static constexpr ClassMessage<"dictionaryWithContentsOfFile:", NSDictionary*(NSString*)>
      dictionaryWithContentsOfFile{};

  static constexpr Message<"count", NSUInteger()> count{};
  /// Nil for an absent or nil key.
  static constexpr Message<"objectForKey:", NSObject*(NSObject*)> objectForKey{};
  static constexpr Message<"allKeys", NSArray*()> allKeys{};
  /// As an XML property list. NO if the file cannot be written.
  static constexpr Message<"writeToFile:atomically:", bool(NSString*, bool)> writeToFile{};
};

struct NSMutableDictionary : objc::View<NSMutableDictionary, NSDictionary> {
  static constexpr ClassMessage<"dictionary", NSMutableDictionary*()> dictionary{};

  static constexpr ClassMessage<"dictionaryWithCapacity:", NSMutableDictionary*(NSUInteger)>
      dictionaryWithCapacity{};

  /// Raises for a nil object or key.
  static constexpr Message<"setObject:forKey:", void(NSObject*, NSObject*)> setObjectForKey{};
  static constexpr Message<"removeObjectForKey:", void(NSObject*)> removeObjectForKey{};
  /// The other's entries replace those with the same key.
  static constexpr Message<"addEntriesFromDictionary:", void(NSDictionary*)>
      addEntriesFromDictionary{};
};

struct NSBundle : objc::View<NSBundle, NSObject> {
  static constexpr ClassMessage<"mainBundle", NSBundle*()> mainBundle{};

  /// That of the binary which defines the class.
  static constexpr ClassMessage<"bundleForClass:", NSBundle*(Class)> bundleForClass{};

  /// Nil for a process that is not a bundle.
  static constexpr Message<"bundleIdentifier", NSString*()> bundleIdentifier{};
  /// The text in the user's language, from TABLE.strings. A missing one gives the value, or the key
  /// if that is nil or empty.
  static constexpr Message<"localizedStringForKey:value:table:",
                           NSString*(NSString*, NSString*, NSString*)>
      localizedString{};
};

struct NSNotification : objc::View<NSNotification, NSObject> {
  static constexpr Message<"userInfo", NSDictionary*()> userInfo{};
};

/// Notifications inside this process.
struct NSNotificationCenter : objc::View<NSNotificationCenter, NSObject> {
  static constexpr ClassMessage<"defaultCenter", NSNotificationCenter*()> defaultCenter{};

  /// The observer is not kept alive. A nil object means any sender.
  static constexpr Message<"addObserver:selector:name:object:",
                           void(NSObject*, SEL, NSString*, NSObject*)>
      addObserver{};
  /// For all names.
  static constexpr Message<"removeObserver:", void(NSObject*)> removeObserver{};
  /// Notifies every observer before it returns.
  static constexpr Message<"postNotificationName:object:", void(NSString*, NSObject*)>
      postNotificationName{};
};

struct NSThread : objc::View<NSThread, NSObject> {
  static constexpr ClassMessage<"isMainThread", bool()> isMainThread{};
  /// For at least that many seconds; on any thread.
  static constexpr ClassMessage<"sleepForTimeInterval:", void(double)> sleepForTimeInterval{};
};

struct NSKeyedArchiver : objc::View<NSKeyedArchiver, NSObject> {
  /// A binary property list. Raises for an object that cannot be encoded.
  static constexpr ClassMessage<"archivedDataWithRootObject:", NSData*(NSObject*)>
      archivedDataWithRootObject{};
};

struct NSKeyedUnarchiver : objc::View<NSKeyedUnarchiver, NSObject> {
  /// Raises for data that is not an archive, and for an archive with classes that the process
  /// lacks.
  static constexpr ClassMessage<"unarchiveObjectWithData:", NSObject*(NSData*)>
      unarchiveObjectWithData{};
};

struct NSLocale : objc::View<NSLocale, NSObject> {
  static constexpr ClassMessage<"localeWithLocaleIdentifier:", NSLocale*(NSString*)>
      localeWithLocaleIdentifier{};
};

struct NSTimeZone : objc::View<NSTimeZone, NSObject> {
  static constexpr ClassMessage<"timeZoneForSecondsFromGMT:", NSTimeZone*(NSInteger)>
      timeZoneForSecondsFromGMT{};
};

/// A new one has the user's locale, with its calendar, and the device's time zone.
struct NSDateFormatter : objc::View<NSDateFormatter, NSObject> {
  static constexpr Message<"setLocale:", void(NSLocale*)> setLocale{};
  static constexpr Message<"setDateFormat:", void(NSString*)> setDateFormat{};
  static constexpr Message<"setTimeZone:", void(NSTimeZone*)> setTimeZone{};
  static constexpr Message<"stringFromDate:", NSString*(NSDate*)> stringFromDate{};
};

struct NSFileManager : objc::View<NSFileManager, NSObject> {
  static constexpr ClassMessage<"defaultManager", NSFileManager*()> defaultManager{};
  static constexpr Message<"isExecutableFileAtPath:", bool(NSString*)> isExecutableFileAtPath{};
};

struct NSFileHandle : objc::View<NSFileHandle, NSObject> {
  /// Reads to the end, and waits for it.
  static constexpr Message<"readDataToEndOfFile", NSData*()> readDataToEndOfFile{};
};

struct NSPipe : objc::View<NSPipe, NSObject> {
  static constexpr ClassMessage<"pipe", NSPipe*()> pipe{};

  static constexpr Message<"fileHandleForReading", NSFileHandle*()> fileHandleForReading{};
};

/// A child process, launched once.
struct NSTask : objc::View<NSTask, NSObject> {
  static constexpr Message<"setLaunchPath:", void(NSString*)> setLaunchPath{};
  static constexpr Message<"setArguments:", void(NSArray*)> setArguments{};
  /// The writing end of a pipe is closed in this process once the child has it.
  static constexpr Message<"setStandardOutput:", void(NSObject*)> setStandardOutput{};
  /// Raises if the file cannot be run.
  static constexpr Message<"launch", void()> launch{};
};

struct NSError : objc::View<NSError, NSObject> {
  static constexpr Message<"code", NSInteger()> code{};
};

inline constexpr NSUInteger NSPropertyListXMLFormat = 100;

struct NSPropertyListSerialization : objc::View<NSPropertyListSerialization, NSObject> {
  /// The tree of a property list in any form; nil if it cannot be read. References in a keyed
  /// archive are objects of CoreFoundation's own.
  static constexpr ClassMessage<"propertyListWithData:options:format:error:",
                                NSObject*(NSData*, NSUInteger options, NSUInteger* format,
                                          NSError** error)>
      propertyListWithData{};
  /// Nil for what is no property list.
  static constexpr ClassMessage<"dataWithPropertyList:format:options:error:",
                                NSData*(NSObject*, NSUInteger format, NSUInteger options,
                                        NSError** error)>
      dataWithPropertyList{};
};

#pragma GCC visibility push(default)
extern "C" {
/// Writes a line to the system log.
void NSLog(NSString* format, ...);
}
#pragma GCC visibility pop
