// Adding and replacing methods, and the injection framework's call on top of them.
#include <cstring>

#include "Foundation/log.h"
#include "internal.h"
#include "objc/hook.h"
#include "runtime.h"

namespace host::runtime {

namespace {

std::function<void(const Change&)>& observer() {
  static auto* function = new std::function<void(const Change&)>;
  return *function;
}

void report(Change::Kind kind, Class cls, SEL selector, const char* types) {
  std::function<void(const Change&)> call;
  {
    std::scoped_lock guard(lock());
    call = observer();
  }
  if (call) call({kind, class_getName(cls), sel_getName(selector), class_isMetaClass(cls), types});
}

/// The class's own method, or nil.
objc_method* ownMethod(Class cls, SEL selector) {
  auto& methods = rw(cls)->methods;
  auto found = methods.find(selector);
  return found == methods.end() ? nullptr : found->second;
}

const char* keep(const char* types) { return types == nullptr ? "" : strdup(types); }

}  // namespace

void observeChanges(std::function<void(const Change&)> function) {
  std::scoped_lock guard(lock());
  observer() = std::move(function);
}

struct SuperStub {
  Class cls;
  SEL selector;
};

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

[[gnu::visibility("hidden")]] SuperStub objc_superStubTable[512];
[[gnu::visibility("hidden")]] extern const char objc_superStubs[];

bool class_addMethod(Class cls, SEL selector, IMP implementation, const char* types) {
  if (cls == nullptr || selector == nullptr || implementation == nullptr) return false;
  {
    std::scoped_lock guard(lock());
    if (ownMethod(cls, selector) != nullptr) return false;
    insertMethod(cls, selector, keep(types), implementation);
    flushCaches(cls);
  }
  report(Change::Kind::add, cls, selector, types == nullptr ? "" : types);
  return true;
}

IMP class_replaceMethod(Class cls, SEL selector, IMP implementation, const char* types) {
  if (cls == nullptr || selector == nullptr || implementation == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  IMP old = nullptr;
  if (objc_method* own = ownMethod(cls, selector)) {
    old = own->implementation.exchange(implementation);
  } else {
    insertMethod(cls, selector, keep(types), implementation);
  }
  flushCaches(cls);
  return old;
}

/// An inherited method is saved as a stub that finds the superclass's implementation anew at every
/// call, so that a later replacement there is seen. `*saved` is written before the replacement is
/// live.
void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* saved) {
  static int stubsUsed = 0;
  constexpr int kStubs = 512;
  constexpr int kStubBytes = 16;
  if (cls == nullptr || selector == nullptr || replacement == nullptr) return;
  {
    std::scoped_lock guard(lock());
    objc_method* method = findMethod(cls, selector);
    if (method == nullptr) {
      host::log(host::LogLevel::warning, std::string("MSHookMessageEx: no method ") +
                                             sel_getName(selector) + " in class " +
                                             class_getName(cls));
      return;
    }
    const bool own = method->owner == cls;
    if (saved != nullptr) {
      if (own) {
        __atomic_store_n(saved, method->implementation.load(), __ATOMIC_RELEASE);
      } else if (stubsUsed < kStubs) {
        objc_superStubTable[stubsUsed] = {cls->superclass, selector};
        const char* stub = objc_superStubs + static_cast<std::ptrdiff_t>(stubsUsed) * kStubBytes;
        ++stubsUsed;
        __atomic_store_n(saved, reinterpret_cast<IMP>(const_cast<char*>(stub)), __ATOMIC_RELEASE);
      } else {
        // No stub is left: a snapshot, which misses later replacements in the superclass.
        __atomic_store_n(saved, method->implementation.load(), __ATOMIC_RELEASE);
      }
    }
    class_replaceMethod(cls, selector, replacement, method->types);
  }
  report(Change::Kind::hook, cls, selector, "");
}
}
