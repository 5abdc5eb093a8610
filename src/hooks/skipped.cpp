#include "hooks/skipped.h"

#include "objc/implementation.h"

namespace varnix {

namespace {

struct Skipped {
  const objc::Replacement* row;
  SkipReason reason;
};

/// More than all rows of the tables.
constexpr NSUInteger kMost = 64;
constinit Skipped list[kMost]{};
constinit NSUInteger count = 0;

NSString* textOf(const char* text) { return NSString::stringWithUTF8String(text); }

NSString* methodOf(const objc::Replacement& row) {
  return NSString::stringWithFormat("%@[%@ %@]"_ns, row.isOfClass ? "+"_ns : "-"_ns,
                                    textOf(row.className), textOf(row.selector));
}

NSString* textOf(const SkipReason& reason) {
  switch (reason.kind) {
    case SkipReason::absent:
      return "the class has no such method"_ns;
    case SkipReason::differs:
      return NSString::stringWithFormat("its types are %@"_ns, textOf(reason.detail));
    case SkipReason::lacks:
      return NSString::stringWithFormat("no %@"_ns, textOf(reason.detail));
    case SkipReason::taken:
      return "the class has a method of that name"_ns;
    default:
      return ""_ns;
  }
}

struct Installation : NSObject {
  static NSArray* skipped() {
    NSMutableArray* all = NSMutableArray::array();
    for (NSUInteger i = 0; i < count; ++i) {
      send(all, NSMutableArray::addObject, methodOf(*list[i].row));
      send(all, NSMutableArray::addObject, textOf(list[i].reason));
    }
    return all;
  }
};

}  // namespace

void keepSkipped(const objc::Replacement& row, SkipReason reason) {
  if (count < kMost) list[count++] = {&row, reason};
}

}  // namespace varnix

OBJC_PRIVATE_CLASS_NAMED(
    VarnixInstallation, NSObject, varnix::Installation, NSObject,
    objc::Implements<VarnixInstallation::skipped, &varnix::Installation::skipped>)
