// URLs: which texts are valid, and their parts.
#include <gtest/gtest.h>

#include "Foundation/text.h"
#include "objc/autorelease_pool.h"
#include "platform/Foundation.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace {

class Url : public testing::Test {
 protected:
  static NSURL* url(std::string_view text) { return NSURL::URLWithString(host::makeString(text)); }
  template <objc::FixedString Name>
  static std::string part(std::string_view text, objc::Selector<Name> selector) {
    auto* found = send<NSString*>(url(text), selector);
    return found == nullptr ? "nil" : std::string(host::text(found));
  }

 private:
  objc::AutoreleasePool pool_;
};

TEST_F(Url, KeepsItsText) {
  for (const char* text : {"https://example.com/a?b=c#d", "mailto:me@example.com", "", "a/b",
                           "x:", "tweetbot:///user_profile/me", "http://[::1]:80/", "a%41"}) {
    ASSERT_NE(url(text), nullptr) << text;
    EXPECT_EQ(host::text(send(url(text), NSURL::absoluteString)), text);
  }
}

TEST_F(Url, IsNilForWhatMustBeEscaped) {
  using namespace std::literals;
  for (std::string_view text :
       {"a b"sv, "a\nb"sv, "<a>"sv, "\"a\""sv, "a\\b"sv, "a^b"sv, "a`b"sv, "{a}"sv, "a|b"sv,
        "n\u00e4me"sv, "a#b#c"sv, "50%"sv, "50%4"sv, "%zz"sv, "a\0b"sv, "\x7f"sv})
    EXPECT_EQ(url(text), nullptr) << text;
}

TEST_F(Url, RaisesForNil) { EXPECT_THROW(NSURL::URLWithString(nullptr), host::runtime::Exception); }

TEST_F(Url, HasParts) {
  const std::string whole = "https://example.com/a/b?c=d#e";
  EXPECT_EQ(part(whole, "scheme"_sel), "https");
  EXPECT_EQ(part(whole, "host"_sel), "example.com");
  EXPECT_EQ(part(whole, "path"_sel), "/a/b");
  EXPECT_EQ(part(whole, "query"_sel), "c=d");
  EXPECT_EQ(part("x:///p?q", "host"_sel), "nil");
  EXPECT_EQ(part("x:///p?q", "path"_sel), "/p");
  EXPECT_EQ(part("x://user?q=1", "host"_sel), "user");
  EXPECT_EQ(part("x://user", "query"_sel), "nil");
  EXPECT_EQ(part("a/b:c", "scheme"_sel), "nil");
  EXPECT_EQ(part("/a?b", "path"_sel), "/a");
}

TEST_F(Url, IsEqualByItsText) {
  EXPECT_TRUE(send(url("x:1"), NSObject::isEqual, url("x:1")));
  EXPECT_EQ(send(url("x:1"), NSObject::hash), send(url("x:1"), NSObject::hash));
  EXPECT_FALSE(send(url("x:1"), NSObject::isEqual, url("x:2")));
  EXPECT_FALSE(send(url("x:1"), NSObject::isEqual, "x:1"_ns));
}

}  // namespace
