// The check before a stored archive goes to the platform's decoder, which raises.
#include <gtest/gtest.h>

#include <random>

#include "Foundation/NSCoder.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "prefs/keyed_archive.h"
#include "support/archives.h"

namespace {

using namespace test;
using varnix::isDecodableArchive;

/// A class that is not ours.
struct StrangeCoded : NSObject {
  NSObject* initWithCoder(NSCoder* coder) {
    other = Strong<NSObject>::retain(coder->decodeObject("other"_ns));
    return this;
  }

  Strong<NSObject> other;
};

}  // namespace

OBJC_CLASS(StrangeCoded, NSObject, objc::Ivar<"other", &StrangeCoded::other>,
           objc::Method<"initWithCoder:", &StrangeCoded::initWithCoder>)

namespace {

class IconArchive : public Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  static bool decodes(NSData* data) {
    try {
      NSKeyedUnarchiver::unarchiveObjectWithData(data);
    } catch (const host::runtime::Exception&) {
      return false;
    }
    return true;
  }

  /// Whether it is accepted. If it is, it must decode.
  static bool isAccepted(NSData* data) {
    objc::AutoreleasePool inner;
    if (!isDecodableArchive(data)) return false;
    EXPECT_TRUE(decodes(data));
    return true;
  }

  objc::AutoreleasePool pool;
};

TEST_F(IconArchive, AcceptsWhatThePlatformWrites) {
  EXPECT_TRUE(isAccepted(colorArchive()));
  EXPECT_TRUE(isAccepted(richArchive()));
  EXPECT_TRUE(isAccepted(NSKeyedArchiver::archivedDataWithRootObject(UIColor::whiteColor())));
  EXPECT_TRUE(isAccepted(NSKeyedArchiver::archivedDataWithRootObject(string("text"))));
  EXPECT_TRUE(isAccepted(NSKeyedArchiver::archivedDataWithRootObject(nullptr)));
}

TEST_F(IconArchive, AcceptsEveryClassThatDecodes) {
  EXPECT_TRUE(isAccepted(archiveOf("UIColor", {})));
  EXPECT_TRUE(isAccepted(archiveOf("UIColor", {{"UIRed", integer(1)}, {"UIAlpha", real(0.5)}})));
  EXPECT_TRUE(isAccepted(archiveOf("NSDictionary", {})));
  EXPECT_TRUE(isAccepted(archiveOf("NSMutableArray", {})));
  EXPECT_TRUE(isAccepted(archiveOf("StrangeCoded", {})));
  EXPECT_TRUE(isAccepted(archiveOf("StrangeCoded",
                                   {{"other", uid(3)}, {"list", list({list({uid(0), uid(3)})})}},
                                   {string("text")})));
  // Objects that nothing refers to are ignored.
  EXPECT_TRUE(isAccepted(archive({string("text"), classNamed("UINeverHeardOfIt"), list({})})));
  // The same in XML.
  NSData* xml = send<NSData*>(
      objc_getClass("NSPropertyListSerialization"),
      "dataWithPropertyList:format:options:error:"_sel,
      NSPropertyListSerialization::propertyListWithData(colorArchive(), 0, nullptr, nullptr),
      NSUInteger{100}, NSUInteger{0}, static_cast<NSObject**>(nullptr));
  EXPECT_TRUE(isAccepted(xml));
}

TEST_F(IconArchive, RefusesWhatIsNoData) {
  for (NSObject* value : {static_cast<NSObject*>(nullptr), static_cast<NSObject*>(string("text")),
                          integer(1), boolean(true), static_cast<NSObject*>(list({})),
                          static_cast<NSObject*>(fields({})), uid(1)}) {
    EXPECT_FALSE(isDecodableArchive(value));
  }
}

TEST_F(IconArchive, RefusesEveryBrokenOne) {
  for (const NamedArchive& broken : brokenArchives())
    EXPECT_FALSE(isDecodableArchive(broken.data)) << broken.name;
}

TEST_F(IconArchive, RefusesWhatADeviceMightNotDecode) {
  EXPECT_FALSE(isDecodableArchive(
      binary(archiveAround(list({string("nil"), string("text")})))));    // no place for nil
  EXPECT_FALSE(isDecodableArchive(archive({string("text")}, nullptr)));  // no root
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"UIRed", real(INFINITY)}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"UIBlue", real(NAN)}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"UIAlpha", real(1e300)}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"NSRGB", string("1 1 1")}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"NSWhite", real(1)}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"NSColorSpace", string("2")}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"NSColorSpace", integer(-1)}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"strange", uid(9)}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"strange", list({uid(9)})}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("UIColor", {{"strange", fields({{"deep", uid(9)}})}})));
  // Decodes to something that contains itself.
  EXPECT_FALSE(isDecodableArchive(archiveOf("StrangeCoded", {{"other", uid(1)}})));
  EXPECT_FALSE(isDecodableArchive(archiveOf("NSMutableArray", {{"NS.objects", list({uid(1)})}})));
  // The key is an object of the archive.
  EXPECT_FALSE(isDecodableArchive(
      archiveOf("NSDictionary", {{"NS.keys", list({uid(3)})}, {"NS.objects", list({uid(3)})}},
                {fields({{"$class", uid(4)}}), classNamed("UIColor")})));
}

TEST_F(IconArchive, HasLimits) {
  EXPECT_TRUE(isAccepted(nestedArrays(32)));
  EXPECT_FALSE(isDecodableArchive(nestedArrays(33)));
  std::vector<NSObject*> objects(255, string("text"));
  EXPECT_TRUE(isAccepted(archive(objects)));
  objects.push_back(string("text"));
  EXPECT_FALSE(isDecodableArchive(archive(objects)));
  NSObject* nested = list({});
  for (int i = 0; i < 63; ++i) nested = list({nested});
  EXPECT_TRUE(isAccepted(archiveOf("StrangeCoded", {{"list", nested}})));
  nested = list({nested});
  EXPECT_FALSE(isDecodableArchive(archiveOf("StrangeCoded", {{"list", nested}})));
}

TEST_F(IconArchive, WhatIsAcceptedOfTruncatedOnesDecodes) {
  const std::string whole = bytesOf(richArchive());
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_FALSE(isAccepted(dataOf(whole.substr(0, length))));
}

TEST_F(IconArchive, WhatIsAcceptedOfDamagedBytesDecodes) {
  int accepted = 0;
  int refused = 0;
  std::mt19937 random(11);
  for (NSData* sound : {colorArchive(), richArchive()}) {
    const std::string whole = bytesOf(sound);
    for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
      std::string bytes = whole;
      bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
      ++(isAccepted(dataOf(bytes)) ? accepted : refused);
    }
    for (int i = 0; i < 2000; ++i) {
      std::string bytes = whole;
      for (auto n = random() % 4 + 1; n > 0; --n)
        bytes[random() % bytes.size()] = static_cast<char>(random());
      ++(isAccepted(dataOf(bytes)) ? accepted : refused);
    }
  }
  EXPECT_GT(accepted, 1000);
  EXPECT_GT(refused, 1000);
}

/// Archives with the right structure, whose objects hold anything. Their collections are immutable,
/// and no object of a strange class refers to an earlier one, so nothing contains itself. What a
/// strange class reads is correct, since nobody else can know whether it raises.
class RandomArchives {
 public:
  NSData* next() {
    std::vector<NSObject*> objects;
    count_ = 4 + number(8);
    for (index_ = 1; index_ <= count_; ++index_) objects.push_back(object());
    for (const char* name : kClasses) objects.push_back(classNamed(name));
    return archive(objects);
  }

 private:
  static constexpr const char* kClasses[] = {"UIColor", "NSArray",      "NSDictionary",
                                             "NSDate",  "StrangeCoded", "NSObject"};

  unsigned number(unsigned below) { return static_cast<unsigned>(random_() % below); }
  bool oneIn(unsigned n) { return number(n) == 0; }

  /// A reference to a later object.
  NSObject* forward() { return uid(index_ >= count_ ? 0 : index_ + 1 + number(count_ - index_)); }
  /// The same, but sometimes to any number.
  NSObject* reference() { return oneIn(60) ? uid(number(count_ + 10)) : forward(); }
  NSObject* plain() {
    switch (number(5)) {
      case 0:
        return string("text");
      case 1:
        return integer(static_cast<int>(number(6)));
      case 2:
        return oneIn(8) ? real(NAN) : real(0.25);
      case 3:
        return boolean(true);
      default:
        return NSData::dataWithBytes("1", 1);
    }
  }
  NSObject* anything() {
    switch (number(8)) {
      case 0:
        return reference();
      case 1:
        return list({reference(), plain()});
      default:
        return plain();
    }
  }
  NSObject* right(NSObject* value) { return oneIn(12) ? anything() : value; }
  NSObject* absentOr(NSObject* value) { return oneIn(4) ? nullptr : right(value); }
  NSObject* references() {
    std::vector<NSObject*> items;
    for (unsigned n = number(3); n > 0; --n) items.push_back(reference());
    return list(items);
  }

  NSObject* object() {
    if (oneIn(3) || index_ == count_) return oneIn(12) ? anything() : plain();
    const unsigned kind = oneIn(30) ? number(6) : number(5);
    NSObject* cls = oneIn(40) ? anything() : uid(count_ + 1 + kind);
    switch (kind) {
      case 0:
        return fields({{"$class", cls},
                       {"UIColorComponentCount", absentOr(integer(oneIn(2) ? 2 : 4))},
                       {"UIRed", absentOr(real(1))},
                       {"UIWhite", absentOr(real(1))},
                       {"UIAlpha", absentOr(integer(1))},
                       {"NSRGB", absentOr(NSData::dataWithBytes("1", 1))}});
      case 1:
        return fields({{"$class", cls}, {"NS.objects", absentOr(references())}});
      case 2:
        return fields({{"$class", cls},
                       {"NS.keys", absentOr(references())},
                       {"NS.objects", absentOr(references())}});
      case 3:
        return fields({{"$class", cls}, {"NS.time", absentOr(real(5))}});
      default:
        return fields({{"$class", cls}, {"other", forward()}});
    }
  }

  std::mt19937 random_{3};
  std::uint32_t count_ = 0;
  std::uint32_t index_ = 0;
};

TEST_F(IconArchive, WhatIsAcceptedOfRandomOnesDecodes) {
  RandomArchives archives;
  int accepted = 0;
  int refusedThatDecode = 0;
  int broken = 0;
  for (int i = 0; i < 6000; ++i) {
    objc::AutoreleasePool inner;
    NSData* data = archives.next();
    ASSERT_NE(data, nullptr);
    if (isAccepted(data)) ++accepted;
    else ++(decodes(data) ? refusedThatDecode : broken);
  }
  EXPECT_GT(accepted, 500);
  EXPECT_GT(broken, 500);
  EXPECT_LT(refusedThatDecode, accepted / 2);
}

}  // namespace
