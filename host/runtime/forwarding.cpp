// Messages without a method: another receiver takes them, or they become an NSInvocation.
#include <map>

#include "foreign_call.h"
#include "internal.h"
#include "objc/object.h"
#include "runtime/send.h"

extern "C" [[gnu::visibility("default")]] void _objc_msgForward();

namespace host {

/// Foundation's half: an invocation of that shape around the arguments of a call, sent to its
/// receiver with forwardInvocation:. Writes the result where libffi expects it.
void forwardCall(runtime::CallShape& shape, NSObject* signature, void** arguments, void* result);
/// The shape of a method signature.
runtime::CallShape& shapeOfSignature(NSObject* signature);

}  // namespace host

namespace host::runtime {

namespace {

/// An implementation for all messages of one shape.
struct Closure {
  CallShape* shape = nullptr;
  NSObject* signature = nullptr;
  ffi_closure* closure = nullptr;
  void* code = nullptr;
};

void handle(ffi_cif*, void* result, void** arguments, void* data) {
  auto* closure = static_cast<Closure*>(data);
  forwardCall(*closure->shape, closure->signature, arguments, result);
}

/// Made once, and never freed: a messenger may be about to jump there.
IMP implementationFor(NSObject* signature) {
  static auto* closures = new std::map<CallShape*, Closure>;
  CallShape& shape = shapeOfSignature(signature);
  std::scoped_lock guard(lock());
  Closure& closure = (*closures)[&shape];
  if (closure.code == nullptr) {
    closure.shape = &shape;
    closure.signature = objc_retain(signature);
    closure.closure =
        static_cast<ffi_closure*>(ffi_closure_alloc(sizeof(ffi_closure), &closure.code));
    if (closure.closure == nullptr || ffi_prep_closure_loc(closure.closure, &shape.cif(), &handle,
                                                           &closure, closure.code) != FFI_OK)
      throw std::bad_alloc();
  }
  return reinterpret_cast<IMP>(closure.code);
}

}  // namespace

Handler forwardingHandler(const void* receiver, SEL selector) {
  Class cls = isaOf(receiver);
  auto* object = static_cast<id>(const_cast<void*>(receiver));
  static SEL targetFor = sel_registerName("forwardingTargetForSelector:");
  if (IMP find = overridden(cls, targetFor)) {
    id target = reinterpret_cast<id (*)(id, SEL, SEL)>(find)(object, targetFor, selector);
    if (target != nullptr && target != object) return handlerOf(target, nullptr, selector);
  }
  static SEL signatureFor = sel_registerName("methodSignatureForSelector:");
  if (IMP find = overridden(cls, signatureFor)) {
    id signature = reinterpret_cast<id (*)(id, SEL, SEL)>(find)(object, signatureFor, selector);
    if (signature != nullptr) return {implementationFor(signature), receiver};
  }
  static SEL unknown = sel_registerName("doesNotRecognizeSelector:");
  if (IMP raise = overridden(cls, unknown))
    reinterpret_cast<void (*)(id, SEL, SEL)>(raise)(object, unknown, selector);
  raiseUnrecognizedSelector(receiver, selector);
}

}  // namespace host::runtime
