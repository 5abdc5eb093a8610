// Sorted arrays: by a selector, by a block, by descriptors. Equal elements keep their order.
#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

#include "Foundation/text.h"
#include "objc/block.h"
#include "objc/define.h"

namespace {

using Comparator = objc::Block<NSInteger(NSObject*, NSObject*)>;
using Compare = std::function<NSInteger(NSObject*, NSObject*)>;

struct SortDescriptor : NSObject {
  static SortDescriptor* make(Class cls, NSString* key, bool ascending, SEL selector,
                              Comparator comparator) {
    auto* made = static_cast<SortDescriptor*>(objc_autorelease(class_createInstance(cls, 0)));
    return made->fill(key, ascending, selector, comparator);
  }
  static SortDescriptor* with(Class cls, SEL, NSString* key, bool ascending) {
    return make(cls, key, ascending, "compare:"_sel, nullptr);
  }
  static SortDescriptor* withSelector(Class cls, SEL, NSString* key, bool ascending, SEL selector) {
    return make(cls, key, ascending, selector, nullptr);
  }
  static SortDescriptor* withComparator(Class cls, SEL, NSString* key, bool ascending,
                                        Comparator comparator) {
    return make(cls, key, ascending, nullptr, comparator);
  }
  SortDescriptor* fill(NSString* newKey, bool isAscending, SEL newSelector,
                       Comparator newComparator) {
    itsKey = Strong<NSString>::retain(newKey);
    isUp = isAscending;
    itsSelector = newSelector;
    itsComparator = Strong<NSObject>::adopt(
        static_cast<NSObject*>(_Block_copy(static_cast<const void*>(newComparator))));
    return this;
  }
  SortDescriptor* initWith(NSString* newKey, bool isAscending) {
    return fill(newKey, isAscending, "compare:"_sel, nullptr);
  }

  NSString* key() { return itsKey; }
  bool ascending() { return isUp; }
  SEL selector() { return itsSelector; }
  NSInteger compare(NSObject* one, NSObject* other) {
    if (itsKey != nullptr) {
      one = send<NSObject*>(one, "valueForKeyPath:"_sel, itsKey.get());
      other = send<NSObject*>(other, "valueForKeyPath:"_sel, itsKey.get());
    }
    const NSInteger order = compareValues(one, other);
    return isUp ? order : -order;
  }
  NSInteger compareValues(NSObject* one, NSObject* other) {
    // Nothing comes first.
    if (one == nullptr || other == nullptr)
      return static_cast<NSInteger>(one != nullptr) - static_cast<NSInteger>(other != nullptr);
    if (itsComparator != nullptr)
      return (*reinterpret_cast<Comparator>(itsComparator.get()))(one, other);
    return objc::sendDynamic<NSInteger>(one, itsSelector, other);
  }
  SortDescriptor* reversed() {
    return make(isa, itsKey, !isUp, itsSelector, reinterpret_cast<Comparator>(itsComparator.get()));
  }

  Strong<NSString> itsKey;
  bool isUp;
  SEL itsSelector;
  Strong<NSObject> itsComparator;
};

std::vector<NSObject*> elementsOf(NSArray* array) {
  std::vector<NSObject*> elements(send(array, NSArray::count));
  for (NSUInteger i = 0; i < elements.size(); ++i)
    elements[i] = send(array, NSArray::objectAtIndex, i);
  return elements;
}

NSArray* sorted(NSArray* array, const Compare& compare) {
  std::vector<NSObject*> elements = elementsOf(array);
  const auto at = [&](std::size_t i) {
    return elements.begin() + static_cast<std::ptrdiff_t>(std::min(i, elements.size()));
  };
  // A comparison that contradicts itself must not lead outside the elements, as std::sort may go.
  for (std::size_t width = 1; width < elements.size(); width *= 2) {
    std::vector<NSObject*> merged;
    for (std::size_t i = 0; i < elements.size(); i += 2 * width)
      std::merge(at(i), at(i + width), at(i + width), at(i + 2 * width), std::back_inserter(merged),
                 [&](NSObject* one, NSObject* other) { return compare(one, other) < 0; });
    elements = std::move(merged);
  }
  return NSArray::arrayWithObjects(elements.data(), elements.size());
}

NSArray* sortedBySelector(NSArray* self, SEL, SEL selector) {
  return sorted(self, [selector](NSObject* one, NSObject* other) {
    return objc::sendDynamic<NSInteger>(one, selector, other);
  });
}

NSArray* sortedByComparator(NSArray* self, SEL, Comparator comparator) {
  return sorted(self,
                [comparator](NSObject* one, NSObject* other) { return (*comparator)(one, other); });
}

NSArray* sortedByFunction(NSArray* self, SEL, NSInteger (*function)(NSObject*, NSObject*, void*),
                          void* context) {
  return sorted(self, [function, context](NSObject* one, NSObject* other) {
    return function(one, other, context);
  });
}

NSArray* sortedByDescriptors(NSArray* self, SEL, NSArray* descriptors) {
  const std::vector<NSObject*> all = elementsOf(descriptors);
  return sorted(self, [&all](NSObject* one, NSObject* other) {
    for (NSObject* descriptor : all) {
      const auto order = send<NSInteger>(descriptor, "compareObject:toObject:"_sel, one, other);
      if (order != 0) return order;
    }
    return NSInteger{0};
  });
}

void replaceAll(NSMutableArray* array, NSArray* sorted) {
  send<void>(array, "removeAllObjects"_sel);
  send<void>(array, "addObjectsFromArray:"_sel, sorted);
}

void sortBySelector(NSMutableArray* self, SEL, SEL selector) {
  replaceAll(self, sortedBySelector(self, nullptr, selector));
}

void sortByComparator(NSMutableArray* self, SEL, Comparator comparator) {
  replaceAll(self, sortedByComparator(self, nullptr, comparator));
}

void sortByDescriptors(NSMutableArray* self, SEL, NSArray* descriptors) {
  replaceAll(self, sortedByDescriptors(self, nullptr, descriptors));
}

/// Orders texts by their units of UTF-16, which differs from that of bytes only for rare
/// characters; here the bytes decide.
NSInteger compareStrings(NSString* self, SEL, NSString* other) {
  const int order = host::text(self).compare(host::text(other));
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

NSInteger compareDates(NSDate* self, SEL, NSDate* other) {
  const double one = send(self, NSDate::timeIntervalSinceReferenceDate);
  const double two = send(other, NSDate::timeIntervalSinceReferenceDate);
  return one < two ? -1 : one > two ? 1 : 0;
}

}  // namespace

OBJC_CLASS_NAMED(
    NSSortDescriptor, NSObject, SortDescriptor, NSObject,
    objc::Ivar<"key", &SortDescriptor::itsKey>, objc::Ivar<"ascending", &SortDescriptor::isUp>,
    objc::Ivar<"selector", &SortDescriptor::itsSelector>,
    objc::Ivar<"comparator", &SortDescriptor::itsComparator>,
    objc::ClassMethod<"sortDescriptorWithKey:ascending:", &SortDescriptor::with>,
    objc::ClassMethod<"sortDescriptorWithKey:ascending:selector:", &SortDescriptor::withSelector>,
    objc::ClassMethod<"sortDescriptorWithKey:ascending:comparator:",
                      &SortDescriptor::withComparator>,
    objc::Method<"initWithKey:ascending:", &SortDescriptor::initWith>,
    objc::Method<"key", &SortDescriptor::key>,
    objc::Method<"ascending", &SortDescriptor::ascending>,
    objc::Method<"selector", &SortDescriptor::selector>,
    objc::Method<"compareObject:toObject:", &SortDescriptor::compare>,
    objc::Method<"reversedSortDescriptor", &SortDescriptor::reversed>)

OBJC_CATEGORY_OF_OWN(NSArray, Sorting, objc::Method<"sortedArrayUsingSelector:", &sortedBySelector>,
                     objc::Method<"sortedArrayUsingComparator:", &sortedByComparator>,
                     objc::Method<"sortedArrayUsingFunction:context:", &sortedByFunction>,
                     objc::Method<"sortedArrayUsingDescriptors:", &sortedByDescriptors>)
OBJC_CATEGORY_OF_OWN(NSMutableArray, Sorting, objc::Method<"sortUsingSelector:", &sortBySelector>,
                     objc::Method<"sortUsingComparator:", &sortByComparator>,
                     objc::Method<"sortUsingDescriptors:", &sortByDescriptors>)
OBJC_CATEGORY_OF_OWN(NSString, Sorting, objc::Method<"compare:", &compareStrings>)
OBJC_CATEGORY_OF_OWN(NSDate, Sorting, objc::Method<"compare:", &compareDates>)
