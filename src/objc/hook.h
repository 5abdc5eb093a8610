// Replaced methods: each replacement has a slot of its own for what it replaced.
#pragma once

#include "objc/object.h"

/// The injection framework's call. It leaves *saved alone where the class has no such method.
extern "C" [[gnu::visibility("default")]] void MSHookMessageEx(Class cls, SEL selector,
                                                               IMP replacement, IMP* saved);

namespace objc {

/// The slot of one replaced method, typed: Hook<void(UISwitch*, UIColor*)> for a method of
/// UISwitch with one colour as its argument. A class method's receiver is a Class.
template <class Signature>
class Hook;

template <class R, class Self, class... A>
class Hook<R(Self, A...)> {
 public:
  using Implementation = R (*)(Self, SEL, A...);

  constexpr Hook() = default;
  Hook(const Hook&) = delete;
  Hook& operator=(const Hook&) = delete;

  /// Calls the implementation that was replaced.
  R original(Self self, SEL command, A... arguments) {
    auto saved = reinterpret_cast<Implementation>(__atomic_load_n(&saved_, __ATOMIC_RELAXED));
    return saved(self, command, arguments...);
  }

  /// Puts the replacement in. The slot holds the present implementation before that: a framework
  /// that saves it only after the replacement is live would else leave a moment without one.
  void install(Class cls, SEL selector, Implementation replacement) {
    if (objc_method* present = class_getInstanceMethod(cls, selector)) {
      saved_ = method_getImplementation(present);
    }
    MSHookMessageEx(cls, selector, reinterpret_cast<IMP>(replacement), &saved_);
  }

 private:
  IMP saved_ = nullptr;
};

/// What a row does: replace a method of the class's instances or of the class itself, or add one to
/// its instances.
enum class MethodKind { instance, classMethod, addition };

/// A row of an installation table.
struct Replacement {
  const char* className;
  const char* selector;
  MethodKind kind;
  void (*install)(Class cls, SEL selector);
};

/// The row's install function: a slot and the function that goes in.
template <auto& Slot, auto Function>
void installHook(Class cls, SEL selector) {
  Slot.install(cls, selector, Function);
}

/// Adds a method of ours to a class of the platform. An existing one of the class itself stays;
/// on a nil class nothing happens. Function takes receiver, selector and arguments.
template <class R, class... A>
void addMethod(Class cls, SEL selector, R (*function)(A...), const char* types) {
  class_addMethod(cls, selector, reinterpret_cast<IMP>(function), types);
}

/// The install function of an addition's row.
template <auto Function, FixedString Types>
void addRow(Class cls, SEL selector) {
  addMethod(cls, selector, Function, kStored<Types>.text);
}

}  // namespace objc
