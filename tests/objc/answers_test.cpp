// Private methods and instance variables, checked before they are used.
#include "objc/answers.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "objc/define.h"
#include "objc/variable.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"

namespace {

struct AnswersFixture : NSObject {
  Strong<NSString> title;
  int count;
  NSString* name() { return title; }
  void take(NSObject*) {}
  int sum(int a) { return a; }

  static constexpr objc::Message<AnswersFixture, "name", NSString*()> kName{};
  static constexpr objc::Message<AnswersFixture, "take:", void(NSObject*)> kTake{};
  static constexpr objc::Message<AnswersFixture, "take:", void(NSString*)> kTakeText{};
  static constexpr objc::Message<AnswersFixture, "take:", void(CGFloat)> kTakeFraction{};
  static constexpr objc::Message<AnswersFixture, "sum:", int(int)> kSum{};
  static constexpr objc::Message<AnswersFixture, "sum:", double(int)> kSumOfFractions{};
  static constexpr objc::Message<AnswersFixture, "juggle", void()> kJuggle{};
  static constexpr objc::Variable<AnswersFixture, "_title", NSString> kTitle{};
  static constexpr objc::Variable<AnswersFixture, "_count", NSString> kCount{};
  static constexpr objc::Variable<AnswersFixture, "_absent", NSString> kAbsent{};
};
struct AnswersChild : AnswersFixture {
  Strong<NSObject> more;
  void juggle() {}
};
/// Has only the variable's name in common.
struct AnswersStranger : NSObject {
  int number;
};

}  // namespace

OBJC_CLASS(AnswersFixture, NSObject, objc::Ivar<"_title", &AnswersFixture::title>,
           objc::Ivar<"_count", &AnswersFixture::count>,
           objc::Method<"name", &AnswersFixture::name>,
           objc::Method<"take:", &AnswersFixture::take>, objc::Method<"sum:", &AnswersFixture::sum>)
OBJC_CLASS(AnswersChild, AnswersFixture, objc::Ivar<"_more", &AnswersChild::more>,
           objc::Method<"juggle", &AnswersChild::juggle>)
OBJC_CLASS(AnswersStranger, NSObject, objc::Ivar<"_title", &AnswersStranger::number>)

namespace {

using A = AnswersFixture;

TEST(Understands, MethodsThatAreThereAsDeclared) {
  Class cls = objc::classOf<AnswersFixture>();
  EXPECT_TRUE(objc::understands(cls, A::kName));
  EXPECT_TRUE(objc::understands(cls, A::kTake));
  EXPECT_TRUE(objc::understands(cls, A::kTakeText));
  EXPECT_TRUE(objc::understands(cls, A::kSum));
  EXPECT_TRUE(objc::understands(cls, NSObject::hash));
  EXPECT_TRUE(objc::understands(objc::classOf<AnswersChild>(), A::kName));
}

TEST(Understands, NothingThatIsNotThere) {
  EXPECT_FALSE(objc::understands(objc::classOf<AnswersFixture>(), A::kJuggle));
  EXPECT_TRUE(objc::understands(objc::classOf<AnswersChild>(), A::kJuggle));
  EXPECT_FALSE(objc::understands(nullptr, A::kName));
  // The class itself does not understand the messages of its instances.
  EXPECT_FALSE(objc::understands(objc_getMetaClass("AnswersFixture"), A::kName));
}

TEST(Understands, NothingThatTravelsOtherwise) {
  Class cls = objc::classOf<AnswersFixture>();
  EXPECT_FALSE(objc::understands(cls, A::kTakeFraction));
  EXPECT_FALSE(objc::understands(cls, A::kSumOfFractions));
}

TEST(Answers, WhereAllAreUnderstood) {
  auto object = objc::make<AnswersFixture>();
  auto child = objc::make<AnswersChild>();
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(objc::answers(object, A::kName));
    EXPECT_TRUE(objc::answers(object, A::kName, A::kTake, A::kSum));
    EXPECT_FALSE(objc::answers(object, A::kJuggle));
    EXPECT_FALSE(objc::answers(object, A::kName, A::kJuggle));
    EXPECT_FALSE(objc::answers(object, A::kTakeFraction));
    EXPECT_TRUE(objc::answers(child, A::kName, A::kJuggle));
    EXPECT_FALSE(objc::answers(nullptr, A::kName));
  }
}

/// The same question for objects of different classes.
bool juggles(NSObject* object) { return objc::answers(object, A::kJuggle); }

TEST(Answers, EachClassForItself) {
  auto object = objc::make<AnswersFixture>();
  auto child = objc::make<AnswersChild>();
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(juggles(object));
    EXPECT_FALSE(juggles(object));
    EXPECT_TRUE(juggles(child));
    EXPECT_TRUE(juggles(child));
    EXPECT_FALSE(juggles(nullptr));
  }
}

TEST(Answers, FromSeveralThreads) {
  auto object = objc::make<AnswersFixture>();
  auto child = objc::make<AnswersChild>();
  int wrong[4] = {};
  {
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t) {
      threads.emplace_back([&, t] {
        for (int i = 0; i < 2000; ++i) {
          if (juggles(object) || !juggles(child)) ++wrong[t];
        }
      });
    }
  }
  for (int count : wrong) EXPECT_EQ(count, 0);
}

TEST(Variables, AreThereWhereTheyHoldObjects) {
  Class cls = objc::classOf<AnswersFixture>();
  EXPECT_TRUE(objc::hasVariable(cls, A::kTitle));
  EXPECT_TRUE(objc::hasVariable(objc::classOf<AnswersChild>(), A::kTitle));
  EXPECT_FALSE(objc::hasVariable(cls, A::kCount));
  EXPECT_FALSE(objc::hasVariable(cls, A::kAbsent));
  EXPECT_FALSE(objc::hasVariable(objc::classOf<AnswersStranger>(), A::kTitle));
  EXPECT_FALSE(objc::hasVariable(objc::classOf<NSObject>(), A::kTitle));
  EXPECT_FALSE(objc::hasVariable(nullptr, A::kTitle));
}

TEST(Variables, AreRead) {
  auto object = objc::make<AnswersFixture>();
  auto child = objc::make<AnswersChild>();
  child->title = Strong<NSString>::retain("of a child"_ns);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(objc::read(object, A::kTitle), nullptr);
    object->title = Strong<NSString>::retain("title"_ns);
    EXPECT_EQ(objc::read(object, A::kTitle), "title"_ns);
    EXPECT_EQ(objc::read(child, A::kTitle), "of a child"_ns);
    object->title = nullptr;
  }
}

TEST(Variables, AskingNilFirstSpoilsNothing) {
  auto object = objc::make<AnswersFixture>();
  object->title = Strong<NSString>::retain("title"_ns);
  EXPECT_EQ(objc::read(nullptr, A::kTitle), nullptr);
  EXPECT_EQ(objc::read(object, A::kTitle), "title"_ns);
}

TEST(Variables, OfNilAndOfNobodyAreNil) {
  auto object = objc::make<AnswersFixture>();
  object->count = 7;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(objc::read(nullptr, A::kTitle), nullptr);
    EXPECT_EQ(objc::read(object, A::kCount), nullptr);
    EXPECT_EQ(objc::read(object, A::kAbsent), nullptr);
  }
}

}  // namespace
