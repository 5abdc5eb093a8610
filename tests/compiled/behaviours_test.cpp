// Runs every behaviour of the compiled binaries, each in a hosted process of its own.
#include <gtest/gtest.h>

#include <string>

#include "objc/autorelease_pool.h"
#include "support/compiled_library.h"
#include "support/hosted.h"

namespace {

/// The same as in behaviour.h, which the compiled code includes.
struct Place {
  const char* file;
  int line;
  const char* expression;
};
struct Checks {
  void (*integers)(const Place*, const long long* actual, const long long* expected);
  void (*doubles)(const Place*, const double* actual, const double* expected);
  void (*texts)(const Place*, const char* actual, const char* expected);
};

int checked = 0;

template <class T>
void compare(const Place* place, const T& actual, const T& expected) {
  ++checked;
  if (actual == expected) return;
  ADD_FAILURE_AT(place->file, place->line)
      << place->expression << " is " << actual << ", not " << expected;
}

constexpr Checks kChecks = {
    [](const Place* place, const long long* actual, const long long* expected) {
      compare(place, *actual, *expected);
    },
    [](const Place* place, const double* actual, const double* expected) {
      compare(place, *actual, *expected);
    },
    [](const Place* place, const char* actual, const char* expected) {
      compare(place, std::string(actual), std::string(expected));
    },
};

class Compiled : public test::Hosted {
 protected:
  void run(const char* library, const char* behaviour) {
    start("com.example.compiled", host::ProcessKind::daemon);
    const std::string path = test::compiledLibrary(std::string("compiled/compiled_") + library);
    host::loadLibrary(path);
    auto* function =
        reinterpret_cast<void (*)(const Checks*)>(host::librarySymbol(path, behaviour));
    ASSERT_NE(function, nullptr);
    {
      const objc::AutoreleasePool pool;
      function(&kChecks);
    }
    EXPECT_GT(checked, 0) << "the behaviour checks nothing";
  }
};

#define LIBRARY(library) \
  class library : public Compiled {};
#define BEHAVIOUR(library, name) \
  TEST_F(library, name) { run(#library, #name); }
#include "behaviours.inc"

}  // namespace
