// Whether two type encodings say that a call's values travel alike: pairs that systems, their
// extensions and our code write.
#include "objc/agreement.h"

#include <gtest/gtest.h>

#include <string>

#include "objc/message.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

namespace {

using objc::agree;

constexpr bool kWide = sizeof(void*) == 8;

/// An encoding with that many levels of pointers or structures.
std::string nested(int depth, const std::string& open, const std::string& core,
                   const std::string& close) {
  std::string text = core;
  for (int i = 0; i < depth; ++i) text = open + text + close;
  return "v@:" + text;
}

TEST(Agreement, OfTheSameText) {
  for (const char* types :
       {"v@:", "@@:@", "B@:@@", "v@:{CGRect={CGPoint=dd}{CGSize=dd}}", "@@:*r*"})
    EXPECT_TRUE(agree(types, types)) << types;
}

TEST(Agreement, LooksPastOffsetsAndQualifiers) {
  EXPECT_TRUE(agree("v24@0:8@16", "v@:@"));
  EXPECT_FALSE(agree("v20@0:4-8@+12", "v@:@@"));
  EXPECT_TRUE(agree("Vv16@0:8", "v@:"));
  EXPECT_TRUE(agree("r*16@0:8", "*@:"));
  EXPECT_TRUE(agree("v@:n^i", "v@:o^d"));
  EXPECT_TRUE(agree("v@:@-8", "v@:@"));
  // What follows a qualifier is read, and does not count as unreadable.
  EXPECT_FALSE(agree("r*16@0:8", "d@:"));
  EXPECT_FALSE(agree("v@:ni", "v@:d"));
  EXPECT_FALSE(agree("Vv16@0:8", "v@:@"));
}

// Other extensions add methods with type texts that are not valid.
TEST(Agreement, TakesATextThatEndsEarlyForUnreadable) {
  for (const char* sloppy : {"", "v", "v@", "4"}) {
    EXPECT_TRUE(agree(sloppy, "v@:@")) << sloppy;
    EXPECT_TRUE(agree("v@:@", sloppy)) << sloppy;
  }
  EXPECT_FALSE(agree("d", "v@:@")) << "what was read differs";
}

TEST(Agreement, CountsArguments) {
  EXPECT_FALSE(agree("v@:", "v@:@"));
  EXPECT_FALSE(agree("v@:@", "v@:"));
  EXPECT_FALSE(agree("v24@0:8@16", "v@:@@"));
}

TEST(Agreement, TakesAllPointersForAlike) {
  for (const char* theirs :
       {"v@:@", "v@:#", "v@::", "v@:*", "v@:^v", "v@:^{CGColor=}", "v@:@?", "v@:^?",
        "v@:@\"UIColor\"", "v@:^@", "v@:^^{CGImage}", "v@:^[4i]", "v@:^(u=if)"})
    EXPECT_TRUE(agree(theirs, "v@:@")) << theirs;
  EXPECT_TRUE(agree("@\"UIColor\"@:", "@@:"));
  EXPECT_TRUE(agree("^{CGColor=}@:", "@@:"));
}

TEST(Agreement, TakesBoolByWhateverLetter) {
  for (const char* theirs : {"B@:B", "c@:c", "C@:C", "B@:c"}) {
    EXPECT_TRUE(agree(theirs, "B@:B")) << theirs;
    EXPECT_TRUE(agree(theirs, "c@:c")) << theirs;
  }
  EXPECT_FALSE(agree("i@:", "B@:"));
  EXPECT_FALSE(agree("v@:s", "v@:B"));
}

TEST(Agreement, ComparesSizes) {
  EXPECT_TRUE(agree("v@:i", "v@:I"));
  EXPECT_TRUE(agree("v@:l", "v@:i"));  // what the letter means to compilers that still write it
  EXPECT_TRUE(agree("v@:q", "v@:Q"));
  EXPECT_TRUE(agree("v@:s", "v@:S"));
  EXPECT_FALSE(agree("v@:i", "v@:q"));
  EXPECT_FALSE(agree("v@:s", "v@:i"));
  EXPECT_FALSE(agree("q@:", "i@:"));
  EXPECT_EQ(agree("v@:@", "v@:q"), kWide);
  EXPECT_EQ(agree("v@:@", "v@:i"), !kWide);
}

TEST(Agreement, KeepsFractionsAndWholeNumbersApart) {
  EXPECT_FALSE(agree("v@:f", "v@:i"));
  EXPECT_FALSE(agree("v@:d", "v@:q"));
  EXPECT_FALSE(agree("v@:f", "v@:d"));
  EXPECT_FALSE(agree("d@:", "f@:"));
  EXPECT_TRUE(agree("d@:f", "d@:f"));
}

TEST(Agreement, ComparesStructuresByTheirNumbers) {
  EXPECT_TRUE(agree("v@:{CGRect={CGPoint=dd}{CGSize=dd}}", "v@:{UIEdgeInsets=dddd}"));
  EXPECT_TRUE(agree("{?=dd}@:", "{CGSize=dd}@:"));
  EXPECT_FALSE(agree("v@:{CGSize=dd}", "v@:{CGSize=ff}"));
  EXPECT_FALSE(agree("v@:{CGSize=dd}", "v@:{CGRect={CGPoint=dd}{CGSize=dd}}"));
  EXPECT_FALSE(agree("v@:{CGSize=dd}", "v@:dd"));
  EXPECT_FALSE(agree("v@:{CGSize=dd}", "v@:@"));
  EXPECT_FALSE(agree("{Pair=qd}@:", "{Pair=dq}@:"));
}

TEST(Agreement, AnObjectOfOursMayBeNothingOfTheirs) {
  EXPECT_TRUE(agree("v@:", "@@:"));
  EXPECT_TRUE(agree("Vv16@0:8", "@@:"));
  // Callers would use these results.
  EXPECT_FALSE(agree("v@:", "B@:"));
  EXPECT_FALSE(agree("v@:", "d@:"));
  EXPECT_FALSE(agree("v@:", "{CGSize=dd}@:"));
  // Their callers would use an object that ours does not return.
  EXPECT_FALSE(agree("@@:", "v@:"));
  // An argument is not a result.
  EXPECT_FALSE(agree("v@:v", "v@:@"));
}

TEST(Agreement, OfWhatCannotBeRead) {
  EXPECT_TRUE(agree(nullptr, "v@:"));
  EXPECT_TRUE(agree("v@:", nullptr));
  EXPECT_TRUE(agree(nullptr, nullptr));
  for (const char* theirs :
       {"?", "v@:?", "v@:b3", "v@:{CGSize}", "v@:{CGSize=dd", "v@:{", "v@:^",
        "v@:^{CGSize=", "v@:@\"UIColor", "v@:(u=if)", "v@:[4i]", "v@:x", "v@:r", "v@:{?=b1b2}"})
    EXPECT_TRUE(agree(theirs, "v@:i")) << theirs;
}

TEST(Agreement, OfWhatIsReadBeforeThat) {
  EXPECT_FALSE(agree("d@:?", "@@:i"));
  EXPECT_EQ(agree("i@:?", "@@:i"), !kWide);  // a pointer is as long as an int on 32 bits
  EXPECT_FALSE(agree("v@:d?", "v@:i@"));
}

TEST(Agreement, OfDeepAndLongEncodings) {
  EXPECT_TRUE(agree(nested(3, "{A=", "d", "}").c_str(), "v@:d"));
  EXPECT_FALSE(agree(nested(3, "{A=", "d", "}").c_str(), "v@:i"));
  // Nested more deeply than it reads, or with more numbers than it stores: these count as
  // unreadable.
  EXPECT_TRUE(agree(nested(100, "{A=", "d", "}").c_str(), "v@:i"));
  EXPECT_TRUE(agree(nested(100, "^", "d", "").c_str(), "v@:d"));
  EXPECT_TRUE(agree(nested(1, "{A=", std::string(100, 'd'), "}").c_str(), "v@:i"));
  EXPECT_TRUE(agree(("v@:" + std::string(100000, '{')).c_str(), "v@:i"));
  EXPECT_TRUE(agree(("v@:" + std::string(100000, '^')).c_str(), "v@:d"));
}

TEST(Agreement, OfDeclaredTypesWithThePlatforms) {
  auto ours = [](auto message) { return std::string(message.types().text); };
  constexpr objc::Message<NSObject, "take:", void(CGRect)> take;
  constexpr objc::Message<NSObject, "is:at:", bool(NSObject*, NSInteger)> is;
  const std::string number = kWide ? "q" : "i";
  EXPECT_TRUE(agree(kWide ? "v48@0:8{CGRect={CGPoint=dd}{CGSize=dd}}16"
                          : "v24@0:4{CGRect={CGPoint=ff}{CGSize=ff}}8",
                    ours(take).c_str()));
  EXPECT_TRUE(agree(("c@:@" + number).c_str(), ours(is).c_str()));
  EXPECT_TRUE(agree(("B@:@" + number).c_str(), ours(is).c_str()));
  EXPECT_FALSE(agree(("B@:@@" + number).c_str(), ours(is).c_str()));
}

}  // namespace
