// The injection framework's function. There are two kinds of such frameworks, which save different
// things at different times.
#include <chrono>
#include <cstdlib>
#include <thread>

#include "Foundation/log.h"
#include "internal.h"
#include "objc/hook.h"
#include "runtime.h"

namespace host::runtime {

struct SuperStub {
  Class cls;
  SEL selector;
};

}  // namespace host::runtime

extern "C" {
[[gnu::visibility("hidden")]] host::runtime::SuperStub objc_superStubTable[512];
[[gnu::visibility("hidden")]] extern const char objc_superStubs[];
}

namespace host::runtime {

namespace {

constexpr std::pair<const char*, Hooking> kHookingNames[] = {
    {"dynamic", Hooking::dynamic}, {"snapshot", Hooking::snapshot}, {"late", Hooking::late}};

/// Long enough for another thread to run, on this processor or another.
constexpr std::chrono::microseconds kLiveUnsaved{200};

std::optional<Hooking>& chosenHooking() {
  static constinit std::optional<Hooking> chosen;
  return chosen;
}

/// A stub that looks up the superclass's implementation at each call; nil when none is left.
IMP superStub(Class cls, SEL selector) {
  constexpr int kStubs = 512;
  constexpr std::ptrdiff_t kStubBytes = 16;
  static int used = 0;
  if (used == kStubs) return nullptr;
  objc_superStubTable[used] = {cls->superclass, selector};
  return reinterpret_cast<IMP>(const_cast<char*>(objc_superStubs + kStubBytes * used++));
}

/// The implementation to save for the class's method. The lock is held.
IMP savedOf(const objc_method& method, Class cls, SEL selector, Hooking how) {
  const bool isInherited = method.owner != cls;
  if (isInherited && how == Hooking::dynamic) {
    if (IMP stub = superStub(cls, selector)) return stub;
  }
  return method.implementation.load();
}

}  // namespace

std::optional<Hooking> hookingNamed(std::string_view name) {
  for (const auto& [word, hooking] : kHookingNames)
    if (name == word) return hooking;
  return {};
}

Hooking hooking() {
  std::scoped_lock guard(lock());
  if (!chosenHooking()) {
    const char* word = std::getenv("VARNIX_HOOKING");
    chosenHooking() = word == nullptr ? Hooking::dynamic : hookingNamed(word);
    if (!chosenHooking())
      throw std::runtime_error(std::string("VARNIX_HOOKING: not a way of hooking: ") + word);
  }
  return *chosenHooking();
}

void setHooking(Hooking hooking) {
  std::scoped_lock guard(lock());
  chosenHooking() = hooking;
}

void hookMessage(Class cls, SEL selector, IMP replacement, IMP* slot,
                 const std::function<IMP(IMP)>& adapt) {
  if (cls == nullptr || selector == nullptr || replacement == nullptr) return;
  const Hooking how = hooking();
  IMP saved = nullptr;
  const auto save = [&] { __atomic_store_n(slot, saved, __ATOMIC_RELEASE); };
  {
    std::scoped_lock guard(lock());
    objc_method* method = findMethod(cls, selector);
    if (method == nullptr) {
      host::log(host::LogLevel::warning, std::string("MSHookMessageEx: no method ") +
                                             sel_getName(selector) + " in class " +
                                             class_getName(cls));
      return;
    }
    if (slot != nullptr) {
      saved = savedOf(*method, cls, selector, how);
      if (adapt) saved = adapt(saved);
      if (how != Hooking::late) save();
    }
    class_replaceMethod(cls, selector, replacement, method->types);
  }
  if (slot != nullptr && how == Hooking::late) {
    std::this_thread::sleep_for(kLiveUnsaved);
    save();
  }
  report(Change::Kind::hook, cls, selector, "");
}

}  // namespace host::runtime

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* saved) {
  host::runtime::hookMessage(cls, selector, replacement, saved, {});
}
