// How often the functions of OpenGL ES were called.
#include <stdexcept>
#include <string>
#include <utility>

#include "OpenGLES/call.h"
#include "OpenGLES/gl.h"

namespace host::gl {

namespace {

constinit Counter* first = nullptr;

}  // namespace

/// Needs no lock: the loader makes counters one after another.
Counter::Counter(const char* function) : name(function), next(std::exchange(first, this)) {}

std::uint64_t callCount(std::string_view function) {
  for (const Counter* counter = first; counter != nullptr; counter = counter->next) {
    if (function == counter->name) return counter->calls;
  }
  throw std::invalid_argument("no such function: " + std::string(function));
}

std::uint64_t callCount() {
  std::uint64_t sum = 0;
  for (const Counter* counter = first; counter != nullptr; counter = counter->next)
    sum += counter->calls;
  return sum;
}

}  // namespace host::gl
