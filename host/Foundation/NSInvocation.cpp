// Method signatures, and messages as objects.
#include <cstring>
#include <memory>
#include <vector>

#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/foreign_call.h"
#include "runtime/internal.h"
#include "runtime/runtime.h"
#include "runtime/type_encoding.h"

namespace {

using host::runtime::CallShape;
using host::runtime::Exception;

struct Signature : NSObject {
  static Signature* withTypes(Class cls, SEL, const char* types) {
    if (types == nullptr)
      throw Exception("NSInvalidArgumentException", "a method signature without types");
    auto* made = static_cast<Signature*>(objc_autorelease(class_createInstance(cls, 0)));
    made->shape = &host::runtime::shapeOf(types);
    return made;
  }
  NSUInteger argumentCount() { return shape->argumentCount(); }
  const char* typeAt(NSUInteger index) {
    if (index >= shape->argumentCount()) throw Exception("NSInvalidArgumentException", "index");
    return shape->types()[index + 1].c_str();
  }
  const char* returnType() { return shape->types()[0].c_str(); }
  NSUInteger returnLength() { return shape->resultSize(); }
  NSUInteger frameLength() {
    NSUInteger length = 0;
    for (std::size_t i = 0; i < shape->argumentCount(); ++i)
      length += (shape->argumentSize(i) + 7) / 8 * 8;
    return length;
  }
  bool isOneway() { return shape->types()[0].starts_with('V'); }

  CallShape* shape;
};

/// The values of one message. Each argument has room of its own, aligned for anything.
struct Values {
  explicit Values(const CallShape& shape) : result(roomFor(shape.resultSize())) {
    for (std::size_t i = 0; i < shape.argumentCount(); ++i)
      arguments.push_back(roomFor(shape.argumentSize(i)));
  }
  static std::unique_ptr<std::max_align_t[]> roomFor(std::size_t size) {
    const std::size_t units = size / sizeof(std::max_align_t) + 1;
    return std::make_unique<std::max_align_t[]>(units);
  }

  std::unique_ptr<std::max_align_t[]> result;
  std::vector<std::unique_ptr<std::max_align_t[]>> arguments;
  std::vector<Strong<NSObject>> kept;
};

struct Invocation : NSObject {
  static Invocation* withSignature(Class cls, SEL, Signature* signature) {
    if (signature == nullptr)
      throw Exception("NSInvalidArgumentException", "an invocation without a signature");
    auto* made = static_cast<Invocation*>(objc_autorelease(class_createInstance(cls, 0)));
    made->signature = Strong<Signature>::retain(signature);
    made->values = std::make_unique<Values>(*signature->shape);
    return made;
  }

  CallShape& shape() { return *signature->shape; }
  void* place(NSInteger index) {
    if (index == -1) return values->result.get();
    if (index < 0 || static_cast<std::size_t>(index) >= shape().argumentCount())
      throw Exception("NSInvalidArgumentException",
                      "index (" + std::to_string(index) + ") out of bounds");
    return values->arguments[static_cast<std::size_t>(index)].get();
  }
  std::size_t size(NSInteger index) {
    return index == -1 ? shape().resultSize()
                       : shape().argumentSize(static_cast<std::size_t>(index));
  }

  Signature* itsSignature() { return signature; }
  id target() { return *static_cast<id*>(place(0)); }
  void setTarget(id target) { *static_cast<id*>(place(0)) = target; }
  SEL selector() { return *static_cast<SEL*>(place(1)); }
  void setSelector(SEL selector) { *static_cast<SEL*>(place(1)) = selector; }
  void getArgument(void* value, NSInteger index) {
    const void* from = place(index);
    std::memcpy(value, from, size(index));
  }
  void setArgument(const void* value, NSInteger index) {
    void* to = place(index);
    std::memcpy(to, value, size(index));
  }
  void getReturn(void* value) { getArgument(value, -1); }
  void setReturn(const void* value) { setArgument(value, -1); }

  void retainArguments() {
    if (retained) return;
    retained = true;
    for (std::size_t i = 0; i < shape().argumentCount(); ++i) {
      const auto type = host::runtime::withoutQualifiers(shape().types()[i + 1]);
      if (type.starts_with("@?")) {
        auto** block = reinterpret_cast<void**>(values->arguments[i].get());
        *block = _Block_copy(*block);
        values->kept.push_back(Strong<NSObject>::adopt(static_cast<NSObject*>(*block)));
      } else if (type.starts_with('@')) {
        values->kept.push_back(
            Strong<NSObject>::retain(*reinterpret_cast<id*>(values->arguments[i].get())));
      } else if (type.starts_with('*')) {
        auto** text = reinterpret_cast<const char**>(values->arguments[i].get());
        if (*text == nullptr) continue;
        NSString* kept = host::makeString(*text);
        if (kept == nullptr) continue;
        values->kept.push_back(Strong<NSObject>::retain(kept));
        *text = send<const char*>(kept, "UTF8String"_sel);
      }
    }
  }
  bool areRetained() { return retained; }

  void invoke() { invokeOn(target()); }
  void invokeOn(id target) {
    setTarget(target);
    if (target == nullptr) {
      std::memset(values->result.get(), 0, shape().resultSize());
      return;
    }
    const host::runtime::Handler handler = host::runtime::handlerOf(target, nullptr, selector());
    setTarget(static_cast<id>(const_cast<void*>(handler.receiver)));
    std::vector<void*> arguments;
    for (auto& argument : values->arguments) arguments.push_back(argument.get());
    std::vector<std::max_align_t> wide(shape().resultSize() / sizeof(std::max_align_t) + 1);
    ffi_call(&shape().cif(), handler.implementation, wide.data(), arguments.data());
    shape().fromRegister(wide.data(), values->result.get());
    setTarget(target);
  }

  Strong<Signature> signature;
  std::unique_ptr<Values> values;
  bool retained;
};

}  // namespace

OBJC_CLASS_NAMED(NSMethodSignature, NSObject, Signature, NSObject,
                 objc::Ivar<"shape", &Signature::shape>,
                 objc::ClassMethod<"signatureWithObjCTypes:", &Signature::withTypes>,
                 objc::Method<"numberOfArguments", &Signature::argumentCount>,
                 objc::Method<"getArgumentTypeAtIndex:", &Signature::typeAt>,
                 objc::Method<"methodReturnType", &Signature::returnType>,
                 objc::Method<"methodReturnLength", &Signature::returnLength>,
                 objc::Method<"frameLength", &Signature::frameLength>,
                 objc::Method<"isOneway", &Signature::isOneway>)

OBJC_CLASS_NAMED(NSInvocation, NSObject, Invocation, NSObject,
                 objc::Ivar<"signature", &Invocation::signature>,
                 objc::Ivar<"values", &Invocation::values>,
                 objc::Ivar<"retained", &Invocation::retained>,
                 objc::ClassMethod<"invocationWithMethodSignature:", &Invocation::withSignature>,
                 objc::Method<"methodSignature", &Invocation::itsSignature>,
                 objc::Method<"target", &Invocation::target>,
                 objc::Method<"setTarget:", &Invocation::setTarget>,
                 objc::Method<"selector", &Invocation::selector>,
                 objc::Method<"setSelector:", &Invocation::setSelector>,
                 objc::Method<"getArgument:atIndex:", &Invocation::getArgument>,
                 objc::Method<"setArgument:atIndex:", &Invocation::setArgument>,
                 objc::Method<"getReturnValue:", &Invocation::getReturn>,
                 objc::Method<"setReturnValue:", &Invocation::setReturn>,
                 objc::Method<"retainArguments", &Invocation::retainArguments>,
                 objc::Method<"argumentsRetained", &Invocation::areRetained>,
                 objc::Method<"invoke", &Invocation::invoke>,
                 objc::Method<"invokeWithTarget:", &Invocation::invokeOn>)

namespace host {

CallShape& shapeOfSignature(NSObject* signature) {
  return *static_cast<Signature*>(signature)->shape;
}

void forwardCall(CallShape& shape, NSObject* signature, void** arguments, void* result) {
  auto* invocation = Invocation::withSignature(&objc_class_NSInvocation, nullptr,
                                               static_cast<Signature*>(signature));
  for (std::size_t i = 0; i < shape.argumentCount(); ++i)
    invocation->setArgument(arguments[i], static_cast<NSInteger>(i));
  send<void>(invocation->target(), "forwardInvocation:"_sel, invocation);
  if (shape.resultSize() != 0) shape.toRegister(invocation->place(-1), result);
}

}  // namespace host
