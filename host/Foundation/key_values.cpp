// Values by key: through accessors or instance variables, through dictionaries and arrays, along
// paths.
#include <cctype>
#include <cstring>
#include <optional>
#include <string>

#include "Foundation/enumeration.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/foreign_call.h"
#include "runtime/internal.h"
#include "runtime/runtime.h"
#include "runtime/type_encoding.h"

extern "C" void object_setIvarWithStrongDefault(id object, objc_ivar* ivar, id value);
extern "C" id object_getIvar(id object, objc_ivar* ivar);

namespace {

using host::runtime::Exception;
using host::runtime::withoutQualifiers;

std::string capitalized(std::string key) {
  if (!key.empty()) key[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(key[0])));
  return key;
}

bool isObjectType(std::string_view type) { return type.starts_with('@') || type.starts_with('#'); }

/// A value of that type as an object. Structures become values.
NSObject* box(std::string_view type, const void* bytes) {
  const auto read = [&]<class T>(T) {
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
  };
  type = withoutQualifiers(type);
  if (type.empty() || type == "v") return nullptr;
  if (isObjectType(type)) return read(static_cast<NSObject*>(nullptr));
  switch (type.front()) {
    case 'B':
      return NSNumber::numberWithBool(read(char{}) != 0);
    case 'c':
      return NSNumber::numberWithLongLong(read(static_cast<signed char>(0)));
    case 'C':
      return NSNumber::numberWithLongLong(read(static_cast<unsigned char>(0)));
    case 's':
      return NSNumber::numberWithLongLong(read(short{}));
    case 'S':
      return NSNumber::numberWithLongLong(read(static_cast<unsigned short>(0)));
    case 'i':
    case 'l':
      return NSNumber::numberWithLongLong(read(int{}));
    case 'I':
    case 'L':
      return NSNumber::numberWithLongLong(read(unsigned{}));
    case 'q':
      return NSNumber::numberWithLongLong(read(0LL));
    case 'Q':
      return send<NSNumber*>(objc_getClass("NSNumber"), "numberWithUnsignedLongLong:"_sel,
                             read(0ULL));
    case 'f':
      return send<NSNumber*>(objc_getClass("NSNumber"), "numberWithFloat:"_sel, read(0.0F));
    case 'd':
      return NSNumber::numberWithDouble(read(0.0));
    default:
      return send<NSObject*>(objc_getClass("NSValue"), "valueWithBytes:objCType:"_sel, bytes,
                             static_cast<const char*>(host::text(host::makeString(type)).data()));
  }
}

/// Writes the object's value as that type. The place has room for the type.
void unbox(std::string_view type, NSObject* object, void* place) {
  const auto write = [&](auto value) { std::memcpy(place, &value, sizeof value); };
  type = withoutQualifiers(type);
  if (isObjectType(type)) {
    write(object);
    return;
  }
  auto* number = static_cast<NSNumber*>(object);
  switch (type.front()) {
    case 'B':
      write(send(number, NSNumber::boolValue));
      return;
    case 'c':
    case 'C':
      write(static_cast<char>(send(number, NSNumber::longLongValue)));
      return;
    case 's':
    case 'S':
      write(static_cast<short>(send(number, NSNumber::longLongValue)));
      return;
    case 'i':
    case 'I':
    case 'l':
    case 'L':
      write(static_cast<int>(send(number, NSNumber::longLongValue)));
      return;
    case 'q':
    case 'Q':
      write(send(number, NSNumber::longLongValue));
      return;
    case 'f':
      write(send(number, NSNumber::floatValue));
      return;
    case 'd':
      write(send(number, NSNumber::doubleValue));
      return;
    default:
      send<void>(object, "getValue:"_sel, place);
  }
}

objc_method* methodNamed(NSObject* object, const std::string& name) {
  return class_getInstanceMethod(object->isa, sel_registerName(name.c_str()));
}

/// Calls a method with the arguments that lie at the places, after receiver and selector.
NSObject* call(NSObject* object, objc_method* method, void* argument) {
  auto& shape = host::runtime::shapeOf(method_getTypeEncoding(method));
  SEL selector = method_getName(method);
  void* arguments[] = {&object, &selector, argument};
  std::max_align_t wide[8]{};
  if (shape.resultSize() > sizeof wide) return nullptr;
  ffi_call(&shape.cif(), method_getImplementation(method), wide, arguments);
  std::max_align_t result[8]{};
  shape.fromRegister(wide, result);
  return box(shape.types()[0], result);
}

objc_ivar* variableNamed(NSObject* object, const std::string& key) {
  for (const std::string& name :
       {"_" + key, "_is" + capitalized(key), key, "is" + capitalized(key)})
    if (objc_ivar* ivar = class_getInstanceVariable(object->isa, name.c_str())) return ivar;
  return nullptr;
}

std::string keyOf(NSString* key) {
  if (key == nullptr) throw Exception("NSInvalidArgumentException", "a value for a nil key");
  return std::string(host::text(key));
}

NSObject* valueForKey(NSObject* self, SEL, NSString* keyObject) {
  const std::string key = keyOf(keyObject);
  for (const std::string& name :
       {"get" + capitalized(key), key, "is" + capitalized(key), "_" + key})
    if (objc_method* method = methodNamed(self, name)) return call(self, method, nullptr);
  if (objc_ivar* ivar = variableNamed(self, key)) {
    const std::string_view type = ivar_getTypeEncoding(ivar);
    if (isObjectType(type)) return object_getIvar(self, ivar);
    return box(type, reinterpret_cast<char*>(self) + ivar_getOffset(ivar));
  }
  return send<NSObject*>(self, "valueForUndefinedKey:"_sel, keyObject);
}

void setValueForKey(NSObject* self, SEL, NSObject* value, NSString* keyObject) {
  const std::string key = keyOf(keyObject);
  const auto refuseNil = [&](std::string_view type) {
    if (value != nullptr || isObjectType(withoutQualifiers(type))) return false;
    send<void>(self, "setNilValueForKey:"_sel, keyObject);
    return true;
  };
  for (const std::string& name :
       {"set" + capitalized(key) + ":", "_set" + capitalized(key) + ":"}) {
    objc_method* method = methodNamed(self, name);
    if (method == nullptr) continue;
    auto& shape = host::runtime::shapeOf(method_getTypeEncoding(method));
    if (shape.argumentCount() < 3 || refuseNil(shape.types()[3])) return;
    std::max_align_t argument[8]{};
    if (shape.argumentSize(2) > sizeof argument) return;
    unbox(shape.types()[3], value, argument);
    call(self, method, argument);
    return;
  }
  if (objc_ivar* ivar = variableNamed(self, key)) {
    const std::string_view type = ivar_getTypeEncoding(ivar);
    if (refuseNil(type)) return;
    if (isObjectType(type)) object_setIvarWithStrongDefault(self, ivar, value);
    else unbox(type, value, reinterpret_cast<char*>(self) + ivar_getOffset(ivar));
    return;
  }
  send<void>(self, "setValue:forUndefinedKey:"_sel, value, keyObject);
}

[[noreturn]] void raiseUndefined(NSObject* self, NSString* key) {
  throw Exception("NSUnknownKeyException",
                  std::string("[<") + class_getName(self->isa) +
                      ">]: this class is not key value coding-compliant for the key " +
                      std::string(host::text(key)) + ".");
}
NSObject* undefinedKey(NSObject* self, SEL, NSString* key) { raiseUndefined(self, key); }
void setUndefinedKey(NSObject* self, SEL, NSObject*, NSString* key) { raiseUndefined(self, key); }
void setNil(NSObject* self, SEL, NSString* key) {
  throw Exception("NSInvalidArgumentException",
                  std::string("[<") + class_getName(self->isa) +
                      "> setNilValueForKey]: could not set nil as the value for the key " +
                      std::string(host::text(key)) + ".");
}

/// The key before the first dot, and the path after it; empty if there is none.
std::pair<std::string, std::string> splitPath(const std::string& path) {
  const std::size_t dot = path.find('.');
  if (dot == path.npos) return {path, ""};
  return {path.substr(0, dot), path.substr(dot + 1)};
}

NSObject* valueAtPath(NSObject* object, const std::string& path) {
  return send<NSObject*>(object, "valueForKeyPath:"_sel, host::makeString(path));
}

NSObject* valueForKeyPath(NSObject* self, SEL, NSString* pathObject) {
  const auto [key, rest] = splitPath(keyOf(pathObject));
  auto* value = send<NSObject*>(self, "valueForKey:"_sel, host::makeString(key));
  return rest.empty() ? value : valueAtPath(value, rest);
}

void setValueForKeyPath(NSObject* self, SEL, NSObject* value, NSString* pathObject) {
  const auto [key, rest] = splitPath(keyOf(pathObject));
  if (rest.empty()) {
    send<void>(self, "setValue:forKey:"_sel, value, pathObject);
    return;
  }
  auto* next = send<NSObject*>(self, "valueForKey:"_sel, host::makeString(key));
  send<void>(next, "setValue:forKeyPath:"_sel, value, host::makeString(rest));
}

NSObject* dictionaryValue(NSDictionary* self, SEL, NSString* key) {
  return send(self, NSDictionary::objectForKey, static_cast<NSObject*>(key));
}

/// Nil removes.
void setDictionaryValue(NSMutableDictionary* self, SEL, NSObject* value, NSString* key) {
  if (value == nullptr) send(self, NSMutableDictionary::removeObjectForKey, key);
  else send(self, NSMutableDictionary::setObjectForKey, value, key);
}

/// The values of the elements; nothing stands for nil.
NSObject* elementValues(NSArray* self, SEL, NSString* key) {
  NSMutableArray* values = NSMutableArray::array();
  host::forEachElement(self, [&](NSObject* element) {
    auto* value = send<NSObject*>(element, "valueForKey:"_sel, key);
    if (value == nullptr) value = send<NSObject*>(objc_getClass("NSNull"), "null"_sel);
    send(values, NSMutableArray::addObject, value);
  });
  return values;
}

void setElementValues(NSArray* self, SEL, NSObject* value, NSString* key) {
  host::forEachElement(
      self, [&](NSObject* element) { send<void>(element, "setValue:forKey:"_sel, value, key); });
}

/// What an operator makes of a collection's values: "@sum" of those at the path.
NSObject* applyOperator(NSArray* array, const std::string& name, const std::string& path) {
  const NSUInteger count = send(array, NSArray::count);
  if (name == "@count") return NSNumber::numberWithLongLong(static_cast<long long>(count));
  double sum = 0;
  NSObject* chosen = nullptr;
  NSMutableArray* values = NSMutableArray::array();
  host::forEachElement(array, [&](NSObject* element) {
    NSObject* value = path == "self" ? element : valueAtPath(element, path);
    if (value == nullptr) return;
    const bool isDistinct = name == "@distinctUnionOfObjects";
    if (isDistinct || name == "@unionOfObjects") {
      if (!isDistinct || !send(values, NSArray::containsObject, value))
        send(values, NSMutableArray::addObject, value);
    } else if (name == "@sum" || name == "@avg") {
      sum += send(static_cast<NSNumber*>(value), NSNumber::doubleValue);
    } else {
      const auto order = chosen == nullptr ? 0 : send<NSInteger>(value, "compare:"_sel, chosen);
      if (chosen == nullptr || (name == "@max" ? order > 0 : order < 0)) chosen = value;
    }
  });
  if (name == "@sum") return NSNumber::numberWithDouble(sum);
  if (name == "@avg")
    return NSNumber::numberWithDouble(count == 0 ? 0 : sum / static_cast<double>(count));
  if (name == "@max" || name == "@min") return chosen;
  if (name == "@unionOfObjects" || name == "@distinctUnionOfObjects") return values;
  throw Exception("NSInvalidArgumentException", "unknown operator in a key path: " + name);
}

NSObject* valueForArrayPath(NSArray* self, SEL selector, NSString* pathObject) {
  const auto [key, rest] = splitPath(keyOf(pathObject));
  if (key.starts_with('@')) return applyOperator(self, key, rest);
  return valueForKeyPath(self, selector, pathObject);
}

}  // namespace

OBJC_CATEGORY_OF_OWN(NSObject, KeyValueCoding, objc::Method<"valueForKey:", &valueForKey>,
                     objc::Method<"setValue:forKey:", &setValueForKey>,
                     objc::Method<"valueForKeyPath:", &valueForKeyPath>,
                     objc::Method<"setValue:forKeyPath:", &setValueForKeyPath>,
                     objc::Method<"valueForUndefinedKey:", &undefinedKey>,
                     objc::Method<"setValue:forUndefinedKey:", &setUndefinedKey>,
                     objc::Method<"setNilValueForKey:", &setNil>)
OBJC_CATEGORY_OF_OWN(NSDictionary, KeyValueCoding, objc::Method<"valueForKey:", &dictionaryValue>)
OBJC_CATEGORY_OF_OWN(NSMutableDictionary, KeyValueCoding,
                     objc::Method<"setValue:forKey:", &setDictionaryValue>)
OBJC_CATEGORY_OF_OWN(NSArray, KeyValueCoding, objc::Method<"valueForKey:", &elementValues>,
                     objc::Method<"setValue:forKey:", &setElementValues>,
                     objc::Method<"valueForKeyPath:", &valueForArrayPath>)
