// Typed sends: arguments and results of every kind, nil receivers, messages to super.
#include "objc/send.h"

#include <gtest/gtest.h>

#include <cstdarg>

#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"
#include "runtime/runtime.h"

namespace {

/// Three words of integers: returned in memory, unlike two.
struct Triple {
  long a, b, c;
};
/// One register of each kind.
struct Mixed {
  long whole;
  double part;
};

}  // namespace
OBJC_STRUCT(Triple, long, long, long);
OBJC_STRUCT(Mixed, long, double);

namespace {

struct SendFixture : NSObject {
  int seven() { return 7; }
  bool no() { return false; }
  float half() { return 0.5F; }
  double product(double a, int b, float c) { return a * b * static_cast<double>(c); }
  CGRect frame() { return {{1, 2}, {3, 4}}; }
  CGRect inset(CGRect rect, CGFloat by) {
    return {{rect.origin.x + by, rect.origin.y + by},
            {rect.size.width - 2 * by, rect.size.height - 2 * by}};
  }
  CGSize doubled(CGSize size) { return {size.width * 2, size.height * 2}; }
  CGPoint origin(CGRect rect) { return rect.origin; }
  Triple triple(long start) { return {start, start + 1, start + 2}; }
  Mixed mixed(Mixed given) { return {given.whole + 1, given.part / 2}; }
  SendFixture* self() { return this; }
  /// More than registers hold, of both kinds.
  double sum(int a, double b, int c, double d, int e, double f, int g, double h, int i, double j,
             double k, double l, double m, double n, CGRect rect) {
    return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h + 9 * i + 10 * j + 11 * k +
           12 * l + 13 * m + 14 * n + rect.size.height;
  }
  static double total(SendFixture*, SEL, int count, ...) {
    va_list values;
    va_start(values, count);
    double sum = 0;
    for (int i = 0; i < count; ++i) sum += va_arg(values, double);
    va_end(values);
    return sum;
  }
  static CGSize classSize() { return {5, 6}; }
};

struct SendSubclass : SendFixture {
  int seven() { return sendSuper<int>(this, "seven"_sel) + 10; }
  double product(double a, int b, float c) {
    return -sendSuper<double>(this, "product:by:by:"_sel, a, b, c);
  }
  CGRect frame() {
    CGRect rect = sendSuper<CGRect>(this, "frame"_sel);
    rect.origin.x = 100;
    return rect;
  }
  CGSize doubled(CGSize size) {
    CGSize twice = sendSuper<CGSize>(this, "doubled:"_sel, size);
    return {twice.height, twice.width};
  }
};
/// Overrides nothing: a message to super from below must start above the class, not the object.
struct SendSubSubclass : SendSubclass {};

}  // namespace

OBJC_CLASS(SendFixture, NSObject, objc::Method<"seven", &SendFixture::seven>,
           objc::Method<"no", &SendFixture::no>, objc::Method<"half", &SendFixture::half>,
           objc::Method<"product:by:by:", &SendFixture::product>,
           objc::Method<"frame", &SendFixture::frame>,
           objc::Method<"inset:by:", &SendFixture::inset>,
           objc::Method<"doubled:", &SendFixture::doubled>,
           objc::Method<"originOf:", &SendFixture::origin>,
           objc::Method<"triple:", &SendFixture::triple>,
           objc::Method<"mixed:", &SendFixture::mixed>, objc::Method<"self", &SendFixture::self>,
           objc::Method<"sum:::::::::::::::", &SendFixture::sum>,
           objc::Method<"total:", &SendFixture::total>,
           objc::ClassMethod<"classSize", &SendFixture::classSize>)
OBJC_CLASS(SendSubclass, SendFixture, objc::Method<"seven", &SendSubclass::seven>,
           objc::Method<"product:by:by:", &SendSubclass::product>,
           objc::Method<"frame", &SendSubclass::frame>,
           objc::Method<"doubled:", &SendSubclass::doubled>)
OBJC_CLASS(SendSubSubclass, SendSubclass)

namespace {

template <class Selector, class... A>
concept Sendable = requires(NSObject* object, Selector selector, A... arguments) {
  objc::send<void>(object, selector, arguments...);
};
static_assert(Sendable<decltype("count"_sel)>);
static_assert(!Sendable<decltype("count"_sel), int>);
static_assert(!Sendable<decltype("set:"_sel)>);
static_assert(Sendable<decltype("set:"_sel), int>);
static_assert(!Sendable<decltype("set:"_sel), int, int>);
static_assert(Sendable<decltype("set:to:"_sel), int, id>);
static_assert(!Sendable<decltype("set:to:"_sel), id>);

template <class Selector, class... A>
concept SendableToSuper = requires(SendFixture* self, Selector selector, A... arguments) {
  objc::sendSuper<void>(self, selector, arguments...);
};
static_assert(SendableToSuper<decltype("set:"_sel), int>);
static_assert(!SendableToSuper<decltype("set:"_sel)>);

// Each case sends twice: the first looks the method up, the second finds it in the cache.
class Send : public testing::Test {
 protected:
  Strong<SendFixture> fixture = Strong<SendFixture>::adopt(objc::alloc<SendFixture>());
};

void expectRect(CGRect rect, double x, double y, double width, double height) {
  EXPECT_EQ(rect.origin.x, x);
  EXPECT_EQ(rect.origin.y, y);
  EXPECT_EQ(rect.size.width, width);
  EXPECT_EQ(rect.size.height, height);
}

TEST_F(Send, ScalarResults) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send<int>(fixture, "seven"_sel), 7);
    EXPECT_FALSE(send<bool>(fixture, "no"_sel));
    EXPECT_EQ(send<float>(fixture, "half"_sel), 0.5F);
    EXPECT_EQ(send<SendFixture*>(fixture, "self"_sel), fixture.get());
  }
}

TEST_F(Send, MixedArguments) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send<double>(fixture, "product:by:by:"_sel, 1.5, 4, 2.0F), 12.0);
  }
}

TEST_F(Send, StructuresThatTravelInMemory) {
  for (int i = 0; i < 2; ++i) {
    expectRect(send<CGRect>(fixture, "frame"_sel), 1, 2, 3, 4);
    expectRect(send<CGRect>(fixture, "inset:by:"_sel, CGRect{{10, 20}, {30, 40}}, CGFloat{5}), 15,
               25, 20, 30);
    Triple triple = send<Triple>(fixture, "triple:"_sel, 40L);
    EXPECT_EQ(triple.a, 40);
    EXPECT_EQ(triple.b, 41);
    EXPECT_EQ(triple.c, 42);
  }
}

TEST_F(Send, StructuresThatTravelInRegisters) {
  for (int i = 0; i < 2; ++i) {
    CGSize size = send<CGSize>(fixture, "doubled:"_sel, CGSize{3, 4});
    EXPECT_EQ(size.width, 6);
    EXPECT_EQ(size.height, 8);
    CGPoint point = send<CGPoint>(fixture, "originOf:"_sel, CGRect{{7, 8}, {9, 10}});
    EXPECT_EQ(point.x, 7);
    EXPECT_EQ(point.y, 8);
    Mixed mixed = send<Mixed>(fixture, "mixed:"_sel, Mixed{41, 3});
    EXPECT_EQ(mixed.whole, 42);
    EXPECT_EQ(mixed.part, 1.5);
    CGSize ofClass = send<CGSize>(objc::classOf<SendFixture>(), "classSize"_sel);
    EXPECT_EQ(ofClass.width, 5);
    EXPECT_EQ(ofClass.height, 6);
  }
}

TEST_F(Send, ArgumentsBeyondTheRegisters) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send<double>(fixture, "sum:::::::::::::::"_sel, 1, 2.0, 3, 4.0, 5, 6.0, 7, 8.0, 9,
                           10.0, 11.0, 12.0, 13.0, 14.0, CGRect{{0, 0}, {0, 1000}}),
              1000 + 1 + 4 + 9 + 16 + 25 + 36 + 49 + 64 + 81 + 100 + 121 + 144 + 169 + 196);
  }
}

TEST_F(Send, VariadicArguments) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(objc::sendVariadic<double>(fixture.get(), "total:"_sel, 0), 0);
    EXPECT_EQ(objc::sendVariadic<double>(fixture.get(), "total:"_sel, 10, 1.0, 2.0, 3.0, 4.0, 5.0,
                                         6.0, 7.0, 8.0, 9.0, 10.0),
              55);
  }
  NSString* text = NSString::stringWithFormat("%d %s %.1f"_ns, 3, "x", 1.5);
  EXPECT_EQ(host::text(text), "3 x 1.5");
}

TEST_F(Send, SelectorKnownOnlyWhenRunning) {
  SEL doubled = sel_registerName("doubled:");
  EXPECT_EQ(objc::sendDynamic<CGSize>(fixture.get(), doubled, CGSize{1, 2}).height, 4);
  SEL frame = sel_registerName("frame");
  expectRect(objc::sendDynamic<CGRect>(fixture.get(), frame), 1, 2, 3, 4);
  expectRect(objc::sendDynamic<CGRect>(nullptr, frame), 0, 0, 0, 0);
}

TEST_F(Send, NilAnswersZero) {
  NSObject* nobody = nullptr;
  EXPECT_EQ(send<int>(nobody, "seven"_sel), 0);
  EXPECT_EQ(send<long>(nobody, "seven"_sel), 0);
  EXPECT_FALSE(send<bool>(nobody, "no"_sel));
  EXPECT_EQ(send<id>(nobody, "self"_sel), nullptr);
  EXPECT_EQ(send<Class>(nobody, "class"_sel), nullptr);
  send<void>(nobody, "seven"_sel);
}

TEST_F(Send, NilAnswersZeroWhateverTheFloatingPointRegistersHold) {
  NSObject* nobody = nullptr;
  // The arguments fill the registers that a result comes back in.
  EXPECT_EQ(send<double>(nobody, "product:by:by:"_sel, 1.5, 4, 2.0F), 0.0);
  EXPECT_EQ(send<float>(nobody, "product:by:by:"_sel, 1.5F, 4, 2.0F), 0.0F);
}

TEST_F(Send, NilAnswersZeroedStructures) {
  NSObject* nobody = nullptr;
  expectRect(send<CGRect>(nobody, "inset:by:"_sel, CGRect{{10, 20}, {30, 40}}, CGFloat{5}), 0, 0, 0,
             0);
  CGSize size = send<CGSize>(nobody, "doubled:"_sel, CGSize{3, 4});
  EXPECT_EQ(size.width, 0);
  EXPECT_EQ(size.height, 0);
  Triple triple = send<Triple>(nobody, "triple:"_sel, 40L);
  EXPECT_EQ(triple.a + triple.b + triple.c, 0);
  Mixed mixed = send<Mixed>(nobody, "mixed:"_sel, Mixed{41, 3});
  EXPECT_EQ(mixed.whole, 0);
  EXPECT_EQ(mixed.part, 0);
}

// The messenger by itself, as another extension calls it.
TEST_F(Send, TheBareMessengerZeroesBothRegistersOfAResult) {
  auto numberMessage = reinterpret_cast<long long (*)(id, SEL, long long)>(&objc_msgSend);
  EXPECT_EQ(numberMessage(nullptr, sel_registerName("number:"), 0x500000006), 0);
  auto realMessage = reinterpret_cast<double (*)(id, SEL, double)>(&objc_msgSend);
  EXPECT_EQ(realMessage(nullptr, sel_registerName("real:"), 1.1), 0);
  // In 32 bits numbers alone come back in two registers; structures are the business of another
  // messenger.
  if constexpr (sizeof(void*) < 8) return;
  auto message = reinterpret_cast<CGSize (*)(id, SEL, CGSize)>(&objc_msgSend);
  CGSize size = message(nullptr, sel_registerName("doubled:"), CGSize{3, 4});
  EXPECT_EQ(size.width, 0);
  EXPECT_EQ(size.height, 0);
  struct Pair {
    long first, second;
  };
  auto pairMessage = reinterpret_cast<Pair (*)(id, SEL, long)>(&objc_msgSend);
  Pair pair = pairMessage(nullptr, sel_registerName("pair:"), 5);
  EXPECT_EQ(pair.first, 0);
  EXPECT_EQ(pair.second, 0);
}

TEST_F(Send, AnUnknownSelectorRaises) {
  try {
    send<void>(fixture, "juggle:"_sel, 1);
    FAIL() << "no exception";
  } catch (const host::runtime::Exception& raised) {
    EXPECT_EQ(raised.name(), "NSInvalidArgumentException");
    EXPECT_EQ(raised.reason(), "-[SendFixture juggle:]: unrecognized selector");
  }
  EXPECT_THROW(send<CGRect>(fixture, "juggledFrame"_sel), host::runtime::Exception);
  try {
    send<void>(objc::classOf<SendFixture>(), "juggle"_sel);
    FAIL() << "no exception";
  } catch (const host::runtime::Exception& raised) {
    EXPECT_EQ(raised.reason(), "+[SendFixture juggle]: unrecognized selector");
  }
}

template <class T>
void expectOverrides() {
  auto object = Strong<T>::adopt(objc::alloc<T>());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send<int>(object, "seven"_sel), 17);
    EXPECT_EQ(send<double>(object, "product:by:by:"_sel, 1.5, 4, 2.0F), -12.0);
    expectRect(send<CGRect>(object, "frame"_sel), 100, 2, 3, 4);
    CGSize size = send<CGSize>(object, "doubled:"_sel, CGSize{3, 4});
    EXPECT_EQ(size.width, 8);
    EXPECT_EQ(size.height, 6);
  }
}

TEST(SendSuper, ReachesTheSuperclass) { expectOverrides<SendSubclass>(); }

TEST(SendSuper, StartsAboveTheClassOfTheMethodNotOfTheObject) {
  expectOverrides<SendSubSubclass>();
}

}  // namespace
