#include "prefs/keyed_archive.h"

#include "platform/CoreFoundation.h"
#include "prefs/archived_fields.h"

namespace varnix {

namespace {

constexpr long long kVersion = 100000;
constexpr NSUInteger kMaximumObjects = 256;
/// Values in values and objects in objects, together: the platform recurses when it decodes.
constexpr int kMaximumDepth = 64;

bool inherits(Class cls, Class from) {
  while (cls != nullptr && cls != from) cls = class_getSuperclass(cls);
  return cls != nullptr;
}

/// The objects of an archive. References are followed as decoding follows them, each object once.
class ArchivedObjects {
 public:
  explicit ArchivedObjects(NSArray* objects) : objects_(objects), count_(objects->count()) {}

  /// Whether they are few enough, and the first of them stands for nil.
  bool canBeRead() const {
    if (count_ == 0 || count_ > kMaximumObjects) return false;
    auto* first = objc::as<NSString>(objects_->objectAtIndex(0));
    return first != nullptr && first->isEqualToString("$null"_ns);
  }

  /// Whether the value is a reference to nil or to an object that can be decoded.
  bool isSoundReference(NSObject* value, int depth) {
    const NSUInteger index = indexOf(value);
    if (index == 0) return true;
    if (index >= count_) return false;
    if (states_[index] != State::unseen) return states_[index] == State::sound;  // else a cycle
    states_[index] = State::open;
    NSObject* object = objects_->objectAtIndex(index);
    auto* fields = objc::as<NSDictionary>(object);
    const bool sound = fields == nullptr ? isPlainValue(object) : isSoundInstance(fields, depth);
    if (sound) states_[index] = State::sound;
    return sound;
  }

 private:
  enum class State : unsigned char { unseen, open, sound };

  /// The number of the object that a reference stands for; out of range for another value.
  NSUInteger indexOf(NSObject* value) const {
    const bool isReference =
        value != nullptr && CFGetTypeID(value) == _CFKeyedArchiverUIDGetTypeID();
    return isReference ? _CFKeyedArchiverUIDGetValue(value) : count_;
  }

  bool isSoundInstance(NSDictionary* fields, int depth) {
    Class cls = decodableClass(fields->objectForKey("$class"_ns));
    if (cls == nullptr || !haveDecodableKinds(fields)) return false;
    NSObject* keys = fields->objectForKey("NS.keys"_ns);
    NSObject* objects = fields->objectForKey("NS.objects"_ns);
    const bool inPairs = keys != nullptr || inherits(cls, objc::classOf<NSDictionary>());
    return areSoundFields(fields, depth + 1) && isList(keys) && arePlain(keys) && isList(objects) &&
           (!inPairs || countOf(keys) == countOf(objects));
  }

  /// The class that an object names, where this process can decode it; else nil.
  Class decodableClass(NSObject* reference) const {
    const NSUInteger index = indexOf(reference);
    if (index >= count_) return nullptr;
    auto* description = objc::as<NSDictionary>(objects_->objectAtIndex(index));
    if (description == nullptr) return nullptr;
    auto* name = objc::as<NSString>(description->objectForKey("$classname"_ns));
    if (name == nullptr) return nullptr;
    Class cls = objc_getClass(name->UTF8String());
    return class_respondsToSelector(cls, "initWithCoder:"_sel) ? cls : nullptr;
  }

  bool areSoundFields(NSDictionary* fields, int depth) {
    NSArray* keys = fields->allKeys();
    for (NSUInteger i = 0; i < keys->count(); ++i) {
      NSObject* key = keys->objectAtIndex(i);
      if (!key->isEqual("$class"_ns) && !isSoundValue(fields->objectForKey(key), depth))
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
    for (NSUInteger i = 0; i < list->count(); ++i) {
      if (!isSoundValue(list->objectAtIndex(i), depth + 1)) return false;
    }
    return true;
  }

  /// Absent, or references to objects none of which is nil.
  bool isList(NSObject* value) const {
    if (value == nullptr) return true;
    auto* list = objc::as<NSArray>(value);
    if (list == nullptr) return false;
    for (NSUInteger i = 0; i < list->count(); ++i) {
      const NSUInteger index = indexOf(list->objectAtIndex(i));
      if (index == 0 || index >= count_) return false;
    }
    return true;
  }

  /// For the keys of a list that was found to be one: a dictionary copies them.
  bool arePlain(NSObject* keys) const {
    const NSUInteger count = countOf(keys);
    for (NSUInteger i = 0; i < count; ++i) {
      NSObject* key = send<NSObject*>(keys, "objectAtIndex:"_sel, i);
      if (!isPlainValue(objects_->objectAtIndex(indexOf(key)))) return false;
    }
    return true;
  }

  static NSUInteger countOf(NSObject* list) { return send<NSUInteger>(list, "count"_sel); }

  NSArray* objects_;
  NSUInteger count_;
  State states_[kMaximumObjects] = {};
};

}  // namespace

bool isDecodableArchive(NSObject* value) {
  auto* data = objc::as<NSData>(value);
  if (data == nullptr) return false;
  auto* archive = objc::as<NSDictionary>(NSPropertyListSerialization::propertyListWithData(data));
  if (archive == nullptr) return false;
  auto* archiver = objc::as<NSString>(archive->objectForKey("$archiver"_ns));
  auto* version = archivedNumber(archive->objectForKey("$version"_ns));
  auto* top = objc::as<NSDictionary>(archive->objectForKey("$top"_ns));
  auto* list = objc::as<NSArray>(archive->objectForKey("$objects"_ns));
  if (archiver == nullptr || version == nullptr || top == nullptr || list == nullptr) return false;
  if (!archiver->isEqualToString("NSKeyedArchiver"_ns) || version->longLongValue() != kVersion)
    return false;
  ArchivedObjects objects(list);
  return objects.canBeRead() && objects.isSoundReference(top->objectForKey("root"_ns), 0);
}

}  // namespace varnix
