#include "prefs/keyed_archive.h"

#include "platform/CoreFoundation.h"
#include "prefs/archived_fields.h"

namespace varnix {

namespace {

constexpr long long kVersion = 100000;
constexpr NSUInteger kMaximumObjects = 256;
/// Limits nested values plus nested objects, since the platform decodes recursively.
constexpr int kMaximumDepth = 64;

bool inherits(Class cls, Class from) {
  while (cls != nullptr && cls != from) cls = class_getSuperclass(cls);
  return cls != nullptr;
}

/// Whether the system lets us recognise references.
bool knowsReferences() {
  return &_CFKeyedArchiverUIDGetTypeID != nullptr && &_CFKeyedArchiverUIDGetValue != nullptr;
}

/// The objects of an archive. Checks them along their references as decoding does, each once.
class ArchivedObjects {
 public:
  explicit ArchivedObjects(NSArray* objects)
      : objects_(objects), count_(send(objects, NSArray::count)) {}

  /// Whether there are few enough, and the first stands for nil.
  bool canBeRead() const {
    if (count_ == 0 || count_ > kMaximumObjects) return false;
    auto* first = objc::as<NSString>(send(objects_, NSArray::objectAtIndex, 0));
    return first != nullptr && send(first, NSString::isEqualToString, "$null"_ns);
  }

  /// Whether the value is a reference to nil or to an object that can be decoded.
  bool isSoundReference(NSObject* value, int depth) {
    const NSUInteger index = indexOf(value);
    if (index == 0) return true;
    if (index >= count_) return false;
    if (states_[index] != State::unseen) return states_[index] == State::sound;  // open: a cycle
    states_[index] = State::open;
    NSObject* object = send(objects_, NSArray::objectAtIndex, index);
    auto* fields = objc::as<NSDictionary>(object);
    const bool sound = fields == nullptr ? isPlainValue(object) : isSoundInstance(fields, depth);
    if (sound) states_[index] = State::sound;
    return sound;
  }

 private:
  enum class State : unsigned char { unseen, open, sound };

  /// The index of the object that a reference names; out of range for any other value.
  NSUInteger indexOf(NSObject* value) const {
    const bool isReference =
        value != nullptr && CFGetTypeID(value) == _CFKeyedArchiverUIDGetTypeID();
    return isReference ? _CFKeyedArchiverUIDGetValue(value) : count_;
  }

  bool isSoundInstance(NSDictionary* fields, int depth) {
    Class cls = decodableClass(send(fields, NSDictionary::objectForKey, "$class"_ns));
    if (cls == nullptr || !haveDecodableKinds(fields)) return false;
    NSObject* keys = send(fields, NSDictionary::objectForKey, "NS.keys"_ns);
    NSObject* objects = send(fields, NSDictionary::objectForKey, "NS.objects"_ns);
    const bool inPairs = keys != nullptr || inherits(cls, objc::classOf<NSDictionary>());
    return areSoundFields(fields, depth + 1) && isList(keys) && arePlain(keys) && isList(objects) &&
           (!inPairs || countOf(keys) == countOf(objects));
  }

  /// The class that an object names, if this process can decode it; else nil.
  Class decodableClass(NSObject* reference) const {
    const NSUInteger index = indexOf(reference);
    if (index >= count_) return nullptr;
    auto* description = objc::as<NSDictionary>(send(objects_, NSArray::objectAtIndex, index));
    if (description == nullptr) return nullptr;
    auto* name = objc::as<NSString>(send(description, NSDictionary::objectForKey, "$classname"_ns));
    if (name == nullptr) return nullptr;
    Class cls = objc_getClass(send(name, NSString::UTF8String));
    return class_respondsToSelector(cls, NSObject::initWithCoder) ? cls : nullptr;
  }

  bool areSoundFields(NSDictionary* fields, int depth) {
    NSArray* keys = send(fields, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      NSObject* key = send(keys, NSArray::objectAtIndex, i);
      if (!send(key, NSObject::isEqual, "$class"_ns) &&
          !isSoundValue(send(fields, NSDictionary::objectForKey, key), depth))
        return false;
    }
    return true;
  }

  bool isSoundValue(NSObject* value, int depth) {
    if (isPlainValue(value)) return true;
    if (depth > kMaximumDepth) return false;
    if (auto* fields = objc::as<NSDictionary>(value)) return areSoundFields(fields, depth + 1);
    auto* list = objc::as<NSArray>(value);
    if (list == nullptr) return isSoundReference(value, depth);
    for (NSUInteger i = 0; i < send(list, NSArray::count); ++i) {
      if (!isSoundValue(send(list, NSArray::objectAtIndex, i), depth + 1)) return false;
    }
    return true;
  }

  /// True if absent, or if all are references to objects other than nil.
  bool isList(NSObject* value) const {
    if (value == nullptr) return true;
    auto* list = objc::as<NSArray>(value);
    if (list == nullptr) return false;
    for (NSUInteger i = 0; i < send(list, NSArray::count); ++i) {
      const NSUInteger index = indexOf(send(list, NSArray::objectAtIndex, i));
      if (index == 0 || index >= count_) return false;
    }
    return true;
  }

  /// For the keys in a list that has been checked: a dictionary copies them.
  bool arePlain(NSObject* keys) const {
    const NSUInteger count = countOf(keys);
    for (NSUInteger i = 0; i < count; ++i) {
      NSObject* key = send(static_cast<NSArray*>(keys), NSArray::objectAtIndex, i);
      if (!isPlainValue(send(objects_, NSArray::objectAtIndex, indexOf(key)))) return false;
    }
    return true;
  }

  static NSUInteger countOf(NSObject* list) {
    return send(static_cast<NSArray*>(list), NSArray::count);
  }

  NSArray* objects_;
  NSUInteger count_;
  State states_[kMaximumObjects] = {};
};

}  // namespace

bool isDecodableArchive(NSObject* value) {
  auto* data = objc::as<NSData>(value);
  if (data == nullptr || !knowsReferences()) return false;
  auto* archive = objc::as<NSDictionary>(
      NSPropertyListSerialization::propertyListWithData(data, 0, nullptr, nullptr));
  if (archive == nullptr) return false;
  auto* archiver = objc::as<NSString>(send(archive, NSDictionary::objectForKey, "$archiver"_ns));
  auto* version = archivedNumber(send(archive, NSDictionary::objectForKey, "$version"_ns));
  auto* top = objc::as<NSDictionary>(send(archive, NSDictionary::objectForKey, "$top"_ns));
  auto* list = objc::as<NSArray>(send(archive, NSDictionary::objectForKey, "$objects"_ns));
  if (archiver == nullptr || version == nullptr || top == nullptr || list == nullptr) return false;
  if (!send(archiver, NSString::isEqualToString, "NSKeyedArchiver"_ns) ||
      send(version, NSNumber::longLongValue) != kVersion)
    return false;
  ArchivedObjects objects(list);
  return objects.canBeRead() &&
         objects.isSoundReference(send(top, NSDictionary::objectForKey, "root"_ns), 0);
}

}  // namespace varnix
