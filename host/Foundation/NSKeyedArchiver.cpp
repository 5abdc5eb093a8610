// Objects to keyed archives.
#include <unordered_map>
#include <vector>

#include "Foundation/NSCoder.h"
#include "Foundation/keyed_archive.h"
#include "Foundation/keyed_archive_uid.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"

namespace {

using namespace host::archive;
using ObjectFields = Strong<NSMutableDictionary>;

/// Whether the archive stores it directly.
bool isPlain(NSObject* object) {
  return objc::as<NSString>(object) != nullptr || objc::as<NSNumber>(object) != nullptr ||
         objc::as<NSData>(object) != nullptr;
}

struct KeyedArchiver : NSCoder {
  static NSData* archive(Class cls, SEL, NSObject* root) {
    auto archiver =
        Strong<KeyedArchiver>::adopt(static_cast<KeyedArchiver*>(class_createInstance(cls, 0)));
    return archiver->archiveRoot(root);
  }

  NSData* archiveRoot(NSObject* root) {
    objects.push_back(Strong<NSObject>::retain("$null"_ns));
    open.push_back(ObjectFields::retain(NSMutableDictionary::dictionary()));
    encodeObjectFor(root, "root"_ns);
    NSMutableArray* list = NSMutableArray::array();
    for (const auto& object : objects) send(list, NSMutableArray::addObject, object);
    const auto bytes = host::binaryFromPropertyList(NSDictionary::dictionaryWithObjectsAndKeys(
        NSNumber::numberWithLongLong(kVersion), "$version"_ns, list, "$objects"_ns,
        "NSKeyedArchiver"_ns, "$archiver"_ns, open.back().get(), "$top"_ns,
        static_cast<NSObject*>(nullptr)));
    if (!bytes) raiseArgument("a text with a zero in it, or too much of everything");
    return NSData::dataWithBytes(bytes->data(), bytes->size());
  }

  void put(NSObject* value, NSString* key) {
    if (open.empty()) raiseArgument("there is no archive");
    send(open.back(), NSMutableDictionary::setObjectForKey, value, storedKey(key));
  }
  void encodeObjectFor(NSObject* object, NSString* key) { put(reference(object), key); }
  void encodeBool(bool value, NSString* key) { put(NSNumber::numberWithBool(value), key); }
  void encodeInt(int value, NSString* key) { put(NSNumber::numberWithLongLong(value), key); }
  void encodeInt64(long long value, NSString* key) {
    put(NSNumber::numberWithLongLong(value), key);
  }
  void encodeIntegerFor(NSInteger value, NSString* key) { encodeInt64(value, key); }
  void encodeFloatFor(float value, NSString* key) {
    encodeDoubleFor(static_cast<double>(value), key);
  }
  void encodeDoubleFor(double value, NSString* key) { put(NSNumber::numberWithDouble(value), key); }
  void encodeBytesFor(const unsigned char* bytes, NSUInteger length, NSString* key) {
    put(NSData::dataWithBytes(bytes, length), key);
  }
  void encodeList(NSArray* list, NSString* key) {
    NSMutableArray* references = NSMutableArray::array();
    for (NSUInteger i = 0; i < send(list, NSArray::count); ++i)
      send(references, NSMutableArray::addObject, reference(send(list, NSArray::objectAtIndex, i)));
    put(references, key);
  }
  bool allowsKeys() { return true; }

  NSObject* reference(NSObject* object) {
    return host::makeArchiveUid(encode(object)).autorelease();
  }

  /// The object's index in the archive. An object has one before it is written, for those that
  /// refer back to it.
  std::uint32_t encode(NSObject* object) {
    if (object == nullptr) return 0;
    const auto [found, isNew] = indices.emplace(object, nextIndex());
    const std::uint32_t index = found->second;
    if (!isNew) return index;
    kept.push_back(Strong<NSObject>::retain(object));
    if (isPlain(object)) objects.push_back(Strong<NSObject>::retain(object));
    else encodeFields(object);
    return index;
  }

  void encodeFields(NSObject* object) {
    if (!send(object, NSObject::respondsToSelector, "encodeWithCoder:"_sel)) {
      raiseArgument(std::string("-[") + class_getName(object->isa) +
                    " encodeWithCoder:]: unrecognized selector");
    }
    if (open.size() > kMaximumDepth) raiseArgument("objects are nested too deeply");
    open.push_back(ObjectFields::retain(NSMutableDictionary::dictionary()));
    const ObjectFields fields = open.back();
    objects.push_back(Strong<NSObject>::retain(fields));
    const Closing closing(open);
    send<void>(object, "encodeWithCoder:"_sel, static_cast<NSCoder*>(this));
    send(fields, NSMutableDictionary::setObjectForKey,
         host::makeArchiveUid(encodeClass(send<Class>(object, "class"_sel))).autorelease(),
         "$class"_ns);
  }

  std::uint32_t encodeClass(Class cls) {
    const auto [found, isNew] = indices.emplace(cls, nextIndex());
    if (!isNew) return found->second;
    NSMutableArray* names = NSMutableArray::array();
    for (Class each = cls; each != nullptr; each = class_getSuperclass(each))
      send(names, NSMutableArray::addObject, host::makeString(class_getName(each)));
    objects.push_back(Strong<NSObject>::retain(NSDictionary::dictionaryWithObjectsAndKeys(
        send(names, NSArray::objectAtIndex, 0), "$classname"_ns, names, "$classes"_ns,
        static_cast<NSObject*>(nullptr))));
    return found->second;
  }

  std::uint32_t nextIndex() const { return static_cast<std::uint32_t>(objects.size()); }

  /// Closes the innermost object, even if its own code raises and an outer one continues.
  class Closing {
   public:
    explicit Closing(std::vector<ObjectFields>& open) : open_(open) {}
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
    ~Closing() { open_.pop_back(); }

   private:
    std::vector<ObjectFields>& open_;
  };

  std::vector<Strong<NSObject>> objects;  ///< the archive's own, in order
  std::vector<Strong<NSObject>> kept;     ///< what was encoded, so that no address comes back
  std::unordered_map<const void*, std::uint32_t> indices;
  std::vector<ObjectFields> open;  ///< of the objects that are being encoded, the top's first
};

}  // namespace

OBJC_CLASS_NAMED(NSKeyedArchiver, NSCoder, KeyedArchiver, NSCoder,
                 objc::Ivar<"objects", &KeyedArchiver::objects>,
                 objc::Ivar<"kept", &KeyedArchiver::kept>,
                 objc::Ivar<"indices", &KeyedArchiver::indices>,
                 objc::Ivar<"open", &KeyedArchiver::open>,
                 objc::ClassMethod<"archivedDataWithRootObject:", &KeyedArchiver::archive>,
                 objc::Method<"allowsKeyedCoding", &KeyedArchiver::allowsKeys>,
                 objc::Method<"encodeObject:forKey:", &KeyedArchiver::encodeObjectFor>,
                 objc::Method<"encodeBool:forKey:", &KeyedArchiver::encodeBool>,
                 objc::Method<"encodeInt:forKey:", &KeyedArchiver::encodeInt>,
                 objc::Method<"encodeInt32:forKey:", &KeyedArchiver::encodeInt>,
                 objc::Method<"encodeInt64:forKey:", &KeyedArchiver::encodeInt64>,
                 objc::Method<"encodeInteger:forKey:", &KeyedArchiver::encodeIntegerFor>,
                 objc::Method<"encodeFloat:forKey:", &KeyedArchiver::encodeFloatFor>,
                 objc::Method<"encodeDouble:forKey:", &KeyedArchiver::encodeDoubleFor>,
                 objc::Method<"encodeBytes:length:forKey:", &KeyedArchiver::encodeBytesFor>,
                 objc::Method<"_encodeArrayOfObjects:forKey:", &KeyedArchiver::encodeList>)
