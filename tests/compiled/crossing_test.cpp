// Exceptions between compiled code and C++ frames, and what two binaries share.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "objc/autorelease_pool.h"
#include "support/compiled_library.h"
#include "support/hosted.h"

namespace {

using host::runtime::Exception;

class Crossing : public test::Hosted {
 protected:
  void SetUp() override { start("com.example.compiled", host::ProcessKind::daemon); }

  static std::string library(const std::string& name) {
    return test::compiledLibrary("compiled/compiled_" + name);
  }
  template <class F>
  static F* function(const char* name, const std::string& from = "arc_crossing") {
    host::loadLibrary(library(from));
    return reinterpret_cast<F*>(host::librarySymbol(library(from), name));
  }

  const objc::AutoreleasePool pool;
};

TEST_F(Crossing, CppCodeCatchesWhatCompiledCodeThrows) {
  auto* throwReport = function<void()>("throwReport");
  try {
    throwReport();
    FAIL() << "nothing was thrown";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), "Report");
    EXPECT_EQ(exception.reason(), "from compiled code!");
    EXPECT_STREQ(class_getName(exception.object()->isa), "Report");
  }
}

TEST_F(Crossing, CppCodeCatchesAsStandardException) {
  auto* throwReport = function<void()>("throwReport");
  EXPECT_THROW(throwReport(), std::runtime_error);
  EXPECT_THROW(throwReport(), std::exception);
  EXPECT_ANY_THROW(throwReport());
}

TEST_F(Crossing, CppCodeCatchesPlainObjects) {
  auto* throwWords = function<void()>("throwPlainObject");
  try {
    throwWords();
    FAIL() << "nothing was thrown";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.reason(), "just words");
  }
}

TEST_F(Crossing, AnUnrelatedCppHandlerDoesNotCatch) {
  auto* throwReport = function<void()>("throwReport");
  const auto nested = [&] {
    try {
      throwReport();
    } catch (const std::logic_error&) {
      ADD_FAILURE() << "caught as a logic error";
    } catch (int) {
      ADD_FAILURE() << "caught as a number";
    }
  };
  EXPECT_THROW(nested(), Exception);
}

TEST_F(Crossing, CompiledCodeCatchesThePlatformsExceptions) {
  auto* caughtFrom = function<const char*(void (*)())>("caughtFrom");
  EXPECT_STREQ(caughtFrom([] { throw Exception("Platform", "reason"); }), "Platform");
  EXPECT_STREQ(caughtFrom([] {}), "nothing");
}

TEST_F(Crossing, CompiledCodeCatchesOtherCppExceptionsOnlyWithDots) {
  auto* caughtFrom = function<const char*(void (*)())>("caughtFrom");
  EXPECT_STREQ(caughtFrom([] { throw std::logic_error("foreign"); }), "something");
  EXPECT_STREQ(caughtFrom([] { throw 5; }), "something");
}

TEST_F(Crossing, FinallyRunsForCppExceptions) {
  auto* throughFinally = function<void(void (*)(), int*)>("throughFinally");
  int ran = 0;
  EXPECT_THROW(throughFinally([] { throw std::logic_error("foreign"); }, &ran), std::logic_error);
  EXPECT_EQ(ran, 1);
}

TEST_F(Crossing, CppFramesAreCleanedUpOnTheWay) {
  static int cleaned = 0;
  static auto* throwReport = function<void()>("throwReport");
  struct Guard {
    ~Guard() { ++cleaned; }
  };
  auto* caughtFrom = function<const char*(void (*)())>("caughtFrom");
  EXPECT_STREQ(caughtFrom([] {
                 const Guard guard;
                 throwReport();
               }),
               "Report");
  EXPECT_EQ(cleaned, 1);
}

TEST_F(Crossing, TheSameExceptionPassesThroughBoth) {
  static auto* throwReport = function<void()>("throwReport");
  auto* throughFinally = function<void(void (*)(), int*)>("throughFinally");
  int ran = 0;
  try {
    throughFinally(
        [] {
          try {
            throwReport();
          } catch (const Exception&) {
            throw;
          }
        },
        &ran);
    FAIL() << "nothing was thrown";
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), "Report");
  }
  EXPECT_EQ(ran, 1);
}

TEST_F(Crossing, TwoBinariesShareAProtocol) {
  auto* one = function<void*()>("sharedProtocol");
  auto* other = function<void*()>("sharedProtocol", "arc_plain_crossing");
  ASSERT_NE(one, other);
  EXPECT_EQ(one(), other());
  EXPECT_NE(one(), nullptr);
}

TEST_F(Crossing, AnUncaughtExceptionIsToldAndHandled) {
  static auto* throwReport = function<void()>("throwReport");
  auto* setHandler = reinterpret_cast<void* (*)(void (*)(id))>(host::librarySymbol(
      host::ownFolder() / "libvarnix-host.so", "objc_setUncaughtExceptionHandler"));
  ASSERT_NE(setHandler, nullptr);
  EXPECT_DEATH(
      {
        setHandler([](id exception) {
          std::fprintf(stderr, "handler got %s\n", class_getName(exception->isa));
        });
        [&]() noexcept { throwReport(); }();
      },
      "handler got Report");
}

}  // namespace
