// Installs a group of the installation table.
#include <cstring>

#include "hooks/installation_table.h"
#include "hooks/skipped.h"
#include "objc/agreement.h"
#include "platform/CoreFoundation.h"

namespace varnix {

namespace {

using objc::Replacement;

constexpr std::int32_t kErrorLevel = 3;

void reportMissing(const char* className, int line) {
  if (&CFLog == nullptr) return;
  NSString* message = NSString::stringWithFormat("logos: nil class %s"_ns, className);
  CFLog(kErrorLevel, "[%s: %s:%d] %s: %@"_ns, "Varnix2", "Tweak", line, "ERROR", message);
}

Class target(const Replacement& row) {
  return row.isOfClass ? objc_getMetaClass(row.className) : objc_getClass(row.className);
}

/// Why the row would do harm; nothing if it would not.
SkipReason reasonToSkip(const Replacement& row, Class cls, SEL selector) {
  for (const objc::Need& need : row.needs()) {
    if (!need.isMet()) return {SkipReason::lacks, need.name};
  }
  objc_method* present = class_getInstanceMethod(cls, selector);
  // Someone else's method may mean something different by the same name.
  if (row.isAddition) return present == nullptr ? SkipReason{} : SkipReason{SkipReason::taken, ""};
  if (present == nullptr) return {SkipReason::absent, ""};
  const char* types = method_getTypeEncoding(present);
  return objc::agree(types, row.types) ? SkipReason{} : SkipReason{SkipReason::differs, types};
}

}  // namespace

void install(const Group& group) {
  const Replacement* previous = nullptr;
  Class cls = nullptr;
  for (const Replacement& row : group.rows) {
    if (previous == nullptr || previous->isOfClass != row.isOfClass ||
        std::strcmp(previous->className, row.className) != 0) {
      cls = target(row);
    }
    previous = &row;
    if (cls == nullptr) {
      if (!row.isAddition) reportMissing(row.className, group.logLine);
      continue;
    }
    SEL selector = sel_registerName(row.selector);
    const SkipReason reason = reasonToSkip(row, cls, selector);
    if (reason.kind == SkipReason::none) row.install(cls, selector);
    else keepSkipped(row, reason);
  }
}

}  // namespace varnix
