// Values of C types as objects, and the object that stands for nothing.
#include <cstring>
#include <string>

#include "Foundation/range.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/internal.h"
#include "runtime/type_encoding.h"

namespace {

struct AnyValue : NSObject {};

struct Value : AnyValue {
  static Value* make(const void* bytes, const char* types, std::size_t size);
  static Value* withBytes(const void* bytes, const char* types) {
    return make(bytes, types, host::runtime::extentOf(types).size);
  }
  static Value* withPointer(const void* pointer) {
    return make(static_cast<const void*>(&pointer), "^v", sizeof pointer);
  }
  static Value* withObject(NSObject* object) {
    return make(static_cast<const void*>(&object), "@", sizeof object);
  }
  static Value* withRange(_NSRange range) {
    return make(&range, objc::kStored<objc::kEncoding<_NSRange>>.text, sizeof range);
  }

  void get(void* to) { std::memcpy(to, bytes.data(), bytes.size()); }
  const char* objCType() { return types.c_str(); }
  template <class T>
  T read() {
    T value{};
    std::memcpy(&value, bytes.data(), std::min(sizeof value, bytes.size()));
    return value;
  }
  void* asPointer() { return read<void*>(); }
  NSObject* asObject() { return read<NSObject*>(); }
  _NSRange asRange() { return read<_NSRange>(); }
  bool equals(NSObject* other);
  NSUInteger hashValue() { return std::hash<std::string>{}(bytes); }
  Value* copy() { return static_cast<Value*>(objc_retain(this)); }

  std::string bytes;
  std::string types;
};

struct Null : NSObject {
  static Null* shared();
  Null* copy() { return static_cast<Null*>(objc_retain(this)); }
  NSString* describe() { return host::makeString("<null>"); }
};

}  // namespace

OBJC_CLASS_NAMED(NSValue, NSObject, AnyValue, NSObject,
                 objc::ClassMethod<"valueWithBytes:objCType:", &Value::withBytes>,
                 objc::ClassMethod<"value:withObjCType:", &Value::withBytes>,
                 objc::ClassMethod<"valueWithPointer:", &Value::withPointer>,
                 objc::ClassMethod<"valueWithNonretainedObject:", &Value::withObject>,
                 objc::ClassMethod<"valueWithRange:", &Value::withRange>)

OBJC_CLASS_NAMED(NSConcreteValue, NSValue, Value, AnyValue, objc::Ivar<"bytes", &Value::bytes>,
                 objc::Ivar<"types", &Value::types>, objc::Method<"getValue:", &Value::get>,
                 objc::Method<"objCType", &Value::objCType>,
                 objc::Method<"pointerValue", &Value::asPointer>,
                 objc::Method<"nonretainedObjectValue", &Value::asObject>,
                 objc::Method<"rangeValue", &Value::asRange>,
                 objc::Method<"isEqual:", &Value::equals>,
                 objc::Method<"isEqualToValue:", &Value::equals>,
                 objc::Method<"hash", &Value::hashValue>, objc::Method<"copy", &Value::copy>)

OBJC_CLASS_NAMED(NSNull, NSObject, Null, NSObject, objc::ClassMethod<"null", &Null::shared>,
                 objc::Method<"copy", &Null::copy>, objc::Method<"description", &Null::describe>)

Value* Value::make(const void* bytes, const char* types, std::size_t size) {
  auto* made =
      static_cast<Value*>(objc_autorelease(class_createInstance(&objc_class_NSConcreteValue, 0)));
  made->bytes.assign(static_cast<const char*>(bytes), size);
  made->types = types;
  return made;
}

bool Value::equals(NSObject* other) {
  if (this == other) return true;
  if (other == nullptr || other->isa != isa) return false;
  const auto* value = static_cast<Value*>(other);
  return bytes == value->bytes && types == value->types;
}

Null* Null::shared() {
  static auto* null = [] {
    auto* made = static_cast<Null*>(class_createInstance(&objc_class_NSNull, 0));
    host::runtime::header(made)->references = -1;
    return made;
  }();
  return null;
}
