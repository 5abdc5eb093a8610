// Adds and replaces methods, and notifies the observer.
#include <cstring>

#include "internal.h"
#include "runtime.h"

namespace host::runtime {

namespace {

std::function<void(const Change&)>& observer() {
  static auto* function = new std::function<void(const Change&)>;
  return *function;
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

void report(Change::Kind kind, Class cls, SEL selector, const char* types) {
  std::function<void(const Change&)> call;
  {
    std::scoped_lock guard(lock());
    call = observer();
  }
  if (call) call({kind, class_getName(cls), sel_getName(selector), class_isMetaClass(cls), types});
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

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
}
