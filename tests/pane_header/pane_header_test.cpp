// The header for panes, compiled in the languages in which panes are written.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

/// Warnings are errors.
bool compiles(const std::string& compiler, const std::string& options, const std::string& source) {
  const std::string command = compiler +
                              " -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I " VARNIX_INCLUDE
                              " -I " VARNIX_PANE_HEADER " " +
                              options + " " VARNIX_PANE_HEADER "/" + source;
  return std::system(command.c_str()) == 0;
}

TEST(PaneHeader, IsC) {
  for (const char* standard : {"c99", "c11", "c17"}) {
    EXPECT_TRUE(compiles(VARNIX_COMPILER, "-x c -std=" + std::string(standard), "pane.c"))
        << standard;
  }
}

TEST(PaneHeader, IsCxx) {
  for (const char* standard : {"c++11", "c++17", "c++20"}) {
    EXPECT_TRUE(compiles(VARNIX_COMPILER, "-x c++ -std=" + std::string(standard), "pane.c"))
        << standard;
  }
}

TEST(PaneHeader, IsObjectiveC) {
  if (std::system("clang-19 --version >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "clang-19 is not installed";
  for (const char* target : {"arm64-apple-ios9.3", "armv7-apple-ios9.3"}) {
    const std::string options = "-target " + std::string(target) + " -fblocks -x objective-c";
    EXPECT_TRUE(compiles("clang-19", options, "pane.m")) << target;
    EXPECT_TRUE(compiles("clang-19", options + " -fobjc-arc", "pane.m")) << target;
    EXPECT_TRUE(compiles("clang-19", options + "++", "pane.m")) << target;
  }
}

}  // namespace
