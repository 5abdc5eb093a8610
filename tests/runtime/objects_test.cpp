// Instances: reference counts, autorelease pools, associated objects, counters.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "objc/association.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "objc/hook.h"
#include "platform/Foundation.h"
#include "runtime/runtime.h"
#include "runtime/send.h"

namespace {

using Events = std::vector<std::string>;
Events& events() {
  static Events list;
  return list;
}

/// Reports when it is copied and when it is freed.
struct ObservedObject : NSObject {
  int number;
  ObservedObject* copy() {
    auto* made = objc::alloc<ObservedObject>();
    made->number = number + 100;
    events().push_back("copy " + std::to_string(number));
    return made;
  }
  void dealloc() {
    events().push_back("gone " + std::to_string(number));
    sendSuper<void>(this, "dealloc"_sel);
  }
  int answer() { return 1; }
};
/// While it is freed, reads its associated object and autoreleases something.
struct LastLookObject : NSObject {
  void dealloc() {
    {
      objc::AutoreleasePool pool;
      auto* value = objc::associated<ObservedObject>(this, "value"_sel);
      events().push_back("owner sees " + std::to_string(value == nullptr ? -1 : value->number));
    }
    sendSuper<void>(this, "dealloc"_sel);
    events().push_back("owner gone");
  }
};
struct ChainedObject : NSObject {
  Strong<ObservedObject> held;
  void dealloc() {
    objc_autorelease(held.leak());
    sendSuper<void>(this, "dealloc"_sel);
  }
};
/// Is retained and released while it is freed, like an object that passes itself to others there.
struct HandedOutObject : ObservedObject {
  void dealloc() {
    objc_release(objc_retain(this));
    {
      objc::AutoreleasePool pool;
      send<id>(send<id>(this, "retain"_sel), "autorelease"_sel);
    }
    events().push_back("references " + std::to_string(send<NSUInteger>(this, "retainCount"_sel)));
    sendSuper<void>(this, "dealloc"_sel);
  }
};
/// Counts its references itself, and also calls its superclass.
struct SelfCountingObject : ObservedObject {
  int retains;
  int releases;
  int autoreleases;
  SelfCountingObject* later() {
    ++autoreleases;
    return sendSuper<SelfCountingObject*>(this, "autorelease"_sel);
  }
  SelfCountingObject* keep() {
    ++retains;
    return sendSuper<SelfCountingObject*>(this, "retain"_sel);
  }
  void let() {
    ++releases;
    sendSuper<void>(this, "release"_sel);
  }
};
struct HookedCountingObject : ObservedObject {};
struct HookedCountingChild : HookedCountingObject {};

}  // namespace

OBJC_CLASS(ObservedObject, NSObject, objc::Ivar<"number", &ObservedObject::number>,
           objc::Method<"copy", &ObservedObject::copy>,
           objc::Method<"dealloc", &ObservedObject::dealloc>,
           objc::Method<"answer", &ObservedObject::answer>)
OBJC_CLASS(LastLookObject, NSObject, objc::Method<"dealloc", &LastLookObject::dealloc>)
OBJC_CLASS(ChainedObject, NSObject, objc::Ivar<"held", &ChainedObject::held>,
           objc::Method<"dealloc", &ChainedObject::dealloc>)
OBJC_CLASS(HandedOutObject, ObservedObject, objc::Method<"dealloc", &HandedOutObject::dealloc>)
OBJC_CLASS(SelfCountingObject, ObservedObject, objc::Ivar<"retains", &SelfCountingObject::retains>,
           objc::Ivar<"releases", &SelfCountingObject::releases>,
           objc::Ivar<"autoreleases", &SelfCountingObject::autoreleases>,
           objc::Method<"autorelease", &SelfCountingObject::later>,
           objc::Method<"retain", &SelfCountingObject::keep>,
           objc::Method<"release", &SelfCountingObject::let>)
OBJC_CLASS(HookedCountingObject, ObservedObject)
OBJC_CLASS(HookedCountingChild, HookedCountingObject)

namespace {

template <class T = ObservedObject>
Strong<T> make(int number = 0) {
  auto object = Strong<T>::adopt(objc::alloc<T>());
  if constexpr (requires { object->number; }) object->number = number;
  return object;
}
NSUInteger references(NSObject* object) { return send<NSUInteger>(object, "retainCount"_sel); }

class Observed : public testing::Test {
 protected:
  Observed() { events().clear(); }
};
using References = Observed;
using Pools = Observed;
using Associations = Observed;
using Counters = Observed;

TEST_F(References, EndTheObjectWithTheLast) {
  auto* object = make(1).leak();
  EXPECT_EQ(objc_retain(object), object);
  EXPECT_EQ(send<id>(object, "retain"_sel), object);
  EXPECT_EQ(references(object), 3U);
  objc_release(object);
  send<void>(object, "release"_sel);
  EXPECT_EQ(references(object), 1U);
  EXPECT_EQ(events(), Events{});
  objc_release(object);
  EXPECT_EQ(events(), Events{"gone 1"});
}

TEST_F(References, TakenAndGivenBackWhileItGoesEndItOnce) {
  objc_release(make<HandedOutObject>(1).leak());
  EXPECT_EQ(events(), (Events{"references 1", "gone 1"}));
}

TEST_F(References, OfNilAreNothing) {
  EXPECT_EQ(objc_retain(nullptr), nullptr);
  EXPECT_EQ(objc_autorelease(nullptr), nullptr);
  objc_release(nullptr);
}

TEST_F(References, OfAClassAndOfAConstantStringAreNotCounted) {
  Class cls = objc::classOf<ObservedObject>();
  auto* asObject = reinterpret_cast<id>(cls);
  id constant = "constant"_ns;
  for (id object : {asObject, constant}) {
    EXPECT_EQ(objc_retain(object), object);
    EXPECT_EQ(send<id>(object, "retain"_sel), object);
    for (int i = 0; i < 5; ++i) objc_release(object);
    send<void>(object, "release"_sel);
    objc::AutoreleasePool pool;
    send<id>(object, "autorelease"_sel);
    objc_autorelease(object);
  }
  EXPECT_EQ(send<Class>(cls, "class"_sel), cls);
  EXPECT_EQ(send(static_cast<NSString*>(constant), NSString::length), 8U);
}

TEST_F(References, GoThroughAClasssOwnMethods) {
  auto* object = make<SelfCountingObject>(1).leak();
  objc_retain(object);
  send<id>(object, "retain"_sel);
  EXPECT_EQ(object->retains, 2);
  EXPECT_EQ(references(object), 3U);
  objc_release(object);
  objc_release(object);
  EXPECT_EQ(object->releases, 2);
  auto value = make(2);
  objc_setAssociatedObject(object, "value"_sel.get(), value, AssociationPolicy::retain);
  objc_release(object);
  EXPECT_EQ(events(), Events{"gone 1"});
  EXPECT_EQ(references(value), 1U);
}

TEST_F(References, GoThroughAClasssOwnAutorelease) {
  auto object = make<SelfCountingObject>(1);
  {
    objc::AutoreleasePool pool;
    objc_retain(object);
    EXPECT_EQ(objc_autorelease(object), object.get());
    EXPECT_EQ(object->autoreleases, 1);
    EXPECT_EQ(object->releases, 0);
  }
  EXPECT_EQ(object->autoreleases, 1);
  EXPECT_EQ(object->releases, 1);
  EXPECT_EQ(references(object), 1U);
}

constexpr objc::Message<NSObject, "retain", id()> kRetain;
objc::Hook<kRetain> retainSlot;
int hookedRetains = 0;
id hookedRetain(id self, SEL command) {
  ++hookedRetains;
  return retainSlot.original(self, command);
}

TEST_F(References, GoThroughAReplacedRetain) {
  auto object = make<HookedCountingObject>(1);
  auto child = make<HookedCountingChild>(2);
  retainSlot.install<&hookedRetain>(object->isa, kRetain);
  Strong<HookedCountingObject>::retain(object);
  EXPECT_EQ(hookedRetains, 1);
  Strong<HookedCountingChild>::retain(child);
  EXPECT_EQ(hookedRetains, 2);
  EXPECT_EQ(references(object), 1U);
  object = nullptr;
  EXPECT_EQ(events(), Events{"gone 1"});
}

TEST_F(Pools, Nest) {
  {
    objc::AutoreleasePool outer;
    objc_autorelease(make(1).leak());
    {
      objc::AutoreleasePool inner;
      objc_autorelease(make(2).leak());
      send<id>(make(3).leak(), "autorelease"_sel);
      EXPECT_EQ(events(), Events{});
    }
    EXPECT_EQ(events(), (Events{"gone 3", "gone 2"}));
    objc_autorelease(make(4).leak());
  }
  EXPECT_EQ(events(), (Events{"gone 3", "gone 2", "gone 4", "gone 1"}));
}

TEST_F(Pools, ReleaseOnceForEachTime) {
  auto object = make(1);
  {
    objc::AutoreleasePool pool;
    for (int i = 0; i < 3; ++i) objc_autorelease(objc_retain(object));
    EXPECT_EQ(references(object), 4U);
  }
  EXPECT_EQ(references(object), 1U);
}

TEST_F(Pools, TakeWhatIsAutoreleasedWhileTheyDrain) {
  {
    objc::AutoreleasePool pool;
    auto chained = make<ChainedObject>();
    chained->held = make(7);
    chained.autorelease();
    EXPECT_EQ(events(), Events{});
  }
  EXPECT_EQ(events(), Events{"gone 7"});
}

TEST_F(Pools, ThePopOfAnOuterOneDrainsTheInnerOnes) {
  void* outer = objc_autoreleasePoolPush();
  objc_autoreleasePoolPush();
  objc_autorelease(make(1).leak());
  objc_autoreleasePoolPop(outer);
  EXPECT_EQ(events(), Events{"gone 1"});
}

TEST_F(Pools, WhatLiesInNoneGoesWithItsThread) {
  std::thread([] { objc_autorelease(make(1).leak()); }).join();
  EXPECT_EQ(events(), Events{"gone 1"});
}

TEST_F(Pools, AnExceptionDrainsThem) {
  EXPECT_THROW(
      {
        objc::AutoreleasePool pool;
        auto object = make(1);
        send<void>(Strong<ObservedObject>(object).autorelease(), "juggle"_sel);
      },
      host::runtime::Exception);
  EXPECT_EQ(events(), Events{"gone 1"});
}

struct Policy {
  AssociationPolicy policy;
  bool keeps;
  bool copies;
};
class AssociationPolicies : public Observed, public testing::WithParamInterface<Policy> {};

TEST_P(AssociationPolicies, KeepTheValueUntilItsOwnerIsGone) {
  const Policy& given = GetParam();
  auto value = make(1);
  auto owner = make<LastLookObject>();
  objc::associate(owner, "value"_sel, value, given.policy);
  ObservedObject* kept = nullptr;
  {
    objc::AutoreleasePool pool;
    kept = objc::associated<ObservedObject>(owner, "value"_sel);
  }
  EXPECT_EQ(kept == value.get(), !given.copies);
  EXPECT_EQ(kept->number, given.copies ? 101 : 1);
  EXPECT_EQ(references(value), given.keeps && !given.copies ? 2U : 1U);
  if (given.copies) {
    EXPECT_EQ(references(kept), 1U);
  }
  events().clear();
  if (given.keeps) value = nullptr;
  EXPECT_EQ(events(), given.copies ? Events{"gone 1"} : Events{});
  events().clear();
  owner = nullptr;
  if (!given.keeps) {
    EXPECT_EQ(events(), (Events{"owner sees 1", "owner gone"}));
    EXPECT_EQ(references(value), 1U);
  } else {
    const std::string number = given.copies ? "101" : "1";
    EXPECT_EQ(events(), (Events{"owner sees " + number, "gone " + number, "owner gone"}));
  }
}

TEST_P(AssociationPolicies, LetGoOfAReplacedValue) {
  const Policy& given = GetParam();
  auto first = make(1);
  auto second = make(2);
  auto owner = make();
  objc::associate(owner, "value"_sel, first, given.policy);
  events().clear();
  objc::associate(owner, "value"_sel, second, given.policy);
  EXPECT_EQ(references(first), 1U);
  EXPECT_EQ(events(), given.copies ? (Events{"copy 2", "gone 101"}) : Events{});
  events().clear();
  objc::associate(owner, "value"_sel, nullptr, given.policy);
  EXPECT_EQ(references(second), 1U);
  EXPECT_EQ(events(), given.copies ? Events{"gone 102"} : Events{});
  EXPECT_EQ(objc::associated<ObservedObject>(owner, "value"_sel), nullptr);
}

/// A reader of an atomic association keeps what it got until its pool ends, even if it is replaced.
TEST_P(AssociationPolicies, OutliveTheirReplacementForAReaderWhereAtomic) {
  const Policy& given = GetParam();
  const bool atomic = static_cast<std::uintptr_t>(given.policy) >= 0x300;
  const Events gone = given.keeps ? Events{given.copies ? "gone 101" : "gone 1"} : Events{};
  auto owner = make();
  auto value = make(1);
  objc::associate(owner, "value"_sel, value, given.policy);
  if (given.keeps) value = nullptr;
  events().clear();
  {
    objc::AutoreleasePool pool;
    auto* seen = objc::associated<ObservedObject>(owner, "value"_sel);
    EXPECT_EQ(references(seen), atomic ? 2U : 1U);
    objc::associate(owner, "value"_sel, nullptr, given.policy);
    EXPECT_EQ(events(), atomic ? Events{} : gone);
  }
  EXPECT_EQ(events(), gone);
}

INSTANTIATE_TEST_SUITE_P(All, AssociationPolicies,
                         testing::Values(Policy{AssociationPolicy{0}, false, false},
                                         Policy{AssociationPolicy{1}, true, false},
                                         Policy{AssociationPolicy{3}, true, true},
                                         Policy{AssociationPolicy{0x301}, true, false},
                                         Policy{AssociationPolicy{0x303}, true, true}));

TEST_F(Associations, AreKeptPerOwnerAndKey) {
  auto one = make(1);
  auto two = make(2);
  auto first = make(10);
  auto second = make(20);
  objc::associate(one, "a"_sel, first, AssociationPolicy::retain);
  objc::associate(one, "b"_sel, second, AssociationPolicy::retain);
  objc::associate(two, "a"_sel, second, AssociationPolicy::retain);
  {
    objc::AutoreleasePool pool;
    EXPECT_EQ(objc::associated<NSObject>(one, "a"_sel), first.get());
    EXPECT_EQ(objc::associated<NSObject>(one, "b"_sel), second.get());
    EXPECT_EQ(objc::associated<NSObject>(two, "a"_sel), second.get());
    EXPECT_EQ(objc::associated<NSObject>(two, "b"_sel), nullptr);
  }
  one = nullptr;
  EXPECT_EQ(references(first), 1U);
  EXPECT_EQ(references(second), 2U);
}

TEST_F(Associations, OfNil) {
  auto value = make(1);
  objc_setAssociatedObject(nullptr, "a"_sel.get(), value, AssociationPolicy::retain);
  EXPECT_EQ(references(value), 1U);
  EXPECT_EQ(objc_getAssociatedObject(nullptr, "a"_sel.get()), nullptr);
}

TEST_F(Associations, OfAClassStay) {
  Class cls = objc::classOf<ObservedObject>();
  auto value = make(1);
  objc_setAssociatedObject(reinterpret_cast<id>(cls), "a"_sel.get(), value,
                           AssociationPolicy::retain);
  {
    objc::AutoreleasePool pool;
    EXPECT_EQ(objc_getAssociatedObject(reinterpret_cast<id>(cls), "a"_sel.get()), value.get());
  }
  EXPECT_EQ(references(value), 2U);
}

TEST_F(Associations, OfAnObjectThatIsGoneDoNotReachTheNextAtItsAddress) {
  auto value = make(1);
  for (int i = 0; i < 100; ++i) {
    auto owner = make<LastLookObject>();
    EXPECT_EQ(objc::associated<NSObject>(owner, "value"_sel), nullptr);
    objc::associate(owner, "value"_sel, value, AssociationPolicy::assign);
  }
}

template <class F>
void expectCounts(std::uint64_t messages, std::uint64_t lookUps, std::uint64_t allocations,
                  F work) {
  work();  // selectors and classes are looked up once
  host::runtime::startCounting();
  work();
  const auto counts = host::runtime::stopCounting();
  EXPECT_EQ(counts.messages, messages);
  EXPECT_EQ(counts.lookUps, lookUps);
  EXPECT_EQ(counts.allocations, allocations);
}

TEST_F(Counters, OfNothing) {
  expectCounts(0, 0, 0, [] {});
}

TEST_F(Counters, OfMessages) {
  auto object = make(1);
  expectCounts(3, 0, 0, [&] {
    for (int i = 0; i < 3; ++i) send<int>(object, "answer"_sel);
  });
  expectCounts(0, 0, 0, [] { send<int>(nullptr, "answer"_sel); });
}

TEST_F(Counters, OfInstances) {
  auto object = make(1);
  // alloc; dealloc, and dealloc of the superclass.
  expectCounts(3, 0, 1, [] { make(1); });
  // copy, and the alloc in it; then the two of dealloc.
  expectCounts(4, 0, 1, [&] { objc_release(send<id>(object, "copy"_sel)); });
}

TEST_F(Counters, OfLookUps) {
  Class cls = objc::classOf<ObservedObject>();
  expectCounts(0, 4, 0, [&] {
    sel_registerName("answer");
    objc_getClass("NSObject");
    objc_getClass("NobodysClass");
    class_getInstanceVariable(cls, "number");
  });
}

TEST_F(Counters, DoNotCountReferences) {
  auto object = make(1);
  expectCounts(0, 0, 0, [&] {
    objc::AutoreleasePool pool;
    objc_autorelease(objc_retain(object));
    Strong<ObservedObject> another = object;
  });
}

TEST_F(Counters, BeginAnewAndEnd) {
  auto object = make(1);
  host::runtime::startCounting();
  send<int>(object, "answer"_sel);
  host::runtime::startCounting();
  send<int>(object, "answer"_sel);
  EXPECT_EQ(host::runtime::stopCounting().messages, 1U);
  send<int>(object, "answer"_sel);
  EXPECT_EQ(host::runtime::stopCounting().messages, 1U);
}

}  // namespace
