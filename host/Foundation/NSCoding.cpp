// How collections and dates are written into archives and read from them. Texts, numbers and data
// are stored in an archive directly.
#include "Foundation/NSCoder.h"
#include "Foundation/keyed_archive.h"
#include "objc/define.h"

namespace {

NSString* const kObjects = "NS.objects"_ns;
NSString* const kKeys = "NS.keys"_ns;
NSString* const kTime = "NS.time"_ns;

/// The objects replace an immutable array.
struct CodedArray : NSArray {
  void encode(NSCoder* coder) { coder->encodeObjects(this, kObjects); }
  NSObject* initWithCoder(NSCoder* coder) {
    NSArray* objects = coder->decodeObjects(kObjects);
    NSArray* made =
        objects == nullptr
            ? NSArray::arrayWithObjects(nullptr, 0)
            : static_cast<NSArray*>(objc_autorelease(send<NSObject*>(objects, "copy"_sel)));
    objc_retain(made);
    objc_release(this);
    return made;
  }
};

struct CodedMutableArray : NSMutableArray {
  NSObject* initWithCoder(NSCoder* coder) {
    NSArray* objects = coder->decodeObjects(kObjects);
    const NSUInteger total = send<NSUInteger>(objects, "count"_sel);
    for (NSUInteger i = 0; i < total; ++i)
      send(this, NSMutableArray::addObject, send(objects, NSArray::objectAtIndex, i));
    return this;
  }
};

void fill(NSMutableDictionary* dictionary, NSCoder* coder) {
  NSArray* keys = coder->decodeObjects(kKeys);
  NSArray* objects = coder->decodeObjects(kObjects);
  const NSUInteger count = send<NSUInteger>(keys, "count"_sel);
  if (count != send<NSUInteger>(objects, "count"_sel))
    host::archive::raiseOperation("a dictionary has a key without an object, or the reverse");
  for (NSUInteger i = 0; i < count; ++i)
    send(dictionary, NSMutableDictionary::setObjectForKey, send(objects, NSArray::objectAtIndex, i),
         send(keys, NSArray::objectAtIndex, i));
}

struct CodedDictionary : NSDictionary {
  void encode(NSCoder* coder) {
    NSArray* keys = send(this, NSDictionary::allKeys);
    NSMutableArray* objects = NSMutableArray::array();
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i)
      send(objects, NSMutableArray::addObject,
           send(this, NSDictionary::objectForKey, send(keys, NSArray::objectAtIndex, i)));
    coder->encodeObjects(keys, kKeys);
    coder->encodeObjects(objects, kObjects);
  }
  NSObject* initWithCoder(NSCoder* coder) {
    NSMutableDictionary* contents = NSMutableDictionary::dictionary();
    fill(contents, coder);
    objc_release(this);
    return send<NSObject*>(contents, "copy"_sel);
  }
};

struct CodedMutableDictionary : NSMutableDictionary {
  NSObject* initWithCoder(NSCoder* coder) {
    fill(this, coder);
    return this;
  }
};

struct CodedDate : NSDate {
  void encode(NSCoder* coder) {
    coder->encodeDouble(send(this, NSDate::timeIntervalSinceReferenceDate), kTime);
  }
  NSObject* initWithCoder(NSCoder* coder) {
    NSDate* made = NSDate::dateWithTimeIntervalSinceReferenceDate(coder->decodeDouble(kTime));
    objc_release(this);
    return objc_retain(made);
  }
};

}  // namespace

OBJC_CATEGORY_OF_OWN(NSArray, NSCoding, objc::Method<"encodeWithCoder:", &CodedArray::encode>,
                     objc::Method<"initWithCoder:", &CodedArray::initWithCoder>)
OBJC_CATEGORY_OF_OWN(NSMutableArray, NSCoding,
                     objc::Method<"initWithCoder:", &CodedMutableArray::initWithCoder>)
OBJC_CATEGORY_OF_OWN(NSDictionary, NSCoding,
                     objc::Method<"encodeWithCoder:", &CodedDictionary::encode>,
                     objc::Method<"initWithCoder:", &CodedDictionary::initWithCoder>)
OBJC_CATEGORY_OF_OWN(NSMutableDictionary, NSCoding,
                     objc::Method<"initWithCoder:", &CodedMutableDictionary::initWithCoder>)
OBJC_CATEGORY_OF_OWN(NSDate, NSCoding, objc::Method<"encodeWithCoder:", &CodedDate::encode>,
                     objc::Method<"initWithCoder:", &CodedDate::initWithCoder>)
