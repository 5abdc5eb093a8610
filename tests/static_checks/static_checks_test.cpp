// What the compiler refuses: each mistake in a class table, a declaration or a replacement, and the
// message about it.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

/// What the compiler says; empty if it accepts the file.
std::string complaints(int mistake) {
  const std::string command = VARNIX_COMPILER " -std=c++20 -fsyntax-only -I " VARNIX_SOURCES
                                              " -DMISTAKE=" +
                              std::to_string(mistake) + " " VARNIX_STATIC_CHECKS "/tables.cpp 2>&1";
  std::string said;
  FILE* output = popen(command.c_str(), "r");
  for (std::array<char, 4096> part; fgets(part.data(), part.size(), output) != nullptr;)
    said += part.data();
  const int status = pclose(output);
  EXPECT_EQ(status == 0, said.empty()) << said;
  return said;
}

TEST(StaticChecks, TakeWhatIsRight) { EXPECT_EQ(complaints(0), ""); }

TEST(StaticChecks, RefuseEachMistake) {
  const char* const kMessages[] = {"an argument for each colon",
                                   "an argument for each colon",
                                   "the table must name every data member",
                                   "the function takes and answers what the declaration says",
                                   "the setter is called like the getter",
                                   "both accessors have the member's type",
                                   "the replacement takes and answers what the declaration says",
                                   "the method takes and answers what the declaration says"};
  int mistake = 0;
  for (const char* message : kMessages) {
    const std::string said = complaints(++mistake);
    EXPECT_NE(said.find(message), std::string::npos) << mistake << ": " << said;
  }
}

}  // namespace
