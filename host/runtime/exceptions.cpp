#include "exceptions.h"

#include <cxxabi.h>
#include <unwind.h>

#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

#include "Foundation/log.h"
#include "Foundation/text.h"
#include "internal.h"
#include "runtime.h"
#include "runtime/send.h"

OBJC_DECLARE_CLASS_SYMBOLS_(NSException, )

namespace host::runtime {

namespace {

/// What is thrown: the object, then what C++ handlers and the unwinder see of it.
struct Thrown {
  explicit Thrown(id thrown)
      : object(thrown), seen(nameOf(thrown), reasonOf(thrown), thrown), type("*id", thrown->isa) {}
  Thrown(const Thrown&) = delete;
  Thrown& operator=(const Thrown&) = delete;

  static bool isException(id object) {
    return object->isa != nullptr &&
           send<bool>(object, "isKindOfClass:"_sel, &objc_class_NSException);
  }
  static std::string nameOf(id object) {
    if (!isException(object)) return class_getName(object->isa);
    return std::string(host::text(send<NSString*>(object, "name"_sel)));
  }
  static std::string reasonOf(id object) {
    return std::string(host::text(isException(object)
                                      ? send<NSString*>(object, "reason"_sel)
                                      : send<NSString*>(object, "description"_sel)));
  }

  id object;  ///< kept by the next
  Exception seen;
  ExceptionType type;
};

/// What the process calls for each exception before it is thrown, and before it ends for one that
/// nobody catches. Guarded by the lock.
struct Handlers {
  id (*preprocess)(id) = nullptr;
  void (*uncaught)(id) = nullptr;
  int (*matches)(Class catching, id thrown) = nullptr;
};

Handlers& handlers() {
  static Handlers all;
  return all;
}

bool isA(id object, Class wanted) {
  for (Class cls = object->isa; cls != nullptr; cls = cls->superclass)
    if (cls == wanted) return true;
  return false;
}

/// The object that is being thrown, for a handler at the end of the process; nil for C++'s own.
id currentObject() {
  const std::type_info* type = abi::__cxa_current_exception_type();
  if (type == nullptr || dynamic_cast<const ExceptionType*>(type) == nullptr) return nullptr;
  try {
    throw;
  } catch (const Exception& exception) {
    return exception.object();
  } catch (...) {
    return nullptr;
  }
}

std::terminate_handler previous = nullptr;

[[noreturn]] void endUncaught() {
  if (id object = currentObject()) {
    host::log(host::LogLevel::error, "Terminating app due to uncaught exception '" +
                                         Thrown::nameOf(object) + "', reason: '" +
                                         Thrown::reasonOf(object) + "'");
    if (handlers().uncaught != nullptr) handlers().uncaught(object);
  }
  if (previous != nullptr) previous();
  std::abort();
}

}  // namespace

ExceptionType::~ExceptionType() = default;

bool ExceptionType::__is_pointer_p() const { return false; }

bool ExceptionType::__do_catch(const std::type_info* thrown, void** object, unsigned) const {
  id caught = nullptr;
  if (dynamic_cast<const ExceptionType*>(thrown) != nullptr) {
    caught = static_cast<Thrown*>(*object)->object;
  } else if (*thrown == typeid(Exception)) {
    // The stand-in's own, thrown by C++ code.
    caught = static_cast<Exception*>(*object)->object();
  } else {
    return false;
  }
  if (cls_ != nullptr) {
    auto* matches = handlers().matches;
    if (matches != nullptr ? matches(cls_, caught) == 0 : !isA(caught, cls_)) return false;
  }
  *object = caught;
  return true;
}

/// C++ handlers see an Exception.
bool ExceptionType::__do_upcast(const __cxxabiv1::__class_type_info* target, void** object) const {
  if (*target != typeid(Exception) && *target != typeid(std::runtime_error) &&
      *target != typeid(std::exception))
    return false;
  Exception* seen = &static_cast<Thrown*>(*object)->seen;
  if (*target == typeid(std::exception)) *object = static_cast<std::exception*>(seen);
  else *object = seen;
  return true;
}

}  // namespace host::runtime

using namespace host::runtime;

// The table of virtual functions to which compilers' descriptions of exceptions point.
asm(R"(
        .globl objc_ehtype_vtable
        .set objc_ehtype_vtable, _ZTVN4host7runtime13ExceptionTypeE
)");

extern "C" {

_Unwind_Reason_Code __gxx_personality_v0(int, _Unwind_Action, _Unwind_Exception_Class,
                                         _Unwind_Exception*, _Unwind_Context*);

HOST_EXPORT extern ExceptionType OBJC_EHTYPE_id;
HOST_EXPORT extern ExceptionType objc_exceptionTypeOfNSException asm("OBJC_EHTYPE_$_NSException");
ExceptionType OBJC_EHTYPE_id("*id", nullptr);
ExceptionType objc_exceptionTypeOfNSException("*NSException", &objc_class_NSException);

#if !defined(__arm__)
HOST_EXPORT _Unwind_Reason_Code __objc_personality_v0(int version, _Unwind_Action actions,
                                                      _Unwind_Exception_Class exceptionClass,
                                                      _Unwind_Exception* exception,
                                                      _Unwind_Context* context) {
  return __gxx_personality_v0(version, actions, exceptionClass, exception, context);
}
#endif

HOST_EXPORT [[noreturn]] void objc_exception_throw(id object) {
  if (auto* preprocess = handlers().preprocess) object = preprocess(object);
  // A nil object has no class to compare: nothing catches it.
  if (object == nullptr) std::terminate();
  void* memory = abi::__cxa_allocate_exception(sizeof(Thrown));
  auto* thrown = ::new (memory) Thrown(object);
  abi::__cxa_throw(memory, &thrown->type,
                   [](void* gone) { static_cast<Thrown*>(gone)->~Thrown(); });
}

HOST_EXPORT [[noreturn]] void objc_exception_rethrow() { abi::__cxa_rethrow(); }
HOST_EXPORT id objc_begin_catch(void* exception) {
  return static_cast<id>(abi::__cxa_begin_catch(exception));
}
HOST_EXPORT void objc_end_catch() { abi::__cxa_end_catch(); }
HOST_EXPORT [[noreturn]] void objc_terminate() { std::terminate(); }

using Preprocessor = id (*)(id);
using UncaughtHandler = void (*)(id);
using Matcher = int (*)(Class, id);

HOST_EXPORT Preprocessor objc_setExceptionPreprocessor(Preprocessor preprocessor) {
  return std::exchange(handlers().preprocess, preprocessor);
}
HOST_EXPORT UncaughtHandler objc_setUncaughtExceptionHandler(UncaughtHandler handler) {
  if (std::get_terminate() != &endUncaught) previous = std::set_terminate(&endUncaught);
  return std::exchange(handlers().uncaught, handler);
}
HOST_EXPORT Matcher objc_setExceptionMatcher(Matcher matcher) {
  return std::exchange(handlers().matches, matcher);
}
}
