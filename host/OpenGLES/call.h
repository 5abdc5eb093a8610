// A call of OpenGL ES: counted, bound to the thread's context, and made by the driver.
#pragma once

#include <EGL/egl.h>

#include <atomic>
#include <cstdint>

#include "OpenGLES/EAGLContext.h"
#include "objc/fixed_string.h"

namespace host::gl {

/// How often one function was called. All counters form a list, built before the first call.
struct Counter {
  explicit Counter(const char* function);

  const char* name;
  Counter* next;
  std::atomic<std::uint64_t> calls = 0;
};

template <objc::FixedString Name>
inline Counter counterOf{objc::kStored<Name>.text};

/// Calls the driver's function of that name, which must have parameters of exactly these types.
/// Without a current context it returns zero and has no effect.
template <objc::FixedString Name, class Result = void, class... Arguments>
Result uncounted(Arguments... arguments) {
  using Driver = Result (*)(Arguments...);
  const Bound bound;
  if (!bound) return Result();
  static const auto driver = reinterpret_cast<Driver>(eglGetProcAddress(Name.text));
  return driver != nullptr ? driver(arguments...) : Result();
}

template <objc::FixedString Name, class Result = void, class... Arguments>
Result call(Arguments... arguments) {
  counterOf<Name>.calls.fetch_add(1, std::memory_order_relaxed);
  return uncounted<Name, Result>(arguments...);
}

}  // namespace host::gl
