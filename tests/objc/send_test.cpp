// Declared messages: arguments and results of every kind, nil receivers, messages to super.
#include "objc/message.h"

#include <gtest/gtest.h>

#include <cstdarg>

#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"
#include "runtime/runtime.h"
#include "support/encodings.h"

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

using test::nativeEncoding;

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
  /// More arguments than registers, of both kinds.
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
  static double totalOfClass(Class, SEL, int count, ...) {
    va_list values;
    va_start(values, count);
    double sum = 0;
    for (int i = 0; i < count; ++i) sum -= va_arg(values, double);
    va_end(values);
    return sum;
  }
  static CGSize classSize() { return {5, 6}; }
  /// On 32 bits, the platform's own BOOL may be any byte.
  static unsigned char odd(SendFixture*, SEL) { return 2; }
  static unsigned char oddOfClass(Class, SEL) { return 0x80; }
  /// The byte of a BOOL argument, as another binary's code sees it.
  static int byteOf(SendFixture*, SEL, unsigned char flag) { return flag; }
  /// The same as our code sees it: any byte except zero means yes.
  int taken(bool flag) { return flag ? 1 : 0; }
  NSObject* echoed(NSObject* given) { return given; }

  static constexpr objc::Message<SendFixture, "seven", int()> kSeven{};
  static constexpr objc::Message<SendFixture, "no", bool()> kNo{};
  static constexpr objc::Message<SendFixture, "odd", bool()> kOdd{};
  static constexpr objc::Message<SendFixture, "half", float()> kHalf{};
  static constexpr objc::Message<SendFixture, "product:by:by:", double(double, int, float)>
      kProduct{};
  static constexpr objc::Message<SendFixture, "frame", CGRect()> kFrame{};
  static constexpr objc::Message<SendFixture, "inset:by:", CGRect(CGRect, CGFloat)> kInset{};
  static constexpr objc::Message<SendFixture, "doubled:", CGSize(CGSize)> kDoubled{};
  static constexpr objc::Message<SendFixture, "originOf:", CGPoint(CGRect)> kOrigin{};
  static constexpr objc::Message<SendFixture, "triple:", Triple(long)> kTriple{};
  static constexpr objc::Message<SendFixture, "mixed:", Mixed(Mixed)> kMixed{};
  static constexpr objc::Message<SendFixture, "self", SendFixture*()> kSelf{};
  static constexpr objc::Message<SendFixture, "sum:::::::::::::::",
                                 double(int, double, int, double, int, double, int, double, int,
                                        double, double, double, double, double, CGRect)>
      kSum{};
  static constexpr objc::Message<SendFixture, "total:", double(int, ...)> kTotal{};
  static constexpr objc::Message<SendFixture, "byteOf:", int(bool)> kByteOf{};
  static constexpr objc::Message<SendFixture, "taken:", int(bool)> kTaken{};
  static constexpr objc::Message<SendFixture, "echoed:", NSObject*(NSObject*)> kEchoed{};
  static constexpr objc::Message<SendFixture, "juggle:", void(int)> kJuggle{};
  static constexpr objc::Message<SendFixture, "juggledFrame", CGRect()> kJuggledFrame{};
  static constexpr objc::ClassMessage<SendFixture, "classSize", CGSize()> kClassSize{};
  static constexpr objc::ClassMessage<SendFixture, "oddOfClass", bool()> kOddOfClass{};
  static constexpr objc::ClassMessage<SendFixture, "totalOfClass:", double(int, ...)>
      kTotalOfClass{};
  static constexpr objc::ClassMessage<SendFixture, "juggle", void()> kJuggleOfClass{};
};

struct SendSubclass : SendFixture {
  int seven() { return sendSuper<SendSubclass>(this, kSeven) + 10; }
  double product(double a, int b, float c) {
    return -sendSuper<SendSubclass>(this, kProduct, a, b, c);
  }
  CGRect frame() {
    CGRect rect = sendSuper<SendSubclass>(this, kFrame);
    rect.origin.x = 100;
    return rect;
  }
  CGSize doubled(CGSize size) {
    CGSize twice = sendSuper<SendSubclass>(this, kDoubled, size);
    return {twice.height, twice.width};
  }
  static unsigned char odd(SendSubclass* self, SEL) {
    return sendSuper<SendSubclass>(self, kOdd) ? 4 : 0;
  }
  int taken(bool flag) { return 10 + sendSuper<SendSubclass>(this, kTaken, flag); }
};
/// Overrides nothing: a message to super must start above the class that sends it, not above the
/// object's.
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
           objc::Method<"total:", &SendFixture::total>, objc::Method<"odd", &SendFixture::odd>,
           objc::Method<"byteOf:", &SendFixture::byteOf>,
           objc::Method<"taken:", &SendFixture::taken>,
           objc::Method<"echoed:", &SendFixture::echoed>,
           objc::ClassMethod<"classSize", &SendFixture::classSize>,
           objc::ClassMethod<"oddOfClass", &SendFixture::oddOfClass>,
           objc::ClassMethod<"totalOfClass:", &SendFixture::totalOfClass>)
OBJC_CLASS(SendSubclass, SendFixture, objc::Method<"seven", &SendSubclass::seven>,
           objc::Method<"product:by:by:", &SendSubclass::product>,
           objc::Method<"frame", &SendSubclass::frame>,
           objc::Method<"doubled:", &SendSubclass::doubled>,
           objc::Method<"odd", &SendSubclass::odd>, objc::Method<"taken:", &SendSubclass::taken>)
OBJC_CLASS(SendSubSubclass, SendSubclass)

namespace {

using F = SendFixture;

/// No process has this class.
struct AbsentReceiver : objc::View<AbsentReceiver, NSObject> {
  static constexpr ClassMessage<"number", int()> number{};
  static constexpr ClassMessage<"size", CGSize()> size{};
  static constexpr ClassMessage<"frame", CGRect()> frame{};
  static constexpr ClassMessage<"half", double()> half{};
  static constexpr ClassMessage<"listOf:", NSObject*(NSObject*, ...)> listOf{};
};

template <class Receiver, class Message, class... A>
concept Sendable = requires(Receiver receiver, Message message, A... arguments) {
  send(receiver, message, arguments...);
};
using Fixture = SendFixture*;
static_assert(Sendable<Fixture, decltype(F::kSeven)>);
static_assert(!Sendable<Fixture, decltype(F::kSeven), int>);
static_assert(!Sendable<Fixture, decltype(F::kJuggle)>);
static_assert(Sendable<Fixture, decltype(F::kJuggle), int>);
static_assert(!Sendable<Fixture, decltype(F::kJuggle), int, int>);
static_assert(Sendable<Fixture, decltype(F::kInset), CGRect, CGFloat>);
static_assert(!Sendable<Fixture, decltype(F::kInset), CGFloat, CGRect>);
// An argument that does not convert to the declared type is refused, and so is a receiver of
// another class.
static_assert(!Sendable<Fixture, decltype(F::kInset), CGRect, CGRect>);
static_assert(!Sendable<Fixture, decltype(F::kEchoed), SEL>);
static_assert(Sendable<Fixture, decltype(F::kEchoed), NSString*>);
static_assert(Sendable<SendSubclass*, decltype(F::kSeven)>);
static_assert(!Sendable<NSObject*, decltype(F::kSeven)>);
static_assert(!Sendable<NSString*, decltype(F::kSeven)>);
static_assert(!Sendable<Class, decltype(F::kSeven)>);
static_assert(Sendable<Class, decltype(F::kClassSize)>);
static_assert(!Sendable<Fixture, decltype(F::kClassSize)>);

template <class Self, class Message, class... A>
concept SendableToSuper = requires(Self self, Message message, A... arguments) {
  sendSuper<SendSubclass>(self, message, arguments...);
};
static_assert(SendableToSuper<SendSubclass*, decltype(F::kJuggle), int>);
static_assert(!SendableToSuper<SendSubclass*, decltype(F::kJuggle)>);

// Each case sends twice: the first call looks the method up, the second finds it in the cache.
class Send : public testing::Test {
 protected:
  Strong<SendFixture> fixture = objc::make<SendFixture>();
};

void expectRect(CGRect rect, double x, double y, double width, double height) {
  EXPECT_EQ(rect.origin.x, x);
  EXPECT_EQ(rect.origin.y, y);
  EXPECT_EQ(rect.size.width, width);
  EXPECT_EQ(rect.size.height, height);
}

TEST_F(Send, ScalarResults) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send(fixture, F::kSeven), 7);
    EXPECT_FALSE(send(fixture, F::kNo));
    EXPECT_EQ(send(fixture, F::kHalf), 0.5F);
    EXPECT_EQ(send(fixture, F::kSelf), fixture.get());
  }
}

TEST_F(Send, MixedArguments) {
  for (int i = 0; i < 2; ++i) EXPECT_EQ(send(fixture, F::kProduct, 1.5, 4, 2.0F), 12.0);
}

TEST_F(Send, ArgumentsTravelAsDeclared) {
  for (int i = 0; i < 2; ++i) {
    // Neither has the type of the method's argument.
    EXPECT_EQ(send(fixture, F::kProduct, 3, 4, 2), 24.0);
    EXPECT_EQ(send(fixture, F::kProduct, 1.5F, static_cast<short>(4), 2.0F), 12.0);
    expectRect(send(fixture, F::kInset, {{10, 20}, {30, 40}}, 5), 15, 25, 20, 30);
    EXPECT_EQ(send(fixture, F::kTriple, 40).c, 42);
    EXPECT_EQ(send(fixture, F::kEchoed, fixture), fixture.get());
    EXPECT_EQ(send(fixture, F::kEchoed, nullptr), nullptr);
  }
}

TEST_F(Send, AnyByteButZeroIsYes) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(static_cast<int>(send(fixture, F::kOdd)), 1);
    EXPECT_EQ(static_cast<int>(F::kOddOfClass()), 1);
    EXPECT_EQ(static_cast<int>(objc::perform<bool>(fixture.get(), F::kOdd)), 1);
  }
}

TEST_F(Send, YesTravelsAsOne) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send(fixture, F::kByteOf, true), 1);
    EXPECT_EQ(send(fixture, F::kByteOf, false), 0);
    EXPECT_EQ(objc::perform<int>(fixture.get(), F::kByteOf, true), 1);
  }
}

TEST_F(Send, AMethodOfOursTakesAnyByteButZeroForYes) {
  auto taken = reinterpret_cast<int (*)(id, SEL, unsigned char)>(&objc_msgSend);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(taken(fixture, F::kTaken, 2), 1);
    EXPECT_EQ(taken(fixture, F::kTaken, 0x80), 1);
    EXPECT_EQ(taken(fixture, F::kTaken, 0), 0);
  }
}

TEST_F(Send, StructuresThatTravelInMemory) {
  for (int i = 0; i < 2; ++i) {
    expectRect(send(fixture, F::kFrame), 1, 2, 3, 4);
    expectRect(send(fixture, F::kInset, CGRect{{10, 20}, {30, 40}}, CGFloat{5}), 15, 25, 20, 30);
    Triple triple = send(fixture, F::kTriple, 40L);
    EXPECT_EQ(triple.a, 40);
    EXPECT_EQ(triple.b, 41);
    EXPECT_EQ(triple.c, 42);
  }
}

TEST_F(Send, StructuresThatTravelInRegisters) {
  for (int i = 0; i < 2; ++i) {
    CGSize size = send(fixture, F::kDoubled, CGSize{3, 4});
    EXPECT_EQ(size.width, 6);
    EXPECT_EQ(size.height, 8);
    CGPoint point = send(fixture, F::kOrigin, CGRect{{7, 8}, {9, 10}});
    EXPECT_EQ(point.x, 7);
    EXPECT_EQ(point.y, 8);
    Mixed mixed = send(fixture, F::kMixed, Mixed{41, 3});
    EXPECT_EQ(mixed.whole, 42);
    EXPECT_EQ(mixed.part, 1.5);
  }
}

TEST_F(Send, ClassMessagesReachTheClassAndThoseBelowIt) {
  for (int i = 0; i < 2; ++i) {
    CGSize ofClass = F::kClassSize();
    EXPECT_EQ(ofClass.width, 5);
    EXPECT_EQ(ofClass.height, 6);
    EXPECT_EQ(send(objc::classOf<SendFixture>(), F::kClassSize).height, 6);
    EXPECT_EQ(send(objc::classOf<SendSubSubclass>(), F::kClassSize).height, 6);
  }
}

TEST_F(Send, ArgumentsBeyondTheRegisters) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send(fixture, F::kSum, 1, 2.0, 3, 4.0, 5, 6.0, 7, 8.0, 9, 10.0, 11.0, 12.0, 13.0,
                   14.0, CGRect{{0, 0}, {0, 1000}}),
              1000 + 1 + 4 + 9 + 16 + 25 + 36 + 49 + 64 + 81 + 100 + 121 + 144 + 169 + 196);
  }
}

TEST_F(Send, VariadicArguments) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send(fixture, F::kTotal, 0), 0);
    EXPECT_EQ(send(fixture, F::kTotal, 10, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0), 55);
    EXPECT_EQ(F::kTotalOfClass(10, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0), -55);
    // The named argument is passed as declared, whatever its type is at the call.
    EXPECT_EQ(send(fixture, F::kTotal, short{2}, 0.5, 0.25), 0.75);
    EXPECT_EQ(F::kTotalOfClass(short{1}, 0.5), -0.5);
  }
  NSString* text = NSString::stringWithFormat("%d %s %.1f"_ns, 3, "x", 1.5);
  EXPECT_EQ(host::text(text), "3 x 1.5");
}

TEST_F(Send, SelectorKnownOnlyWhenRunning) {
  SEL doubled = sel_registerName("doubled:");
  EXPECT_EQ(objc::perform<CGSize>(fixture.get(), doubled, CGSize{1, 2}).height, 4);
  SEL frame = sel_registerName("frame");
  expectRect(objc::perform<CGRect>(fixture.get(), frame), 1, 2, 3, 4);
  expectRect(objc::perform<CGRect>(nullptr, frame), 0, 0, 0, 0);
  objc::perform<void>(nullptr, frame);
  EXPECT_EQ(objc::perform<int>(nullptr, frame), 0);
}

TEST_F(Send, ADeclarationIsItsSelectorToo) {
  EXPECT_EQ(SEL{F::kDoubled}, sel_registerName("doubled:"));
  EXPECT_EQ(SEL{F::kTotal}, sel_registerName("total:"));
  EXPECT_EQ(SEL{F::kClassSize}, sel_registerName("classSize"));
}

TEST_F(Send, ADeclarationHasItsMethodsTypes) {
  auto types = [](auto message) { return std::string(message.types().text); };
  EXPECT_EQ(types(F::kInset), nativeEncoding("{CGRect={CGPoint=dd}{CGSize=dd}}@:") +
                                  nativeEncoding("{CGRect={CGPoint=dd}{CGSize=dd}}d"));
  EXPECT_EQ(types(F::kProduct), "d@:dif");
  EXPECT_EQ(types(F::kTaken), nativeEncoding("i@:B"));
  EXPECT_EQ(types(F::kClassSize), nativeEncoding("{CGSize=dd}@:"));
  // Only the named arguments.
  EXPECT_EQ(types(F::kTotal), "d@:i");
}

TEST_F(Send, NilAnswersZero) {
  SendFixture* nobody = nullptr;
  EXPECT_EQ(send(nobody, F::kSeven), 0);
  EXPECT_FALSE(send(nobody, F::kOdd));
  EXPECT_EQ(send(nobody, F::kSelf), nullptr);
  EXPECT_EQ(send(nobody, NSObject::class_), nullptr);
  EXPECT_EQ(send(nobody, NSObject::hash), 0U);
  EXPECT_EQ(send(nobody, F::kTotal, 1, 2.0), 0);
  send(nobody, F::kJuggle, 1);
  send(nullptr, F::kJuggle, 1);
}

TEST_F(Send, NilAnswersZeroWhateverTheFloatingPointRegistersHold) {
  NSObject* nobody = nullptr;
  // The arguments fill the registers in which a result would be returned.
  EXPECT_EQ(send(nullptr, F::kProduct, 1.5, 4, 2.0F), 0.0);
  EXPECT_EQ((objc::perform<float>(nobody, F::kProduct, 1.5F, 4, 2.0F)), 0.0F);
}

TEST_F(Send, NilAnswersZeroedStructures) {
  SendFixture* nobody = nullptr;
  expectRect(send(nobody, F::kInset, CGRect{{10, 20}, {30, 40}}, CGFloat{5}), 0, 0, 0, 0);
  CGSize size = send(nobody, F::kDoubled, CGSize{3, 4});
  EXPECT_EQ(size.width, 0);
  EXPECT_EQ(size.height, 0);
  Triple triple = send(nobody, F::kTriple, 40L);
  EXPECT_EQ(triple.a + triple.b + triple.c, 0);
  Mixed mixed = send(nobody, F::kMixed, Mixed{41, 3});
  EXPECT_EQ(mixed.whole, 0);
  EXPECT_EQ(mixed.part, 0);
}

TEST_F(Send, AClassThatIsNotThereAnswersZero) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(AbsentReceiver::number(), 0);
    EXPECT_EQ(AbsentReceiver::half(), 0.0);
    EXPECT_EQ(AbsentReceiver::size().height, 0);
    expectRect(AbsentReceiver::frame(), 0, 0, 0, 0);
    EXPECT_EQ(AbsentReceiver::listOf(fixture, fixture.get()), nullptr);
    EXPECT_EQ(objc::alloc<AbsentReceiver>(), nullptr);
    EXPECT_EQ(objc::make<AbsentReceiver>(), nullptr);
    EXPECT_EQ(objc::as<AbsentReceiver>(fixture), nullptr);
  }
}

// The messenger by itself, as another extension calls it.
TEST_F(Send, TheBareMessengerZeroesBothRegistersOfAResult) {
  auto numberMessage = reinterpret_cast<long long (*)(id, SEL, long long)>(&objc_msgSend);
  EXPECT_EQ(numberMessage(nullptr, sel_registerName("number:"), 0x500000006), 0);
  auto realMessage = reinterpret_cast<double (*)(id, SEL, double)>(&objc_msgSend);
  EXPECT_EQ(realMessage(nullptr, sel_registerName("real:"), 1.1), 0);
  // On 32 bits only numbers are returned in two registers; structures use another messenger.
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
    send(fixture, F::kJuggle, 1);
    FAIL() << "no exception";
  } catch (const host::runtime::Exception& raised) {
    EXPECT_EQ(raised.name(), "NSInvalidArgumentException");
    EXPECT_EQ(raised.reason(), "-[SendFixture juggle:]: unrecognized selector");
  }
  EXPECT_THROW(send(fixture, F::kJuggledFrame), host::runtime::Exception);
  try {
    F::kJuggleOfClass();
    FAIL() << "no exception";
  } catch (const host::runtime::Exception& raised) {
    EXPECT_EQ(raised.reason(), "+[SendFixture juggle]: unrecognized selector");
  }
}

template <class T>
void expectOverrides() {
  auto object = objc::make<T>();
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send(object, F::kSeven), 17);
    EXPECT_EQ(send(object, F::kProduct, 1.5, 4, 2.0F), -12.0);
    expectRect(send(object, F::kFrame), 100, 2, 3, 4);
    CGSize size = send(object, F::kDoubled, CGSize{3, 4});
    EXPECT_EQ(size.width, 8);
    EXPECT_EQ(size.height, 6);
    EXPECT_EQ(static_cast<int>(send(object, F::kOdd)), 1);
    EXPECT_EQ(objc::perform<unsigned char>(object.get(), F::kOdd), 4);
    EXPECT_EQ(send(object, F::kTaken, true), 11);
  }
}

TEST(SendSuper, ReachesTheSuperclass) { expectOverrides<SendSubclass>(); }

TEST(SendSuper, StartsAboveTheClassOfTheMethodNotOfTheObject) {
  expectOverrides<SendSubSubclass>();
}

}  // namespace
