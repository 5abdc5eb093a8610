// What arrays answer about their elements, through count and objectAtIndex:.
#include "Foundation/enumeration.h"
#include "Foundation/enumerator.h"
#include "Foundation/range.h"
#include "Foundation/text.h"
#include "objc/block.h"
#include "objc/define.h"

namespace {

NSUInteger countOf(NSArray* array) { return send(array, NSArray::count); }
NSObject* elementOf(NSArray* array, NSUInteger i) { return send(array, NSArray::objectAtIndex, i); }

NSUInteger indexOf(NSArray* self, SEL, NSObject* wanted) {
  for (NSUInteger i = 0; i < countOf(self); ++i)
    if (send(elementOf(self, i), NSObject::isEqual, wanted)) return i;
  return host::kNotFound;
}

NSUInteger indexOfIdentical(NSArray* self, SEL, NSObject* wanted) {
  for (NSUInteger i = 0; i < countOf(self); ++i)
    if (elementOf(self, i) == wanted) return i;
  return host::kNotFound;
}

bool equalsArray(NSArray* self, SEL, NSArray* other) {
  return send(self, NSObject::isEqual, static_cast<NSObject*>(other));
}

NSArray* adding(NSArray* self, SEL, NSObject* object) {
  auto* made = static_cast<NSMutableArray*>(send(self, NSObject::mutableCopy));
  objc_autorelease(made);
  send(made, NSMutableArray::addObject, object);
  return made;
}

NSArray* addingAll(NSArray* self, SEL, NSArray* other) {
  auto* made = static_cast<NSMutableArray*>(send(self, NSObject::mutableCopy));
  objc_autorelease(made);
  send<void>(made, "addObjectsFromArray:"_sel, other);
  return made;
}

NSArray* subarray(NSArray* self, SEL, _NSRange range) {
  NSMutableArray* made = NSMutableArray::array();
  for (NSUInteger i = 0; i < range.length; ++i)
    send(made, NSMutableArray::addObject, elementOf(self, range.location + i));
  return made;
}

NSString* join(NSArray* self, SEL, NSString* separator) {
  std::string text;
  for (NSUInteger i = 0; i < countOf(self); ++i) {
    if (i > 0) text += host::text(separator);
    text += host::text(send(elementOf(self, i), NSObject::description));
  }
  return host::makeString(text);
}

NSObject* enumerator(NSArray* self, SEL) { return host::makeEnumerator(self); }

NSObject* reverseEnumerator(NSArray* self, SEL) {
  NSMutableArray* reversed = NSMutableArray::array();
  for (NSUInteger i = countOf(self); i-- > 0;)
    send(reversed, NSMutableArray::addObject, elementOf(self, i));
  return host::makeEnumerator(reversed);
}

using Visitor = objc::Block<void(NSObject*, NSUInteger, bool*)>;

void visit(NSArray* self, SEL, Visitor visitor) {
  bool stop = false;
  for (NSUInteger i = 0; !stop && i < countOf(self); ++i) (*visitor)(elementOf(self, i), i, &stop);
}

using Test = objc::Block<bool(NSObject*, NSUInteger, bool*)>;

NSUInteger indexPassing(NSArray* self, SEL, Test test) {
  bool stop = false;
  for (NSUInteger i = 0; !stop && i < countOf(self); ++i)
    if ((*test)(elementOf(self, i), i, &stop)) return i;
  return host::kNotFound;
}

void perform(NSArray* self, SEL, SEL selector) {
  for (NSUInteger i = 0; i < countOf(self); ++i)
    objc::sendDynamic<void>(elementOf(self, i), selector);
}

void performWith(NSArray* self, SEL, SEL selector, NSObject* argument) {
  for (NSUInteger i = 0; i < countOf(self); ++i)
    objc::sendDynamic<void>(elementOf(self, i), selector, argument);
}

}  // namespace

OBJC_CATEGORY_OF_OWN(NSArray, Queries, objc::Method<"indexOfObject:", &indexOf>,
                     objc::Method<"indexOfObjectIdenticalTo:", &indexOfIdentical>,
                     objc::Method<"isEqualToArray:", &equalsArray>,
                     objc::Method<"arrayByAddingObject:", &adding>,
                     objc::Method<"arrayByAddingObjectsFromArray:", &addingAll>,
                     objc::Method<"subarrayWithRange:", &subarray>,
                     objc::Method<"componentsJoinedByString:", &join>,
                     objc::Method<"objectEnumerator", &enumerator>,
                     objc::Method<"reverseObjectEnumerator", &reverseEnumerator>,
                     objc::Method<"enumerateObjectsUsingBlock:", &visit>,
                     objc::Method<"indexOfObjectPassingTest:", &indexPassing>,
                     objc::Method<"makeObjectsPerformSelector:", &perform>,
                     objc::Method<"makeObjectsPerformSelector:withObject:", &performWith>)
