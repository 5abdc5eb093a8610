// Keyed archives to objects.
#include <climits>
#include <string>
#include <vector>

#include "Foundation/NSCoder.h"
#include "Foundation/keyed_archive.h"
#include "Foundation/keyed_archive_uid.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/CoreFoundation.h"

namespace {

using namespace host::archive;

/// An object of the archive, once it has been asked for.
struct Decoded {
  enum State { no, begun, done } state = no;
  Strong<NSObject> object;
};

std::string quoted(NSString* key) { return "\"" + std::string(host::text(key)) + "\""; }

bool inherits(Class cls, Class from) {
  while (cls != nullptr && cls != from) cls = class_getSuperclass(cls);
  return cls != nullptr;
}

/// Whether decoding makes a different object from the one that was allocated.
bool isFixedContainer(Class cls) {
  return (inherits(cls, objc::classOf<NSArray>()) &&
          !inherits(cls, objc::classOf<NSMutableArray>())) ||
         (inherits(cls, objc::classOf<NSDictionary>()) &&
          !inherits(cls, objc::classOf<NSMutableDictionary>()));
}

struct KeyedUnarchiver : NSCoder {
  static NSObject* unarchive(Class cls, SEL, NSData* data) {
    if (data == nullptr) return nullptr;
    auto unarchiver =
        Strong<KeyedUnarchiver>::adopt(static_cast<KeyedUnarchiver*>(class_createInstance(cls, 0)));
    unarchiver->readArchive(data);
    return unarchiver->decodeObjectFor("root"_ns);
  }

  void readArchive(NSData* data) {
    NSObject* tree = nullptr;
    if (objc::as<NSData>(data) != nullptr) {
      tree = host::propertyListFromData(
          {static_cast<const char*>(send(data, NSData::bytes)), send(data, NSData::length)});
    }
    auto* archive = objc::as<NSDictionary>(tree);
    if (archive == nullptr) raiseArgument("the data is no archive");
    auto* archiver = objc::as<NSString>(send(archive, NSDictionary::objectForKey, "$archiver"_ns));
    auto* version = objc::as<NSNumber>(send(archive, NSDictionary::objectForKey, "$version"_ns));
    auto* top = objc::as<NSDictionary>(send(archive, NSDictionary::objectForKey, "$top"_ns));
    auto* list = objc::as<NSArray>(send(archive, NSDictionary::objectForKey, "$objects"_ns));
    if (archiver == nullptr || !send(archiver, NSString::isEqualToString, "NSKeyedArchiver"_ns) ||
        version == nullptr || send(version, NSNumber::longLongValue) != kVersion ||
        top == nullptr || list == nullptr) {
      raiseArgument("the data is no archive of this kind");
    }
    objects = Strong<NSArray>::retain(list);
    decoded.resize(send(list, NSArray::count));
    open.push_back(Strong<NSDictionary>::retain(top));
  }

  /// The value as it lies in the archive, or nil.
  NSObject* stored(NSString* key) {
    if (open.empty()) raiseOperation("there is no archive");
    return send(open.back(), NSDictionary::objectForKey, storedKey(key));
  }
  /// The same if it has the type; raises otherwise.
  NSObject* stored(NSString* key, CFTypeID type, const char* what) {
    NSObject* value = stored(key);
    if (value != nullptr && CFGetTypeID(value) != type)
      raiseOperation("the value for " + quoted(key) + " is no " + what);
    return value;
  }

  bool contains(NSString* key) { return stored(key) != nullptr; }
  NSObject* decodeObjectFor(NSString* key) {
    return decode(stored(key, _CFKeyedArchiverUIDGetTypeID(), "object"));
  }
  bool decodeBool(NSString* key) {
    static const CFTypeID type = CFGetTypeID(NSNumber::numberWithBool(true));
    return send<bool>(stored(key, type, "boolean"), "boolValue"_sel);
  }
  NSNumber* number(NSString* key) {
    static const CFTypeID type = CFGetTypeID(NSNumber::numberWithLongLong(1));
    return static_cast<NSNumber*>(stored(key, type, "number"));
  }
  long long decodeInt64(NSString* key) {
    NSNumber* value = number(key);
    if (value != nullptr && *send<const char*>(value, "objCType"_sel) != 'q')
      raiseOperation("the value for " + quoted(key) + " is no integer");
    return send<long long>(value, "longLongValue"_sel);
  }
  NSInteger decodeIntegerFor(NSString* key) { return decodeInt64(key); }
  int decodeIntFor(NSString* key) {
    const long long value = decodeInt64(key);
    if (value < INT_MIN || value > INT_MAX)
      raiseOperation("the value for " + quoted(key) + " does not fit");
    return static_cast<int>(value);
  }
  float decodeFloatFor(NSString* key) { return send<float>(number(key), "floatValue"_sel); }
  double decodeDoubleFor(NSString* key) { return send<double>(number(key), "doubleValue"_sel); }
  /// They live as long as the archive's own data: until the object is decoded.
  const unsigned char* decodeBytes(NSString* key, NSUInteger* length) {
    static const CFTypeID type = CFGetTypeID(NSData::dataWithBytes(nullptr, 0));
    NSObject* data = stored(key, type, "data");
    if (length != nullptr) *length = send<NSUInteger>(data, "length"_sel);
    return static_cast<const unsigned char*>(send<const void*>(data, "bytes"_sel));
  }
  NSArray* decodeList(NSString* key) {
    static const CFTypeID type = CFGetTypeID(NSMutableArray::array());
    auto* references = static_cast<NSArray*>(stored(key, type, "list of objects"));
    if (references == nullptr) return nullptr;
    NSMutableArray* list = NSMutableArray::array();
    for (NSUInteger i = 0; i < send(references, NSArray::count); ++i) {
      NSObject* object = decode(send(references, NSArray::objectAtIndex, i));
      if (object == nullptr) raiseOperation("an object of " + quoted(key) + " is nil");
      send(list, NSMutableArray::addObject, object);
    }
    return list;
  }
  bool allowsKeys() { return true; }

  /// The object that a reference stands for. Nil for nil and for the archive's first object.
  NSObject* decode(NSObject* reference) {
    if (reference == nullptr) return nullptr;
    const std::uint32_t index = checkedIndex(reference);
    if (index == 0) return nullptr;
    Decoded& result = decoded[index];
    if (result.state == Decoded::no)
      decodeNew(send(objects, NSArray::objectAtIndex, index), result);
    // Not made yet, but refers to itself: an immutable container has no address before its contents
    // exist.
    if (result.state == Decoded::begun && result.object.get() == nullptr)
      raiseOperation("a container is part of itself");
    return Strong<NSObject>(result.object).autorelease();  // it outlives the archive
  }

  std::uint32_t checkedIndex(NSObject* reference) {
    if (!host::isArchiveUid(reference)) raiseOperation("a value is no reference");
    const std::uint32_t index = host::archiveUidIndex(reference);
    if (index >= decoded.size()) raiseOperation("a reference leads out of the archive");
    return index;
  }

  void decodeNew(NSObject* value, Decoded& result) {
    if (auto* fields = objc::as<NSDictionary>(value)) {
      decodeInstance(fields, result);
      return;
    }
    if (objc::as<NSArray>(value) != nullptr || host::isArchiveUid(value))
      raiseOperation("a value stands where an object is expected");
    result = {Decoded::done, Strong<NSObject>::retain(value)};
  }

  void decodeInstance(NSDictionary* fields, Decoded& result) {
    Class cls = decodeClass(send(fields, NSDictionary::objectForKey, "$class"_ns));
    if (open.size() > kMaximumDepth) raiseOperation("objects are nested too deeply");
    open.push_back(Strong<NSDictionary>::retain(fields));
    const Closing closing(open);
    auto* allocated = send<NSObject*>(cls, "alloc"_sel);
    result.state = Decoded::begun;
    if (!isFixedContainer(cls)) result.object = Strong<NSObject>::retain(allocated);
    try {
      allocated = send<NSObject*>(allocated, "initWithCoder:"_sel, static_cast<NSCoder*>(this));
    } catch (...) {
      objc_release(allocated);
      result = {};
      throw;
    }
    result = {Decoded::done, Strong<NSObject>::adopt(allocated)};
  }

  Class decodeClass(NSObject* reference) {
    const std::uint32_t index = checkedIndex(reference);
    auto* described = objc::as<NSDictionary>(send(objects, NSArray::objectAtIndex, index));
    auto* name = objc::as<NSString>(
        send<NSObject*>(described, "objectForKey:"_sel, static_cast<NSObject*>("$classname"_ns)));
    if (name == nullptr) raiseOperation("an object's class has no name");
    Class cls = objc_getClass(send(name, NSString::UTF8String));
    if (cls == nullptr || !class_respondsToSelector(cls, "initWithCoder:"_sel))
      raiseOperation("cannot decode an object of class " + quoted(name));
    return cls;
  }

  class Closing {
   public:
    explicit Closing(std::vector<Strong<NSDictionary>>& open) : open_(open) {}
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
    ~Closing() { open_.pop_back(); }

   private:
    std::vector<Strong<NSDictionary>>& open_;
  };

  Strong<NSArray> objects;
  std::vector<Decoded> decoded;
  std::vector<Strong<NSDictionary>> open;  ///< of the objects that are being decoded
};

}  // namespace

OBJC_CLASS_NAMED(NSKeyedUnarchiver, NSCoder, KeyedUnarchiver, NSCoder,
                 objc::Ivar<"objects", &KeyedUnarchiver::objects>,
                 objc::Ivar<"decoded", &KeyedUnarchiver::decoded>,
                 objc::Ivar<"open", &KeyedUnarchiver::open>,
                 objc::ClassMethod<"unarchiveObjectWithData:", &KeyedUnarchiver::unarchive>,
                 objc::Method<"allowsKeyedCoding", &KeyedUnarchiver::allowsKeys>,
                 objc::Method<"containsValueForKey:", &KeyedUnarchiver::contains>,
                 objc::Method<"decodeObjectForKey:", &KeyedUnarchiver::decodeObjectFor>,
                 objc::Method<"decodeBoolForKey:", &KeyedUnarchiver::decodeBool>,
                 objc::Method<"decodeIntForKey:", &KeyedUnarchiver::decodeIntFor>,
                 objc::Method<"decodeInt32ForKey:", &KeyedUnarchiver::decodeIntFor>,
                 objc::Method<"decodeInt64ForKey:", &KeyedUnarchiver::decodeInt64>,
                 objc::Method<"decodeIntegerForKey:", &KeyedUnarchiver::decodeIntegerFor>,
                 objc::Method<"decodeFloatForKey:", &KeyedUnarchiver::decodeFloatFor>,
                 objc::Method<"decodeDoubleForKey:", &KeyedUnarchiver::decodeDoubleFor>,
                 objc::Method<"decodeBytesForKey:returnedLength:", &KeyedUnarchiver::decodeBytes>,
                 objc::Method<"_decodeArrayOfObjectsForKey:", &KeyedUnarchiver::decodeList>)
