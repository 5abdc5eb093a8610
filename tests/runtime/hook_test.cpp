// Replaced methods: the injection framework's call, its saved implementations, and slots. Each case
// runs in a process of its own, since replacements stay.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

#include "Foundation/log.h"
#include "objc/define.h"
#include "objc/hook.h"
#include "platform/CoreGraphics.h"
#include "platform/Foundation.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace {

struct HookParent : NSObject {
  int number() { return 1; }
  double scaled(double by, int times, float plus) { return by * times + static_cast<double>(plus); }
  CGRect frame(CGRect rect, double by) {
    rect.origin.x += by;
    return rect;
  }
  CGSize size(CGSize size) { return {size.height, size.width}; }
  double many(int a, double b, int c, int d, int e, int f, double g, CGRect h) {
    return a + b + c + d + e + f + g + h.size.height;
  }
  static int ofClass() { return 3; }
  /// On 32 bits, the platform's own BOOL may be any byte.
  static unsigned char odd(HookParent*, SEL, unsigned char given) { return given; }
};
struct HookChild : HookParent {
  int own() { return 2; }
};
struct HookSibling : HookParent {};

constexpr objc::Message<HookParent, "number", int()> kNumber;
constexpr objc::Message<HookParent, "scaled:times:plus:", double(double, int, float)> kScaled;
constexpr objc::Message<HookParent, "frame:by:", CGRect(CGRect, double)> kFrame;
constexpr objc::Message<HookParent, "size:", CGSize(CGSize)> kSize;
constexpr objc::Message<HookParent,
                        "many::::::::", double(int, double, int, int, int, int, double, CGRect)>
    kMany;
constexpr objc::Message<HookParent, "odd:", bool(bool)> kOdd;
constexpr objc::ClassMessage<HookParent, "ofClass", int()> kOfClass;
constexpr objc::Message<HookChild, "own", int()> kOwn;

using Framework = void (*)(Class, SEL, IMP, IMP*);

Framework& framework() {
  static auto installed = reinterpret_cast<Framework>(dlsym(RTLD_NEXT, "MSHookMessageEx"));
  return installed;
}

}  // namespace

OBJC_CLASS(HookParent, NSObject, objc::Method<"number", &HookParent::number>,
           objc::Method<"scaled:times:plus:", &HookParent::scaled>,
           objc::Method<"frame:by:", &HookParent::frame>, objc::Method<"size:", &HookParent::size>,
           objc::Method<"many::::::::", &HookParent::many>, objc::Method<"odd:", &HookParent::odd>,
           objc::ClassMethod<"ofClass", &HookParent::ofClass>)
OBJC_CLASS(HookChild, HookParent, objc::Method<"own", &HookChild::own>)
OBJC_CLASS(HookSibling, HookParent)

/// Found before the host's own, so that a case may install another framework.
void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* saved) {
  framework()(cls, selector, replacement, saved);
}

namespace {

template <class F>
IMP imp(F* function) {
  return reinterpret_cast<IMP>(function);
}

int ninetyNine(id, SEL) { return 99; }
int fifty(id, SEL) { return 50; }

class Hooks : public testing::Test {
 protected:
  template <class T>
  static Strong<T> make() {
    return Strong<T>::adopt(objc::alloc<T>());
  }
  Strong<HookParent> parent = make<HookParent>();
  Strong<HookChild> child = make<HookChild>();
  Strong<HookSibling> sibling = make<HookSibling>();
  Class parentClass = objc::classOf<HookParent>();
  Class childClass = objc::classOf<HookChild>();

  int callSaved(IMP saved, id object, SEL selector) {
    return reinterpret_cast<int (*)(id, SEL)>(saved)(object, selector);
  }
};

TEST_F(Hooks, AnAbsentSelectorIsLoggedAndNothingElse) {
  IMP saved = imp(&fifty);
  const std::size_t before = host::logLines().size();
  MSHookMessageEx(childClass, "juggle"_sel, imp(&ninetyNine), &saved);
  EXPECT_EQ(saved, imp(&fifty));
  EXPECT_FALSE(class_respondsToSelector(childClass, "juggle"_sel));
  auto lines = host::logLines();
  ASSERT_EQ(lines.size(), before + 1);
  EXPECT_NE(lines.back().line.find("juggle"), std::string::npos);
  EXPECT_NE(lines.back().line.find("HookChild"), std::string::npos);
}

TEST_F(Hooks, NothingToHookIsIgnored) {
  IMP saved = nullptr;
  MSHookMessageEx(nullptr, "number"_sel, imp(&ninetyNine), &saved);
  MSHookMessageEx(childClass, nullptr, imp(&ninetyNine), &saved);
  MSHookMessageEx(childClass, "own"_sel, nullptr, &saved);
  EXPECT_EQ(saved, nullptr);
  EXPECT_EQ(send<int>(child, "own"_sel), 2);
}

TEST_F(Hooks, AnOwnMethodIsReplacedAndSaved) {
  IMP before = class_getMethodImplementation(childClass, "own"_sel);
  send<int>(child, "own"_sel);
  IMP saved = nullptr;
  MSHookMessageEx(childClass, "own"_sel, imp(&ninetyNine), &saved);
  EXPECT_EQ(saved, before);
  EXPECT_EQ(send<int>(child, "own"_sel), 99);
  EXPECT_EQ(callSaved(saved, child, "own"_sel), 2);
}

TEST_F(Hooks, WithoutASlotTheMethodIsReplacedAllTheSame) {
  MSHookMessageEx(childClass, "own"_sel, imp(&ninetyNine), nullptr);
  MSHookMessageEx(childClass, "number"_sel, imp(&ninetyNine), nullptr);
  EXPECT_EQ(send<int>(child, "own"_sel), 99);
  EXPECT_EQ(send<int>(child, "number"_sel), 99);
}

TEST_F(Hooks, AnInheritedMethodIsOverriddenInTheClassAlone) {
  send<int>(child, "number"_sel);
  IMP saved = nullptr;
  MSHookMessageEx(childClass, "number"_sel, imp(&ninetyNine), &saved);
  EXPECT_EQ(send<int>(child, "number"_sel), 99);
  EXPECT_EQ(send<int>(parent, "number"_sel), 1);
  EXPECT_EQ(send<int>(sibling, "number"_sel), 1);
  EXPECT_EQ(callSaved(saved, child, "number"_sel), 1);
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(childClass, "number"_sel)), "i@:");
}

TEST_F(Hooks, TheSavedOneFollowsTheSuperclass) {
  IMP saved = nullptr;
  MSHookMessageEx(childClass, "number"_sel, imp(&ninetyNine), &saved);
  EXPECT_EQ(callSaved(saved, child, "number"_sel), 1);
  method_setImplementation(class_getInstanceMethod(parentClass, "number"_sel), imp(&fifty));
  EXPECT_EQ(callSaved(saved, child, "number"_sel), 50);
  IMP savedOfParent = nullptr;
  MSHookMessageEx(parentClass, "number"_sel, imp(+[](id, SEL) { return 51; }), &savedOfParent);
  EXPECT_EQ(callSaved(saved, child, "number"_sel), 51);
  EXPECT_EQ(callSaved(savedOfParent, parent, "number"_sel), 50);
  EXPECT_EQ(send<int>(child, "number"_sel), 99);
}

TEST_F(Hooks, TwoOnOneMethodFormAChain) {
  IMP first = nullptr;
  IMP second = nullptr;
  MSHookMessageEx(childClass, "number"_sel, imp(&fifty), &first);
  MSHookMessageEx(childClass, "number"_sel, imp(&ninetyNine), &second);
  EXPECT_EQ(send<int>(child, "number"_sel), 99);
  EXPECT_EQ(callSaved(second, child, "number"_sel), 50);
  EXPECT_EQ(callSaved(first, child, "number"_sel), 1);
}

TEST_F(Hooks, AClassMethod) {
  IMP saved = nullptr;
  MSHookMessageEx(object_getClass(childClass), "ofClass"_sel, imp(&ninetyNine), &saved);
  EXPECT_EQ(send<int>(childClass, "ofClass"_sel), 99);
  EXPECT_EQ(send<int>(parentClass, "ofClass"_sel), 3);
  EXPECT_EQ(callSaved(saved, reinterpret_cast<id>(childClass), "ofClass"_sel), 3);
}

// Each saved stub below is called twice: the first call looks it up, the second finds it in the
// cache.
objc::Hook<kScaled, HookChild> scaledSlot;
double hookedScaled(HookChild* self, SEL command, double by, int times, float plus) {
  return 1000 + scaledSlot.original(self, command, by, times, plus);
}

TEST_F(Hooks, FloatingArgumentsPassThroughTheSavedOne) {
  scaledSlot.install<&hookedScaled>(childClass, kScaled);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send<double>(child, "scaled:times:plus:"_sel, 1.5, 4, 0.25F), 1006.25);
    EXPECT_EQ(send<double>(parent, "scaled:times:plus:"_sel, 1.5, 4, 0.25F), 6.25);
  }
}

objc::Hook<kFrame, HookChild> frameSlot;
CGRect hookedFrame(HookChild* self, SEL command, CGRect rect, double by) {
  CGRect answer = frameSlot.original(self, command, rect, by);
  answer.size.height = 77;
  return answer;
}

TEST_F(Hooks, StructuresInMemoryPassThroughTheSavedOne) {
  frameSlot.install<&hookedFrame>(childClass, kFrame);
  for (int i = 0; i < 2; ++i) {
    CGRect rect = send<CGRect>(child, "frame:by:"_sel, CGRect{{1, 2}, {3, 4}}, 10.0);
    EXPECT_EQ(rect.origin.x, 11);
    EXPECT_EQ(rect.origin.y, 2);
    EXPECT_EQ(rect.size.width, 3);
    EXPECT_EQ(rect.size.height, 77);
  }
}

objc::Hook<kSize, HookChild> sizeSlot;
CGSize hookedSize(HookChild* self, SEL command, CGSize size) {
  CGSize answer = sizeSlot.original(self, command, size);
  return {answer.width + 100, answer.height};
}

TEST_F(Hooks, StructuresInRegistersPassThroughTheSavedOne) {
  sizeSlot.install<&hookedSize>(childClass, kSize);
  for (int i = 0; i < 2; ++i) {
    CGSize size = send<CGSize>(child, "size:"_sel, CGSize{1, 2});
    EXPECT_EQ(size.width, 102);
    EXPECT_EQ(size.height, 1);
  }
}

objc::Hook<kMany, HookChild> manySlot;
double hookedMany(HookChild* self, SEL command, int a, double b, int c, int d, int e, int f,
                  double g, CGRect h) {
  return -manySlot.original(self, command, a, b, c, d, e, f, g, h);
}

TEST_F(Hooks, ArgumentsOnTheStackPassThroughTheSavedOne) {
  manySlot.install<&hookedMany>(childClass, kMany);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(send<double>(child, "many::::::::"_sel, 1, 2.0, 4, 8, 16, 32, 64.0,
                           CGRect{{0, 0}, {0, 128}}),
              -255);
  }
}

objc::Hook<kOdd, HookChild> oddSlot;
int oddGiven = -1;
int oddSaved = -1;
bool hookedOdd(HookChild* self, SEL command, bool flag) {
  oddGiven = flag;
  oddSaved = oddSlot.original(self, command, flag);
  return !flag;
}

TEST_F(Hooks, AnyByteButZeroIsYesOnTheWayThrough) {
  auto odd = reinterpret_cast<unsigned char (*)(id, SEL, unsigned char)>(&objc_msgSend);
  EXPECT_EQ(odd(child, kOdd, 2), 2);
  oddSlot.install<&hookedOdd>(childClass, kOdd);
  EXPECT_EQ(odd(child, kOdd, 2), 0);
  EXPECT_EQ(oddGiven, 1);
  EXPECT_EQ(oddSaved, 1);
  EXPECT_EQ(odd(child, kOdd, 0), 1);
  EXPECT_EQ(oddGiven, 0);
  EXPECT_EQ(oddSaved, 0);
}

TEST_F(Hooks, WhatWasReplacedAnswersAnyByteForYes) {
  method_setImplementation(class_getInstanceMethod(parentClass, kOdd),
                           imp(+[](id, SEL, unsigned char) -> unsigned char { return 0x80; }));
  oddSlot.install<&hookedOdd>(childClass, kOdd);
  send(child, kOdd, false);
  EXPECT_EQ(oddSaved, 1);
}

objc::Hook<kOfClass> ofClassSlot;
int hookedOfClass(Class self, SEL command) {
  return (self == objc::classOf<HookChild>() ? 100 : 10) + ofClassSlot.original(self, command);
}

TEST_F(Hooks, AClassMethodIsReplacedInTheMetaclass) {
  ofClassSlot.install<&hookedOfClass>(object_getClass(parentClass), kOfClass);
  EXPECT_EQ(kOfClass(), 13);
  EXPECT_EQ(send(childClass, kOfClass), 103);
}

TEST_F(Hooks, ManyInheritedMethodsEachKeepTheirOwnSaved) {
  constexpr int kMethods = 600;  // more than there are stubs
  Class above = parentClass;
  std::vector<IMP> saved(kMethods);
  for (int i = 0; i < kMethods; ++i) {
    SEL selector = sel_registerName(("stub" + std::to_string(i)).c_str());
    class_addMethod(above, selector, i % 2 == 0 ? imp(&fifty) : imp(&ninetyNine), "i@:");
    MSHookMessageEx(childClass, selector, imp(+[](id, SEL) { return 0; }),
                    &saved[static_cast<std::size_t>(i)]);
  }
  for (int i = 0; i < kMethods; ++i) {
    SEL selector = sel_registerName(("stub" + std::to_string(i)).c_str());
    EXPECT_EQ(callSaved(saved[static_cast<std::size_t>(i)], child, selector), i % 2 == 0 ? 50 : 99)
        << i;
    EXPECT_EQ(objc::sendDynamic<int>(child.get(), selector), 0);
  }
}

TEST_F(Hooks, AreObserved) {
  using host::runtime::Change;
  std::vector<Change> seen;
  host::runtime::observeChanges([&](const Change& change) { seen.push_back(change); });
  MSHookMessageEx(childClass, "number"_sel, imp(&fifty), nullptr);
  MSHookMessageEx(childClass, "juggle"_sel, imp(&fifty), nullptr);
  MSHookMessageEx(object_getClass(childClass), "ofClass"_sel, imp(&fifty), nullptr);
  host::runtime::observeChanges({});
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_EQ(seen[0].kind, Change::Kind::hook);
  EXPECT_EQ(seen[0].className, "HookChild");
  EXPECT_EQ(seen[0].selector, "number");
  EXPECT_FALSE(seen[0].classMethod);
  EXPECT_TRUE(seen[1].classMethod);
}

objc::Hook<kNumber, HookChild> numberSlot;
objc::Hook<kOwn> ownSlot;
int hookedNumber(HookChild* self, SEL command) { return 10 + numberSlot.original(self, command); }
int hookedOwn(HookChild* self, SEL command) { return 20 + ownSlot.original(self, command); }

/// What the replacements answered while they were live but nothing was saved yet.
int liveNumber = 0;
int liveOwn = 0;

/// A framework that goes live first and saves afterwards, and saves the superclass's present
/// implementation.
void lateFramework(Class cls, SEL selector, IMP replacement, IMP* saved) {
  objc_method* present = class_getInstanceMethod(cls, selector);
  IMP old = method_getImplementation(present);
  class_replaceMethod(cls, selector, replacement, method_getTypeEncoding(present));
  auto object = Strong<HookChild>::adopt(objc::alloc<HookChild>());
  const int answer = objc::sendDynamic<int>(object.get(), selector);
  (selector == "own"_sel.get() ? liveOwn : liveNumber) = answer;
  *saved = old;
}

TEST_F(Hooks, SlotsAreRightUnderAFrameworkThatSavesLate) {
  framework() = &lateFramework;
  numberSlot.install<&hookedNumber>(childClass, kNumber);
  ownSlot.install<&hookedOwn>(childClass, kOwn);
  EXPECT_EQ(liveNumber, 11);
  EXPECT_EQ(liveOwn, 22);
  EXPECT_EQ(send<int>(child, "number"_sel), 11);
  EXPECT_EQ(send<int>(child, "own"_sel), 22);
  EXPECT_EQ(send<int>(parent, "number"_sel), 1);
}

IMP savedWhenLive = nullptr;

TEST_F(Hooks, TheSlotHoldsAnImplementationBeforeTheFrameworkIsCalled) {
  framework() = [](Class, SEL, IMP, IMP* saved) { savedWhenLive = *saved; };
  IMP present = class_getMethodImplementation(childClass, "number"_sel);
  numberSlot.install<&hookedNumber>(childClass, kNumber);
  EXPECT_EQ(savedWhenLive, present);
}

TEST_F(Hooks, TheSlotFollowsTheSuperclassUnderTheHostsFramework) {
  numberSlot.install<&hookedNumber>(childClass, kNumber);
  EXPECT_EQ(send<int>(child, "number"_sel), 11);
  class_replaceMethod(parentClass, "number"_sel, imp(&fifty), "i@:");
  EXPECT_EQ(send<int>(child, "number"_sel), 60);
}

using host::runtime::Hooking;
using host::runtime::setHooking;

TEST_F(Hooks, AreDynamicUnlessTheProcessChooses) {
  unsetenv("VARNIX_HOOKING");
  EXPECT_EQ(host::runtime::hooking(), Hooking::dynamic);
}

TEST_F(Hooks, AreAsTheEnvironmentSays) {
  setenv("VARNIX_HOOKING", "late", 1);
  EXPECT_EQ(host::runtime::hooking(), Hooking::late);
}

TEST_F(Hooks, AreAsTheProcessSaysWhateverTheEnvironment) {
  setenv("VARNIX_HOOKING", "late", 1);
  setHooking(Hooking::snapshot);
  EXPECT_EQ(host::runtime::hooking(), Hooking::snapshot);
}

TEST_F(Hooks, AnotherWordInTheEnvironmentIsNoWayOfHooking) {
  for (const char* word : {"Late", "", "dynamic "}) {
    setenv("VARNIX_HOOKING", word, 1);
    EXPECT_THROW(MSHookMessageEx(childClass, "own"_sel, imp(&fifty), nullptr), std::runtime_error)
        << word;
  }
  EXPECT_EQ(send<int>(child, "own"_sel), 2);
}

TEST_F(Hooks, ASnapshotKeepsWhatTheSuperclassHad) {
  for (const Hooking how : {Hooking::snapshot, Hooking::late}) {
    setHooking(how);
    class_replaceMethod(parentClass, "number"_sel, imp(&fifty), "i@:");
    Class made = objc_allocateClassPair(parentClass,
                                        how == Hooking::late ? "LateChild" : "SnapshotChild", 0);
    objc_registerClassPair(made);
    auto object = Strong<NSObject>::adopt(class_createInstance(made, 0));
    IMP saved = nullptr;
    MSHookMessageEx(made, "number"_sel, imp(&ninetyNine), &saved);
    EXPECT_EQ(saved, imp(&fifty));
    class_replaceMethod(parentClass, "number"_sel, imp(+[](id, SEL) { return 51; }), "i@:");
    EXPECT_EQ(callSaved(saved, object, "number"_sel), 50);
    EXPECT_EQ(send<int>(object, "number"_sel), 99);
  }
}

TEST_F(Hooks, AnOwnMethodIsSavedAlikeInAll) {
  IMP before = class_getMethodImplementation(childClass, "own"_sel);
  for (const Hooking how : {Hooking::dynamic, Hooking::snapshot, Hooking::late}) {
    setHooking(how);
    IMP saved = nullptr;
    MSHookMessageEx(childClass, "own"_sel, imp(&ninetyNine), &saved);
    EXPECT_EQ(saved, before);
    class_replaceMethod(childClass, "own"_sel, before, "i@:");
  }
}

IMP racedSlot = nullptr;
std::atomic<int> emptySlots;
std::atomic<int> racedCalls;

/// Another thread calls it while it is being installed.
int racedReplacement(id, SEL) {
  racedCalls.fetch_add(1);
  if (__atomic_load_n(&racedSlot, __ATOMIC_ACQUIRE) == nullptr) emptySlots.fetch_add(1);
  return 99;
}

/// Replaces the method again and again while another thread calls it. True if a call found nothing
/// saved.
bool findsAnEmptySlot(Class cls, id object, Hooking how) {
  setHooking(how);
  emptySlots = racedCalls = 0;
  std::atomic<bool> done{false};
  std::atomic<int> calls{0};
  std::thread caller([&] {
    while (!done) {
      send<int>(object, "own"_sel);
      calls.fetch_add(1);
    }
  });
  IMP before = class_getMethodImplementation(cls, "own"_sel);
  constexpr int kRounds = 300;
  for (int i = 0; i < kRounds && emptySlots == 0; ++i) {
    class_replaceMethod(cls, "own"_sel, before, "i@:");
    // No call from the previous round is still running.
    const int soFar = calls;
    while (calls < soFar + 2) std::this_thread::yield();
    __atomic_store_n(&racedSlot, nullptr, __ATOMIC_RELEASE);
    MSHookMessageEx(cls, "own"_sel, imp(&racedReplacement), &racedSlot);
  }
  // However slow the machine is, the other thread has called it by now.
  while (racedCalls == 0) std::this_thread::yield();
  class_replaceMethod(cls, "own"_sel, before, "i@:");
  done = true;
  caller.join();
  return emptySlots != 0;
}

TEST_F(Hooks, AnotherThreadFindsNothingSavedUnderALateFrameworkAlone) {
  EXPECT_FALSE(findsAnEmptySlot(childClass, child, Hooking::dynamic));
  EXPECT_FALSE(findsAnEmptySlot(childClass, child, Hooking::snapshot));
  EXPECT_TRUE(findsAnEmptySlot(childClass, child, Hooking::late));
}

}  // namespace
