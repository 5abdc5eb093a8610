// An extension that works without one of the platform's functions if a phone lacks it.
#include "objc/hook.h"
#include "platform/CoreFoundation.h"

extern "C" {
[[gnu::weak]] void NSLog(NSString* format, ...);

/// 1 if the function exists.
[[gnu::visibility("default")]] int asker_hasLog = -1;
}

namespace {

[[gnu::constructor]] void ask() { asker_hasLog = &NSLog == nullptr ? 0 : 1; }

}  // namespace
