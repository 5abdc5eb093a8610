// The root class.
#include <cstdio>

#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/internal.h"
#include "runtime/runtime.h"

extern "C" bool class_conformsToProtocol(Class cls, objc_protocol* protocol);

namespace {

using host::runtime::header;

struct Root : NSObject {
  static id alloc(Class cls, SEL) {
    if (host::runtime::rw(cls->isa)->customAllocation)
      return send<id>(cls, "allocWithZone:"_sel, static_cast<void*>(nullptr));
    return class_createInstance(cls, 0);
  }
  static id allocWithZone(Class cls, SEL, void*) { return class_createInstance(cls, 0); }
  static void initialize(Class, SEL) {}
  static void load(Class, SEL) {}
  static bool resolve(Class, SEL, SEL) { return false; }
  static bool isSubclass(Class cls, SEL, Class wanted) {
    while (cls != nullptr && cls != wanted) cls = cls->superclass;
    return cls != nullptr;
  }
  static IMP instanceMethod(Class cls, SEL, SEL selector) {
    return class_getMethodImplementation(cls, selector);
  }
  static id instanceSignature(Class cls, SEL, SEL selector) {
    return signatureOf(class_getInstanceMethod(cls, selector));
  }
  static bool classConforms(Class cls, SEL, objc_protocol* protocol) {
    for (; cls != nullptr; cls = cls->superclass)
      if (class_conformsToProtocol(cls, protocol)) return true;
    return false;
  }
  static id signatureOf(objc_method* method) {
    if (method == nullptr) return nullptr;
    return send<id>(objc_getClass("NSMethodSignature"), "signatureWithObjCTypes:"_sel,
                    method_getTypeEncoding(method));
  }
  static Class copyClass(Class cls, SEL) { return cls; }
  static id makeNew(Class cls, SEL) { return send<id>(send<id>(cls, "alloc"_sel), "init"_sel); }
  static Class ofClass(Class cls, SEL) { return cls; }
  static Class above(Class cls, SEL) { return class_getSuperclass(cls); }
  static bool instancesRespond(Class cls, SEL, SEL selector) {
    return class_respondsToSelector(cls, selector);
  }
  static NSString* describeClass(Class cls, SEL) { return host::makeString(class_getName(cls)); }

  Root* init() { return this; }
  void dealloc() { object_dispose(this); }

  static bool isClass(Root* self) { return class_isMetaClass(self->isa); }
  Root* keep() {
    if (!isClass(this)) host::runtime::addReference(this);
    return this;
  }
  void let() {
    if (!isClass(this)) host::runtime::dropReference(this);
  }
  Root* autoreleased() {
    if (!isClass(this)) host::runtime::releaseWithPool(this);
    return this;
  }
  NSUInteger retainCount() {
    const auto count = isClass(this) ? -1 : header(this)->references.load();
    if (count == host::runtime::kDeallocating) return 1;
    return count < 0 ? ~NSUInteger{0} : static_cast<NSUInteger>(count);
  }

  Root* self() { return this; }
  id copy() { return send<id>(this, "copyWithZone:"_sel, static_cast<void*>(nullptr)); }
  id mutableCopy() {
    return send<id>(this, "mutableCopyWithZone:"_sel, static_cast<void*>(nullptr));
  }
  bool conforms(objc_protocol* protocol) { return classConforms(isa, nullptr, protocol); }
  IMP method(SEL selector) { return class_getMethodImplementation(isa, selector); }
  id signature(SEL selector) { return signatureOf(class_getInstanceMethod(isa, selector)); }
  id forwardingTarget(SEL) { return nullptr; }
  void forwardInvocation(id invocation) {
    send<void>(this, "doesNotRecognizeSelector:"_sel, send<SEL>(invocation, "selector"_sel));
  }
  [[noreturn]] void doesNotRecognize(SEL selector) {
    host::runtime::raiseUnrecognizedSelector(this, selector);
  }
  bool allowsWeak() { return isClass(this) || !host::runtime::isBeingFreed(this); }
  bool retainWeak() { return isClass(this) || host::runtime::retainFromWeak(this); }
  bool isProxy() { return false; }

  Class ownClass() { return isa; }
  Class superclass() { return isa->superclass; }
  bool isKindOf(Class wanted) {
    for (Class cls = isa; cls != nullptr; cls = cls->superclass) {
      if (cls == wanted) return true;
    }
    return false;
  }
  bool isMemberOf(Class wanted) { return isa == wanted; }
  bool isSame(NSObject* other) { return this == other; }
  NSUInteger address() { return reinterpret_cast<NSUInteger>(this); }
  NSString* describe() {
    char text[256];
    std::snprintf(text, sizeof text, "<%s: %p>", class_getName(isa), static_cast<void*>(this));
    return host::makeString(text);
  }
  bool responds(SEL selector) { return class_respondsToSelector(isa, selector); }
  id perform(SEL selector) { return objc::sendDynamic<id>(this, selector); }
  id performWith(SEL selector, id argument) {
    return objc::sendDynamic<id>(this, selector, argument);
  }
  id performWithTwo(SEL selector, id first, id second) {
    return objc::sendDynamic<id>(this, selector, first, second);
  }
  void performOnMain(SEL selector, id argument, bool) {
    objc_retain(this);
    objc_retain(argument);
    host::MainRunLoop::instance().perform([this, selector, argument] {
      objc::sendDynamic<void>(this, selector, argument);
      objc_release(argument);
      objc_release(this);
    });
  }
};

}  // namespace

OBJC_ROOT_CLASS(
    NSObject, Root, objc::Ivar<"isa", &NSObject::isa>, objc::ClassMethod<"alloc", &Root::alloc>,

    objc::ClassMethod<"allocWithZone:", &Root::allocWithZone>,
    objc::ClassMethod<"initialize", &Root::initialize>, objc::ClassMethod<"load", &Root::load>,
    objc::ClassMethod<"resolveInstanceMethod:", &Root::resolve>,
    objc::ClassMethod<"resolveClassMethod:", &Root::resolve>,
    objc::ClassMethod<"isSubclassOfClass:", &Root::isSubclass>,
    objc::ClassMethod<"instanceMethodForSelector:", &Root::instanceMethod>,
    objc::ClassMethod<"instanceMethodSignatureForSelector:", &Root::instanceSignature>,
    objc::ClassMethod<"conformsToProtocol:", &Root::classConforms, "c@:@">,
    objc::ClassMethod<"copy", &Root::copyClass>, objc::ClassMethod<"mutableCopy", &Root::copyClass>,
    objc::Method<"self", &Root::self>, objc::Method<"copy", &Root::copy>,
    objc::Method<"mutableCopy", &Root::mutableCopy>,
    objc::Method<"conformsToProtocol:", &Root::conforms, "c@:@">,
    objc::Method<"methodForSelector:", &Root::method>,
    objc::Method<"methodSignatureForSelector:", &Root::signature>,
    objc::Method<"forwardingTargetForSelector:", &Root::forwardingTarget>,
    objc::Method<"forwardInvocation:", &Root::forwardInvocation>,
    objc::Method<"doesNotRecognizeSelector:", &Root::doesNotRecognize>,
    objc::Method<"allowsWeakReference", &Root::allowsWeak>,
    objc::Method<"retainWeakReference", &Root::retainWeak>, objc::Method<"isProxy", &Root::isProxy>,
    objc::ClassMethod<"new", &Root::makeNew>, objc::ClassMethod<"class", &Root::ofClass>,
    objc::ClassMethod<"superclass", &Root::above>,
    objc::ClassMethod<"instancesRespondToSelector:", &Root::instancesRespond>,
    objc::ClassMethod<"description", &Root::describeClass>, objc::Method<"init", &Root::init>,
    objc::Method<"dealloc", &Root::dealloc>, objc::Method<"retain", &Root::keep>,
    objc::Method<"release", &Root::let>, objc::Method<"autorelease", &Root::autoreleased>,
    objc::Method<"retainCount", &Root::retainCount>, objc::Method<"class", &Root::ownClass>,
    objc::Method<"superclass", &Root::superclass>, objc::Method<"isKindOfClass:", &Root::isKindOf>,
    objc::Method<"isMemberOfClass:", &Root::isMemberOf>, objc::Method<"isEqual:", &Root::isSame>,
    objc::Method<"hash", &Root::address>, objc::Method<"description", &Root::describe>,
    objc::Method<"respondsToSelector:", &Root::responds>,
    objc::Method<"performSelector:", &Root::perform>,
    objc::Method<"performSelector:withObject:", &Root::performWith>,
    objc::Method<"performSelector:withObject:withObject:", &Root::performWithTwo>,
    objc::Method<"performSelectorOnMainThread:withObject:waitUntilDone:", &Root::performOnMain>)

namespace host::runtime {

void raiseUnrecognizedSelector(const void* receiver, SEL selector) {
  Class cls = isaOf(receiver);
  const bool onClass = class_isMetaClass(cls);
  throw Exception("NSInvalidArgumentException",
                  std::string(onClass ? "+[" : "-[") + class_getName(cls) + " " +
                      sel_getName(selector) + "]: unrecognized selector");
}

}  // namespace host::runtime
