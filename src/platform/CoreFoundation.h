// CoreFoundation: the Darwin notify centre, types of objects, the log.
#pragma once

#include "objc/metadata.h"
#include "platform/Foundation.h"

// These types are bridged: a CFStringRef is an NSString*.
using CFStringRef = NSString*;
using CFDictionaryRef = NSDictionary*;
struct __CFNotificationCenter;
using CFNotificationCenterRef = __CFNotificationCenter*;

using CFNotificationCallback = void (*)(CFNotificationCenterRef center, void* observer,
                                        CFStringRef name, const void* object,
                                        CFDictionaryRef userInfo);

/// What happens to notifications while an observer's process is suspended.
enum class CFNotificationSuspensionBehavior : NSInteger {
  drop = 1,
  coalesce = 2,
  hold = 3,
  deliverImmediately = 4,
};

#pragma GCC visibility push(default)
extern "C" {
/// The centre whose notifications reach every process. They carry only a name.
CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter();

/// The callback runs on the process's main thread. The observer is not kept alive.
void CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void* observer,
                                     CFNotificationCallback callback, CFStringRef name,
                                     const void* object, CFNotificationSuspensionBehavior behavior);

void CFNotificationCenterPostNotification(CFNotificationCenterRef center, CFStringRef name,
                                          const void* object, CFDictionaryRef userInfo,
                                          bool deliverImmediately);

using CFTypeRef = const void*;
using CFTypeID = unsigned long;
CFTypeID CFGetTypeID(CFTypeRef object);

// Private: null on a system without them.
/// The type of the references between the objects of a keyed archive, and the index in a reference.
OBJC_WEAK CFTypeID _CFKeyedArchiverUIDGetTypeID();
OBJC_WEAK std::uint32_t _CFKeyedArchiverUIDGetValue(CFTypeRef uid);
/// Writes a line to the system log. The format may mix %s, %d and %@. Level 3 is an error.
OBJC_WEAK void CFLog(std::int32_t level, CFStringRef format, ...);
}
#pragma GCC visibility pop
