// Class tables, declarations and replacements with one mistake each, chosen by MISTAKE. With 0
// there is none.
#include "objc/define.h"
#include "objc/hook.h"
#include "platform/Foundation.h"

struct Thing : NSObject {
  static constexpr objc::Message<Thing, "count", int()> count{};
  static constexpr objc::Message<Thing, "setCount:", void(int)> setCount{};
  static constexpr objc::Message<Thing, "setTotal:", void(int)> setTotal{};
  static constexpr objc::Message<Thing, "add:to:", void(int, int)> add{};
#if MISTAKE == 1
  static constexpr objc::Message<Thing, "add:", void(int, int)> tooFewColons{};
#elif MISTAKE == 2
  static constexpr objc::ClassMessage<Thing, "make:", NSObject*()> tooManyColons{};
#endif

  void addTo(int, int) {}
  void addOne(int) {}

  NSObject* first;
  NSObject* second;
  int total;
};

namespace {

using First = objc::Ivar<"first", &Thing::first>;
using Second = objc::Ivar<"second", &Thing::second>;
using Total = objc::Ivar<"total", &Thing::total>;
#if MISTAKE == 3
using Table = objc::Definition<"Thing", Thing, NSObject, First, Total>;
#else
using Table = objc::Definition<"Thing", Thing, NSObject, First, Second, Total>;
#endif
[[maybe_unused]] Table table;

#if MISTAKE == 4
[[maybe_unused]] objc::Implements<Thing::add, &Thing::addOne> implemented;
#else
[[maybe_unused]] objc::Implements<Thing::add, &Thing::addTo> implemented;
#endif

#if MISTAKE == 5
[[maybe_unused]] objc::Accessors<Thing::count, Thing::setTotal, &Thing::total,
                                 objc::Storage::assign> accessors;
#elif MISTAKE == 6
[[maybe_unused]] objc::Accessors<Thing::count, Thing::add, &Thing::total, objc::Storage::assign>
    accessors;
#else
[[maybe_unused]] objc::Accessors<Thing::count, Thing::setCount, &Thing::total,
                                 objc::Storage::assign> accessors;
#endif

void look(Thing*, SEL) {}
[[maybe_unused]] int count(Thing*, SEL) { return 0; }
constinit objc::Hook<Thing::count> counted;

}  // namespace

#if MISTAKE == 7
[[maybe_unused]] constexpr auto kReplaced = objc::replaced<counted, look>();
#elif MISTAKE == 8
[[maybe_unused]] constexpr auto kReplaced = objc::added<Thing::count, look>();
#else
[[maybe_unused]] constexpr auto kReplaced = objc::replaced<counted, count>();
[[maybe_unused]] constexpr auto kAdded = objc::added<Thing::count, count>();
[[maybe_unused]] auto* kLook = &look;
#endif
