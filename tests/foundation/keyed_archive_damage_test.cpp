// Keyed archives that are damaged, or made to cause damage: they raise, and leave nothing behind.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "Foundation/NSCoder.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "support/archives.h"

namespace {

using namespace test;

/// Counts its instances. The coder may tell it to raise, to disappear, or to become another object.
struct DamageCoded : NSObject {
  static inline int alive = 0;

  static id alloc(Class cls, SEL) {
    ++alive;
    return class_createInstance(cls, 0);
  }
  void dealloc() {
    --alive;
    sendSuper<void>(this, "dealloc"_sel);
  }
  NSObject* initWithCoder(NSCoder* coder) {
    other = Strong<NSObject>::retain(coder->decodeObject("other"_ns));
    coder->decodeFloat("float"_ns);
    if (send<bool>(coder, "decodeBoolForKey:"_sel, "nothing"_ns)) {
      objc_release(this);
      return nullptr;
    }
    if (send<bool>(coder, "decodeBoolForKey:"_sel, "another"_ns)) {
      objc_release(this);
      return objc::alloc<DamageCoded>();
    }
    NSUInteger length = 0;
    send<const unsigned char*>(coder, "decodeBytesForKey:returnedLength:"_sel, "bytes"_ns, &length);
    return this;
  }

  Strong<NSObject> other;
};

}  // namespace

OBJC_CLASS(DamageCoded, NSObject, objc::Ivar<"other", &DamageCoded::other>,
           objc::ClassMethod<"alloc", &DamageCoded::alloc>,
           objc::Method<"dealloc", &DamageCoded::dealloc>,
           objc::Method<"initWithCoder:", &DamageCoded::initWithCoder>)

namespace {

class DamagedArchive : public Hosted {
 protected:
  void SetUp() override { start("com.example.app"); }

  /// The name of the exception, or nothing.
  static std::string raised(NSData* data) {
    objc::AutoreleasePool inner;
    try {
      NSKeyedUnarchiver::unarchiveObjectWithData(data);
    } catch (const host::runtime::Exception& exception) {
      return exception.name();
    }
    return "";
  }

  objc::AutoreleasePool pool;
};

TEST_F(DamagedArchive, EveryBrokenOneRaises) {
  for (const NamedArchive& broken : brokenArchives()) {
    ASSERT_NE(broken.data, nullptr) << broken.name;
    const std::string name = raised(broken.data);
    EXPECT_TRUE(name == "NSInvalidArgumentException" ||
                name == "NSInvalidUnarchiveOperationException")
        << broken.name << ": " << name;
  }
  NSObject* text = string("text");
  EXPECT_EQ(raised(static_cast<NSData*>(text)), "NSInvalidArgumentException");
}

TEST_F(DamagedArchive, SoundOnesDoNot) {
  EXPECT_EQ(raised(colorArchive()), "");
  EXPECT_EQ(raised(richArchive()), "");
  EXPECT_EQ(raised(archive({string("text")})), "");
  EXPECT_EQ(raised(archive({}, uid(0))), "");
  EXPECT_EQ(raised(archive({string("text")}, nullptr)), "");
  EXPECT_EQ(raised(archiveOf("UIColor", {})), "");
  EXPECT_EQ(raised(archiveOf("NSDictionary", {})), "");
  EXPECT_EQ(raised(nestedArrays(512)), "");
}

TEST_F(DamagedArchive, MissingComponentsReadAsZero) {
  NSObject* color = NSKeyedUnarchiver::unarchiveObjectWithData(
      archiveOf("UIColor", {{"UIGreen", integer(1)}, {"UIAlpha", real(0.5)}}));
  EXPECT_EQ(hex(objc::as<UIColor>(color)), "#00ff0080");
  NSObject* white = NSKeyedUnarchiver::unarchiveObjectWithData(
      archiveOf("UIColor", {{"UIWhite", real(7)}, {"UIAlpha", real(1)}}));
  EXPECT_EQ(hex(objc::as<UIColor>(white)), "#ffffffff");
  NSObject* nothing = NSKeyedUnarchiver::unarchiveObjectWithData(archiveOf("UIColor", {}));
  EXPECT_EQ(hex(objc::as<UIColor>(nothing)), "#00000000");
}

TEST_F(DamagedArchive, ATruncatedOneRaises) {
  const std::string whole = bytesOf(richArchive());
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_NE(raised(dataOf(whole.substr(0, length))), "") << length;
}

TEST_F(DamagedArchive, FlippedBitsRaiseOrDecode) {
  int decoded = 0;
  int refused = 0;
  for (NSData* sound : {colorArchive(), richArchive()}) {
    const std::string whole = bytesOf(sound);
    for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
      std::string bytes = whole;
      bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
      ++(raised(dataOf(bytes)).empty() ? decoded : refused);
    }
  }
  EXPECT_GT(decoded, 100);
  EXPECT_GT(refused, 1000);
}

TEST_F(DamagedArchive, ScrambledBytesRaiseOrDecode) {
  std::mt19937 random(7);
  const std::string whole = bytesOf(richArchive());
  int refused = 0;
  for (int i = 0; i < 3000; ++i) {
    std::string bytes = whole;
    for (auto n = random() % 6 + 1; n > 0; --n)
      bytes[random() % bytes.size()] = static_cast<char>(random());
    if (!raised(dataOf(bytes)).empty()) ++refused;
  }
  EXPECT_GT(refused, 1000);
}

TEST_F(DamagedArchive, HugeCountsAreRefused) {
  std::string bytes = bytesOf(archiveOf("NSArray", {{"NS.objects", list({uid(3)})}}, {uid(3)}));
  // The number of objects and the offset of the table, in the trailer.
  for (std::size_t back : {24U, 16U, 8U}) {
    for (int value : {0x01, 0x7f, 0x80, 0xff}) {
      std::string damaged = bytes;
      damaged[damaged.size() - back] = static_cast<char>(value);
      EXPECT_NE(raised(dataOf(damaged)), "");
    }
  }
}

TEST_F(DamagedArchive, ManyReferencesToOneObjectMakeOneObject) {
  // Each array contains the next one twice: expanded, more objects than there are atoms.
  std::vector<NSObject*> objects{classNamed("NSArray")};
  constexpr std::uint32_t kLevels = 300;
  for (std::uint32_t i = 0; i < kLevels; ++i) {
    objects.push_back(fields({{"$class", uid(1)}, {"NS.objects", list({uid(i + 3), uid(i + 3)})}}));
  }
  objects.push_back(string("core"));
  EXPECT_EQ(raised(archive(objects, uid(2))), "");
}

TEST_F(DamagedArchive, AnInitializerThatRaisesLeavesNothing) {
  NSObject* wrong = string("1");
  EXPECT_EQ(raised(archiveOf("DamageCoded", {{"float", wrong}})),
            "NSInvalidUnarchiveOperationException");
  EXPECT_EQ(DamageCoded::alive, 0);
  // Inside others of each kind, beside a valid one.
  NSObject* sound = fields({{"$class", uid(2)}});
  NSObject* bad = fields({{"$class", uid(2)}, {"bytes", integer(1)}});
  EXPECT_NE(raised(archiveOf("DamageCoded", {{"other", uid(4)}}, {sound, bad})), "");
  for (const char* name : {"NSArray", "NSMutableArray"}) {
    EXPECT_NE(raised(archive({fields({{"$class", uid(2)}, {"NS.objects", list({uid(3), uid(4)})}}),
                              classNamed(name), fields({{"$class", uid(5)}}),
                              fields({{"$class", uid(5)}, {"float", wrong}}),
                              classNamed("DamageCoded")})),
              "");
  }
  EXPECT_EQ(DamageCoded::alive, 0);
}

TEST_F(DamagedArchive, AnInitializerMayAnswerNilOrAnotherObject) {
  EXPECT_EQ(raised(archiveOf("DamageCoded", {{"nothing", boolean(true)}})), "");
  EXPECT_EQ(raised(archiveOf("DamageCoded", {{"another", boolean(true)}})), "");
  EXPECT_EQ(DamageCoded::alive, 0);
  {
    objc::AutoreleasePool inner;
    EXPECT_EQ(NSKeyedUnarchiver::unarchiveObjectWithData(
                  archiveOf("DamageCoded", {{"nothing", boolean(true)}})),
              nullptr);
    EXPECT_NE(NSKeyedUnarchiver::unarchiveObjectWithData(
                  archiveOf("DamageCoded", {{"another", boolean(true)}})),
              nullptr);
    EXPECT_EQ(DamageCoded::alive, 1);
  }
  EXPECT_EQ(DamageCoded::alive, 0);
}

TEST_F(DamagedArchive, AnObjectThatRefersToItselfIsOne) {
  {
    objc::AutoreleasePool inner;
    auto* coded = static_cast<DamageCoded*>(
        NSKeyedUnarchiver::unarchiveObjectWithData(archiveOf("DamageCoded", {{"other", uid(1)}})));
    ASSERT_NE(coded, nullptr);
    EXPECT_EQ(coded->other.get(), coded);
    coded->other = nullptr;
  }
  EXPECT_EQ(DamageCoded::alive, 0);
  // Raises in the middle of a cycle. Anyone who got a reference to the object keeps it.
  EXPECT_NE(raised(archiveOf("DamageCoded", {{"float", list({})}})), "");
  EXPECT_EQ(DamageCoded::alive, 0);
}

TEST_F(DamagedArchive, AKeyThatCannotBeCopiedRaises) {
  EXPECT_EQ(
      raised(archive(
          {fields(
               {{"$class", uid(2)}, {"NS.keys", list({uid(3)})}, {"NS.objects", list({uid(3)})}}),
           classNamed("NSDictionary"), fields({{"$class", uid(4)}}), classNamed("DamageCoded")})),
      "NSInvalidArgumentException");
  EXPECT_EQ(DamageCoded::alive, 0);
}

}  // namespace
