// An extension that does without one of the platform's functions where a phone lacks it.
#include "objc/hook.h"
#include "platform/CoreFoundation.h"

extern "C" {
[[gnu::weak]] void NSLog(NSString* format, ...);

/// 1 where the function is there.
[[gnu::visibility("default")]] int asker_hasLog = -1;
}

namespace {

[[gnu::constructor]] void ask() { asker_hasLog = &NSLog == nullptr ? 0 : 1; }

}  // namespace
