// The run-time on 64-bit Arm: what the messengers there have to get right. No test framework is
// installed for that architecture, so it counts for itself.
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

#include "Foundation/log.h"
#include "Foundation/text.h"
#include "objc/autorelease_pool.h"
#include "objc/block.h"
#include "objc/define.h"
#include "objc/hook.h"
#include "platform/CoreGraphics.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace {

int passed = 0;
int failed = 0;

void expect(bool holds, const char* condition, int line) {
  ++(holds ? passed : failed);
  if (!holds) std::printf("line %d: %s\n", line, condition);
}
#define EXPECT(...) expect((__VA_ARGS__), #__VA_ARGS__, __LINE__)

bool same(CGRect a, CGRect b) {
  return a.origin.x == b.origin.x && a.origin.y == b.origin.y && a.size.width == b.size.width &&
         a.size.height == b.size.height;
}
bool same(CGSize a, CGSize b) { return a.width == b.width && a.height == b.height; }

/// Three words: returned through the address in x8.
struct Triple {
  long a, b, c;
};

}  // namespace
OBJC_STRUCT(Triple, long, long, long);

namespace {

struct ArmParent : NSObject {
  double held;
  int number() { return 7; }
  int sum(int a, long b, short c, int d, int e, int f, int g, int h) {
    return static_cast<int>(a + b + c + d + e + f + g + h);
  }
  double scaled(double by, int times, float plus) { return by * times + static_cast<double>(plus); }
  double doubles(double a, double b, double c, double d, double e, double f, double g, double h,
                 double i) {
    return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h + 9 * i;
  }
  CGRect inset(CGRect rect, CGFloat by) {
    return {{rect.origin.x + by, rect.origin.y + by},
            {rect.size.width - by, rect.size.height - by}};
  }
  CGSize swapped(CGSize size) { return {size.height, size.width}; }
  Triple triple(long start) { return {start, start + 1, start + 2}; }
  static double total(ArmParent*, SEL, int count, ...) {
    va_list values;
    va_start(values, count);
    double all = 0;
    for (int i = 0; i < count; ++i)
      all += i % 2 == 0 ? va_arg(values, double) : va_arg(values, int);
    va_end(values);
    return all;
  }
};
struct ArmChild : ArmParent {
  int number() { return sendSuper<int>(this, "number"_sel) + 10; }
  double scaled(double by, int times, float plus) {
    return -sendSuper<double>(this, "scaled:times:plus:"_sel, by, times, plus);
  }
  CGRect inset(CGRect rect, CGFloat by) {
    CGRect result = sendSuper<CGRect>(this, "inset:by:"_sel, rect, by);
    result.origin.x = -result.origin.x;
    return result;
  }
  Triple triple(long start) { return sendSuper<Triple>(this, "triple:"_sel, start * 10); }
};
struct ArmSibling : ArmParent {};

}  // namespace

OBJC_CLASS(ArmParent, NSObject, objc::Ivar<"held", &ArmParent::held>,
           objc::Method<"number", &ArmParent::number>, objc::Method<"sum::::::::", &ArmParent::sum>,
           objc::Method<"scaled:times:plus:", &ArmParent::scaled>,
           objc::Method<"doubles:::::::::", &ArmParent::doubles>,
           objc::Method<"inset:by:", &ArmParent::inset>,
           objc::Method<"swapped:", &ArmParent::swapped>,
           objc::Method<"triple:", &ArmParent::triple>, objc::Method<"total:", &ArmParent::total>)
OBJC_CLASS(ArmChild, ArmParent, objc::Method<"number", &ArmChild::number>,
           objc::Method<"scaled:times:plus:", &ArmChild::scaled>,
           objc::Method<"inset:by:", &ArmChild::inset>, objc::Method<"triple:", &ArmChild::triple>)
OBJC_CLASS(ArmSibling, ArmParent)

namespace {

constexpr CGRect kRect{{1, 2}, {30, 40}};

template <class T>
Strong<T> make() {
  return Strong<T>::adopt(objc::alloc<T>());
}

void sends() {
  auto object = make<ArmParent>();
  for (int i = 0; i < 2; ++i) {  // looked up, then found in the cache
    EXPECT(send<int>(object, "number"_sel) == 7);
    EXPECT(send<int>(object, "sum::::::::"_sel, 1, 2L, short{3}, 4, 5, 6, 7, 8) == 36);
    EXPECT(send<double>(object, "scaled:times:plus:"_sel, 1.5, 4, 0.25F) == 6.25);
    EXPECT(send<double>(object, "doubles:::::::::"_sel, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0,
                        9.0) == 285);
    EXPECT(same(send<CGRect>(object, "inset:by:"_sel, kRect, CGFloat{5}), {{6, 7}, {25, 35}}));
    EXPECT(same(send<CGSize>(object, "swapped:"_sel, CGSize{3, 4}), CGSize{4, 3}));
    Triple triple = send<Triple>(object, "triple:"_sel, 40L);
    EXPECT(triple.a == 40 && triple.b == 41 && triple.c == 42);
    EXPECT(objc::sendVariadic<double>(object.get(), "total:"_sel, 9, 1.0, 2, 3.0, 4, 5.0, 6, 7.0, 8,
                                      9.5) == 45.5);
  }
}

void nilReceivers() {
  NSObject* nobody = nullptr;
  EXPECT(send<int>(nobody, "number"_sel) == 0);
  EXPECT(send<double>(nobody, "scaled:times:plus:"_sel, 1.5, 4, 0.25F) == 0);
  EXPECT(same(send<CGRect>(nobody, "inset:by:"_sel, kRect, CGFloat{5}), CGRect{}));
  // The messenger by itself: these results travel in registers, the rectangle in four of them.
  auto rect = reinterpret_cast<CGRect (*)(id, SEL, CGRect, double)>(&objc_msgSend);
  EXPECT(same(rect(nullptr, "inset:by:"_sel, kRect, 5), CGRect{}));
  auto size = reinterpret_cast<CGSize (*)(id, SEL, CGSize)>(&objc_msgSend);
  EXPECT(same(size(nullptr, "swapped:"_sel, {3, 4}), CGSize{}));
  struct Pair {
    long first, second;
  };
  auto pair = reinterpret_cast<Pair (*)(id, SEL, long)>(&objc_msgSend);
  Pair answer = pair(nullptr, "number"_sel, 5);
  EXPECT(answer.first == 0 && answer.second == 0);
}

void superSends() {
  auto object = make<ArmChild>();
  for (int i = 0; i < 2; ++i) {
    EXPECT(send<int>(object, "number"_sel) == 17);
    EXPECT(send<double>(object, "scaled:times:plus:"_sel, 1.5, 4, 0.25F) == -6.25);
    EXPECT(same(send<CGRect>(object, "inset:by:"_sel, kRect, CGFloat{5}), {{-6, 7}, {25, 35}}));
    EXPECT(send<Triple>(object, "triple:"_sel, 4L).c == 42);
  }
}

constexpr objc::Message<ArmParent, "number", int()> kNumber;
constexpr objc::Message<ArmParent, "scaled:times:plus:", double(double, int, float)> kScaled;
constexpr objc::Message<ArmParent, "inset:by:", CGRect(CGRect, CGFloat)> kInset;
constexpr objc::Message<ArmParent, "triple:", Triple(long)> kTriple;
constexpr objc::Message<ArmParent, "sum::::::::", int(int, long, short, int, int, int, int, int)>
    kSum;
objc::Hook<kNumber, ArmSibling> numberSlot;
objc::Hook<kScaled, ArmSibling> scaledSlot;
objc::Hook<kInset, ArmSibling> insetSlot;
objc::Hook<kTriple, ArmSibling> tripleSlot;
objc::Hook<kSum, ArmSibling> sumSlot;

int hookedNumber(ArmSibling* self, SEL command) { return 100 + numberSlot.original(self, command); }
double hookedScaled(ArmSibling* self, SEL command, double by, int times, float plus) {
  return 100 + scaledSlot.original(self, command, by, times, plus);
}
CGRect hookedInset(ArmSibling* self, SEL command, CGRect rect, CGFloat by) {
  CGRect answer = insetSlot.original(self, command, rect, by);
  answer.size.height = 99;
  return answer;
}
Triple hookedTriple(ArmSibling* self, SEL command, long start) {
  Triple answer = tripleSlot.original(self, command, start);
  answer.a = -answer.a;
  return answer;
}
int hookedSum(ArmSibling* self, SEL command, int a, long b, short c, int d, int e, int f, int g,
              int h) {
  return -sumSlot.original(self, command, a, b, c, d, e, f, g, h);
}

void hooks() {
  auto object = make<ArmSibling>();
  auto parent = make<ArmParent>();
  Class cls = object->isa;
  numberSlot.install<&hookedNumber>(cls, kNumber);
  scaledSlot.install<&hookedScaled>(cls, kScaled);
  insetSlot.install<&hookedInset>(cls, kInset);
  tripleSlot.install<&hookedTriple>(cls, kTriple);
  sumSlot.install<&hookedSum>(cls, kSum);
  for (int i = 0; i < 2; ++i) {
    EXPECT(send<int>(object, "number"_sel) == 107);
    EXPECT(send<int>(parent, "number"_sel) == 7);
    EXPECT(send<double>(object, "scaled:times:plus:"_sel, 1.5, 4, 0.25F) == 106.25);
    EXPECT(same(send<CGRect>(object, "inset:by:"_sel, kRect, CGFloat{5}), {{6, 7}, {25, 99}}));
    Triple triple = send<Triple>(object, "triple:"_sel, 40L);
    EXPECT(triple.a == -40 && triple.b == 41 && triple.c == 42);
    EXPECT(send<int>(object, "sum::::::::"_sel, 1, 2L, short{3}, 4, 5, 6, 7, 8) == -36);
  }
  // The saved implementation follows the superclass.
  IMP other = reinterpret_cast<IMP>(+[](id, SEL) { return 50; });
  method_setImplementation(class_getInstanceMethod(parent->isa, "number"_sel), other);
  EXPECT(send<int>(object, "number"_sel) == 150);
  EXPECT(send<int>(parent, "number"_sel) == 50);
  // An absent selector.
  IMP saved = other;
  MSHookMessageEx(cls, "juggle"_sel, other, &saved);
  EXPECT(saved == other);
  EXPECT(host::logLines().size() == 1);
}

void exceptions() {
  auto object = make<ArmParent>();
  std::string reason;
  try {
    send<Triple>(object, "juggle:"_sel, 1);
  } catch (const host::runtime::Exception& raised) {
    reason = raised.reason();
  }
  EXPECT(reason == "-[ArmParent juggle:]: unrecognized selector");
}

void objects() {
  auto owner = make<NSObject>();
  auto value = make<NSObject>();
  objc_setAssociatedObject(owner, &passed, value, AssociationPolicy::retain);
  EXPECT(send<unsigned long>(value, "retainCount"_sel) == 2);
  owner = nullptr;
  EXPECT(send<unsigned long>(value, "retainCount"_sel) == 1);
  {
    objc::AutoreleasePool pool;
    Strong<NSObject>(value).autorelease();
    EXPECT(send<unsigned long>(value, "retainCount"_sel) == 2);
    EXPECT(host::text(NSString::stringWithFormat("%d %.1f %@"_ns, 3, 1.5, "x"_ns)) == "3 1.5 x");
  }
  EXPECT(send<unsigned long>(value, "retainCount"_sel) == 1);
  auto onStack = objc::makeBlock<double(double, int)>([value](double a, int b) { return a * b; });
  objc::Block<double(double, int)> block = onStack;
  auto* copy = static_cast<decltype(block)>(_Block_copy(block));
  EXPECT((*copy)(1.5, 2) == 3);
  EXPECT(send<unsigned long>(value, "retainCount"_sel) == 3);
  _Block_release(copy);
  EXPECT(send<unsigned long>(value, "retainCount"_sel) == 2);
  EXPECT(class_getInstanceSize(objc::classOf<ArmChild>()) == 16);
}

void threads() {
  auto object = make<ArmChild>();
  IMP answers[] = {reinterpret_cast<IMP>(+[](id, SEL) { return 1; }),
                   reinterpret_cast<IMP>(+[](id, SEL) { return 2; })};
  class_replaceMethod(object->isa, "raced"_sel, answers[0], "i@:");
  std::atomic<int> wrong{0};
  {
    std::vector<std::jthread> sending;
    for (int i = 0; i < 4; ++i) {
      sending.emplace_back([&] {
        for (int n = 0; n < 5000; ++n) {
          const int answer = send<int>(object, "raced"_sel);
          if (answer != 1 && answer != 2) ++wrong;
        }
      });
    }
    for (int i = 0; i < 500; ++i)
      class_replaceMethod(object->isa, "raced"_sel, answers[i % 2], "i@:");
  }
  EXPECT(wrong == 0);
  EXPECT(send<int>(object, "raced"_sel) == 2);
}

}  // namespace

int main() {
  sends();
  nilReceivers();
  superSends();
  hooks();
  exceptions();
  objects();
  threads();
  std::printf("%d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
