// Parts of strings, and how they are searched.
#include "runtime/runtime.h"
#include "support/pane.h"

namespace {

using namespace test;

class StringParts : public Pane {
 protected:
  void SetUp() override { start("com.example.app"); }
  static std::string_view from(const char* text, NSUInteger index) {
    return host::text(send(string(text), NSString::substringFromIndex, index));
  }
  static std::string_view to(const char* text, NSUInteger index) {
    return host::text(send(string(text), NSString::substringToIndex, index));
  }
  static bool contains(const char* text, const char* part) {
    return send(string(text), NSString::containsIgnoringCase, string(part));
  }
};

TEST_F(StringParts, BeginAndEnd) {
  NSString* text = string("com.example.app");
  EXPECT_TRUE(send(text, NSString::hasPrefix, "com."_ns));
  EXPECT_FALSE(send(text, NSString::hasPrefix, "Com."_ns));
  EXPECT_TRUE(send(text, NSString::hasSuffix, ".app"_ns));
  EXPECT_FALSE(send(text, NSString::hasSuffix, "com."_ns));
  EXPECT_FALSE(send(text, NSString::hasPrefix, ""_ns));
  EXPECT_FALSE(send(text, NSString::hasSuffix, ""_ns));
  EXPECT_FALSE(send(text, NSString::hasPrefix, nullptr));
}

TEST_F(StringParts, AreCutAtUnitsOfUtf16) {
  EXPECT_EQ(from("abc", 0), "abc");
  EXPECT_EQ(from("abc", 3), "");
  EXPECT_EQ(to("abc", 2), "ab");
  EXPECT_EQ(to("\xc3\xa9x", 1), "\xc3\xa9");
  EXPECT_EQ(from("\xf0\x9f\x98\x80x", 2), "x");
  // Half a pair is in neither part.
  EXPECT_EQ(from("\xf0\x9f\x98\x80x", 1), "x");
  EXPECT_EQ(to("\xf0\x9f\x98\x80x", 1), "");
  EXPECT_THROW(from("abc", 4), host::runtime::Exception);
  EXPECT_THROW(to("abc", 4), host::runtime::Exception);
}

TEST_F(StringParts, AreFoundInAnyCase) {
  EXPECT_TRUE(contains("Instagram", "GRAM"));
  EXPECT_TRUE(contains("\xc3\x89t\xc3\xa9", "\xc3\xa9T\xc3\x89"));
  EXPECT_TRUE(contains("\xd0\x9a\xd0\xbe\xd0\xb4", "\xd0\xba\xd0\xbe"));
  EXPECT_FALSE(contains("Instagram", "grams"));
  EXPECT_FALSE(contains("Instagram", ""));
  EXPECT_FALSE(contains("", "a"));
}

TEST_F(StringParts, BecomeData) {
  auto data = [](const char* text, NSUInteger encoding) {
    NSData* made = send(string(text), NSString::dataUsingEncoding, encoding);
    if (made == nullptr) return std::string("nil");
    return std::string(static_cast<const char*>(send(made, NSData::bytes)),
                       send(made, NSData::length));
  };
  EXPECT_EQ(data("\xc3\xa9", NSUTF8StringEncoding), "\xc3\xa9");
  EXPECT_EQ(data("", NSUTF8StringEncoding), "");
  EXPECT_EQ(data("e", NSASCIIStringEncoding), "e");
  EXPECT_EQ(data("\xc3\xa9", NSASCIIStringEncoding), "nil");
  EXPECT_EQ(data("e", 77), "nil");
}

}  // namespace
