// Exceptions as objects.
#include <cstdarg>

#include "Foundation/format.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/runtime.h"

extern "C" [[noreturn]] void objc_exception_throw(id object);

namespace {

struct ExceptionObject : NSObject {
  static ExceptionObject* make(Class cls, NSString* name, NSString* reason, NSDictionary* info) {
    auto* made = static_cast<ExceptionObject*>(
        objc_autorelease(send<id>(send<id>(cls, "alloc"_sel), "init"_sel)));
    return made->fill(name, reason, info);
  }
  static ExceptionObject* with(Class cls, SEL, NSString* name, NSString* reason,
                               NSDictionary* info) {
    return make(cls, name, reason, info);
  }
  [[noreturn]] static void raiseFormat(Class cls, SEL, NSString* name, NSString* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string reason = host::format(host::text(format), arguments);
    va_end(arguments);
    objc_exception_throw(make(cls, name, host::makeString(reason), nullptr));
  }

  ExceptionObject* fill(NSString* newName, NSString* newReason, NSDictionary* info) {
    name = Strong<NSString>::retain(newName);
    reason = Strong<NSString>::retain(newReason);
    userInfo = Strong<NSDictionary>::retain(info);
    return this;
  }
  ExceptionObject* initWith(NSString* newName, NSString* newReason, NSDictionary* info) {
    return fill(newName, newReason, info);
  }
  NSString* itsName() { return name; }
  NSString* itsReason() { return reason; }
  NSDictionary* itsInfo() { return userInfo; }
  NSString* describe() { return reason.get() != nullptr ? reason.get() : name.get(); }
  void raise() { objc_exception_throw(this); }
  ExceptionObject* copy() { return static_cast<ExceptionObject*>(objc_retain(this)); }
  bool equals(NSObject* other) {
    if (this == other) return true;
    if (other == nullptr || other->isa != isa) return false;
    auto* exception = static_cast<ExceptionObject*>(other);
    const auto same = [](NSObject* one, NSObject* two) {
      return one == two || (one != nullptr && send(one, NSObject::isEqual, two));
    };
    return same(name, exception->name) && same(reason, exception->reason) &&
           same(userInfo, exception->userInfo);
  }
  NSUInteger hashValue() { return host::hashOf(name); }

  Strong<NSString> name;
  Strong<NSString> reason;
  Strong<NSDictionary> userInfo;
};

}  // namespace

OBJC_CLASS_NAMED(NSException, NSObject, ExceptionObject, NSObject,
                 objc::Ivar<"name", &ExceptionObject::name>,
                 objc::Ivar<"reason", &ExceptionObject::reason>,
                 objc::Ivar<"userInfo", &ExceptionObject::userInfo>,
                 objc::ClassMethod<"exceptionWithName:reason:userInfo:", &ExceptionObject::with>,
                 objc::ClassMethod<"raise:format:", &ExceptionObject::raiseFormat>,
                 objc::Method<"initWithName:reason:userInfo:", &ExceptionObject::initWith>,
                 objc::Method<"name", &ExceptionObject::itsName>,
                 objc::Method<"reason", &ExceptionObject::itsReason>,
                 objc::Method<"userInfo", &ExceptionObject::itsInfo>,
                 objc::Method<"description", &ExceptionObject::describe>,
                 objc::Method<"raise", &ExceptionObject::raise>,
                 objc::Method<"copy", &ExceptionObject::copy>,
                 objc::Method<"isEqual:", &ExceptionObject::equals>,
                 objc::Method<"hash", &ExceptionObject::hashValue>)

namespace host::runtime {

namespace {

std::shared_ptr<NSObject> shared(NSObject* object) {
  return {objc_retain(object), [](NSObject* kept) { objc_release(kept); }};
}

}  // namespace

Exception::Exception(std::string name, const std::string& reason, NSObject* object)
    : Exception(std::move(name), reason) {
  object_ = shared(object);
}

NSObject* Exception::object() const {
  if (object_ == nullptr) {
    object_ = shared(ExceptionObject::make(&objc_class_NSException, host::makeString(name_),
                                           host::makeString(reason_), nullptr));
  }
  return object_.get();
}

}  // namespace host::runtime
