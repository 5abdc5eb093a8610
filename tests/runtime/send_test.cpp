// Messages by name: the types come from the call, and only the number of arguments is checked.
#include "runtime/send.h"

#include <gtest/gtest.h>

#include <cstdarg>

#include "objc/define.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"
#include "runtime/runtime.h"

/// Returned in memory on every processor.
struct Triple {
  long a, b, c;
};
OBJC_STRUCT(Triple, long, long, long);

namespace {

struct NamedFixture : NSObject {
  int seven() { return 7; }
  static unsigned char odd(NamedFixture*, SEL) { return 2; }
  double product(double a, int b, float c) { return a * b * static_cast<double>(c); }
  CGRect frame() { return {{1, 2}, {3, 4}}; }
  Triple triple(long from) { return {from, from + 1, from + 2}; }
  int sum(int a, long b, short c, int d, int e, int f, int g, int h) {
    return static_cast<int>(a + b + c + d + e + f + g + h);
  }
  double squares(double a, double b, double c, double d, double e, double f, double g, double h,
                 double i) {
    return a * a + b * b + c * c + d * d + e * e + f * f + g * g + h * h + i * i;
  }
  CGSize doubled(CGSize size) { return {size.width * 2, size.height * 2}; }
  static double added(double start, int count, va_list values) {
    for (int i = 0; i < count; ++i) start += va_arg(values, double);
    return start;
  }
  static double total(NamedFixture*, SEL, int count, ...) {
    va_list values;
    va_start(values, count);
    const double sum = added(0, count, values);
    va_end(values);
    return sum;
  }
  static double totalFrom(NamedFixture*, SEL, double start, int count, ...) {
    va_list values;
    va_start(values, count);
    const double sum = added(start, count, values);
    va_end(values);
    return sum;
  }
};
struct NamedChild : NamedFixture {
  int seven() { return sendSuper<int>(this, "seven"_sel) + 10; }
  CGRect frame() {
    CGRect rect = sendSuper<CGRect>(this, "frame"_sel);
    rect.origin.x = 100;
    return rect;
  }
  double product(double a, int b, float c) {
    return -sendSuper<double>(this, "product:by:by:"_sel, a, b, c);
  }
};
struct NamedGrandchild : NamedChild {};

}  // namespace

OBJC_CLASS(NamedFixture, NSObject, objc::Method<"seven", &NamedFixture::seven>,
           objc::Method<"odd", &NamedFixture::odd>,
           objc::Method<"product:by:by:", &NamedFixture::product>,
           objc::Method<"frame", &NamedFixture::frame>,
           objc::Method<"doubled:", &NamedFixture::doubled>,
           objc::Method<"triple:", &NamedFixture::triple>,
           objc::Method<"sum::::::::", &NamedFixture::sum>,
           objc::Method<"squares:::::::::", &NamedFixture::squares>,
           objc::Method<"total:", &NamedFixture::total>,
           objc::Method<"totalFrom:count:", &NamedFixture::totalFrom>)
OBJC_CLASS(NamedChild, NamedFixture, objc::Method<"seven", &NamedChild::seven>,
           objc::Method<"frame", &NamedChild::frame>,
           objc::Method<"product:by:by:", &NamedChild::product>)
OBJC_CLASS(NamedGrandchild, NamedChild)

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
concept SendableToSuper = requires(NamedFixture* self, Selector selector, A... arguments) {
  objc::sendSuper<void>(self, selector, arguments...);
};
static_assert(SendableToSuper<decltype("set:"_sel), int>);
static_assert(!SendableToSuper<decltype("set:"_sel)>);

void expectRect(CGRect rect, double x, double y, double width, double height) {
  EXPECT_EQ(rect.origin.x, x);
  EXPECT_EQ(rect.origin.y, y);
  EXPECT_EQ(rect.size.width, width);
  EXPECT_EQ(rect.size.height, height);
}

class SendByName : public testing::Test {
 protected:
  Strong<NamedFixture> fixture = objc::make<NamedFixture>();
};

TEST_F(SendByName, AnswersWhatTheCallSays) {
  EXPECT_EQ(send<int>(fixture, "seven"_sel), 7);
  EXPECT_EQ(static_cast<int>(send<bool>(fixture, "odd"_sel)), 1);
  EXPECT_EQ(send<unsigned char>(fixture, "odd"_sel), 2);
  EXPECT_EQ(send<double>(fixture, "product:by:by:"_sel, 1.5, 4, 2.0F), 12.0);
  expectRect(send<CGRect>(fixture, "frame"_sel), 1, 2, 3, 4);
  EXPECT_EQ(send<CGSize>(fixture, "doubled:"_sel, CGSize{3, 4}).height, 8);
}

TEST_F(SendByName, UnnamedArguments) {
  EXPECT_EQ(objc::sendVariadic<double>(fixture.get(), "total:"_sel, 0), 0);
  EXPECT_EQ(objc::sendVariadic<double>(fixture.get(), "total:"_sel, 3, 1.0, 2.0, 4.0), 7);
  EXPECT_EQ((objc::sendVariadic<double, double, int>(fixture.get(), "totalFrom:count:"_sel, 100, 3,
                                                     1.0, 2.0, 4.0)),
            107);
}

// The second time a method is found in the cache.
TEST_F(SendByName, ArgumentsAndResultsBeyondTheRegisters) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send<int>(fixture, "sum::::::::"_sel, 1, 2L, short{3}, 4, 5, 6, 7, 8), 36);
    EXPECT_EQ(
        send<double>(fixture, "squares:::::::::"_sel, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0),
        285);
    const auto triple = send<Triple>(fixture, "triple:"_sel, 40L);
    EXPECT_EQ(triple.a + triple.b + triple.c, 123);
    EXPECT_EQ(objc::sendVariadic<double>(fixture.get(), "total:"_sel, 9, 1.0, 2.0, 3.0, 4.0, 5.0,
                                         6.0, 7.0, 8.0, 9.5),
              45.5);
  }
}

// What the messenger itself leaves in the registers that return a structure.
TEST_F(SendByName, NilAnswersZeroInEveryRegister) {
  struct Pair {
    long first, second;
  };
#if defined(__aarch64__) || defined(__x86_64__)
  auto pair = reinterpret_cast<Pair (*)(id, SEL, long)>(&objc_msgSend);
  const Pair answer = pair(nullptr, "seven"_sel, 5);
  EXPECT_EQ(answer.first, 0);
  EXPECT_EQ(answer.second, 0);
  auto size = reinterpret_cast<CGSize (*)(id, SEL, CGSize)>(&objc_msgSend);
  EXPECT_EQ(size(nullptr, "doubled:"_sel, {3, 4}).width, 0);
  EXPECT_EQ(size(nullptr, "doubled:"_sel, {3, 4}).height, 0);
#endif
#if defined(__aarch64__)
  auto rect = reinterpret_cast<CGRect (*)(id, SEL, CGRect, double)>(&objc_msgSend);
  expectRect(rect(nullptr, "frame"_sel, {{1, 2}, {3, 4}}, 5), 0, 0, 0, 0);
#endif
}

TEST_F(SendByName, SelectorKnownOnlyWhenRunning) {
  expectRect(objc::sendDynamic<CGRect>(fixture.get(), sel_registerName("frame")), 1, 2, 3, 4);
  expectRect(objc::sendDynamic<CGRect>(nullptr, sel_registerName("frame")), 0, 0, 0, 0);
}

TEST_F(SendByName, NilAnswersZero) {
  NSObject* nobody = nullptr;
  EXPECT_EQ(send<int>(nobody, "seven"_sel), 0);
  EXPECT_EQ(send<long>(nobody, "seven"_sel), 0);
  EXPECT_FALSE(send<bool>(nobody, "odd"_sel));
  EXPECT_EQ(send<id>(nobody, "self"_sel), nullptr);
  EXPECT_EQ(send<Class>(nobody, "class"_sel), nullptr);
  // The arguments fill the registers in which a result would be returned.
  EXPECT_EQ(send<double>(nobody, "product:by:by:"_sel, 1.5, 4, 2.0F), 0.0);
  EXPECT_EQ(send<float>(nobody, "product:by:by:"_sel, 1.5F, 4, 2.0F), 0.0F);
  expectRect(send<CGRect>(nobody, "frame"_sel), 0, 0, 0, 0);
  EXPECT_EQ(send<CGSize>(nobody, "doubled:"_sel, CGSize{3, 4}).height, 0);
  send<void>(nobody, "seven"_sel);
}

TEST_F(SendByName, AnUnknownSelectorRaises) {
  try {
    send<void>(fixture, "juggle:"_sel, 1);
    FAIL() << "no exception";
  } catch (const host::runtime::Exception& raised) {
    EXPECT_EQ(raised.name(), "NSInvalidArgumentException");
    EXPECT_EQ(raised.reason(), "-[NamedFixture juggle:]: unrecognized selector");
  }
  EXPECT_THROW(send<CGRect>(fixture, "juggledFrame"_sel), host::runtime::Exception);
  try {
    send<void>(objc::classOf<NamedFixture>(), "juggle"_sel);
    FAIL() << "no exception";
  } catch (const host::runtime::Exception& raised) {
    EXPECT_EQ(raised.reason(), "+[NamedFixture juggle]: unrecognized selector");
  }
}

TEST_F(SendByName, SuperStartsAboveTheClassOfTheMethodNotOfTheObject) {
  auto object = objc::make<NamedGrandchild>();
  EXPECT_EQ(send<int>(object, "seven"_sel), 17);
  EXPECT_EQ(send<double>(object, "product:by:by:"_sel, 1.5, 4, 2.0F), -12.0);
  expectRect(send<CGRect>(object, "frame"_sel), 100, 2, 3, 4);
}

}  // namespace
