#include "settings/applications.h"

#include "objc/answers.h"
#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "platform/Dispatch.h"
#include "prefs/keyed_archive.h"
#include "prefs/value.h"
#include "settings/settings.h"

namespace varnix::pane {

namespace {

/// Nil on a device without it.
ALApplicationList* list() {
  return objc::understands(ALApplicationList::sharedApplicationList)
             ? ALApplicationList::sharedApplicationList()
             : nullptr;
}

NSObject* stored(NSString* application, NSString* form) {
  return send(store(), KTPrefsManager::objectForKey, NSString::stringWithFormat(form, application));
}

NSString* iconColorKey(NSString* application) {
  return NSString::stringWithFormat("cached_icon_color_%@"_ns, application);
}

}  // namespace

Applications installedApplications() {
  Applications found;
  if (!objc::answers(list(), ALApplicationList::applications)) return found;
  found.names = send(list(), ALApplicationList::applications, nullptr, true, &found.identifiers);
  return found;
}

bool hasOwnSettings(NSString* application) {
  NSObject* isDyed = stored(application, "%@_enabled"_ns);
  return (isReadable(isDyed) && !boolOf(isDyed)) ||
         boolOf(stored(application, "%@_scope_enabled"_ns));
}

UIImage* iconAtHand(NSString* application) {
  const bool isThere =
      objc::answers(list(), ALApplicationList::hasCachedIconOfSize,
                    ALApplicationList::iconOfSize) &&
      send(list(), ALApplicationList::hasCachedIconOfSize, ALApplicationIconSizeSmall, application);
  return isThere
             ? send(list(), ALApplicationList::iconOfSize, ALApplicationIconSizeSmall, application)
             : nullptr;
}

void fetchIcons(NSArray* applications, NSObject* target, SEL message) {
  if (!objc::answers(list(), ALApplicationList::iconOfSize)) return;
  auto fetch = objc::makeBlock<void()>([wanted = Strong<NSArray>::retain(applications),
                                        kept = Strong<NSObject>::retain(target), message] {
    for (NSUInteger i = 0; i < send(wanted, NSArray::count); ++i) {
      const objc::AutoreleasePool pool;
      auto* application = static_cast<NSString*>(send(wanted, NSArray::objectAtIndex, i));
      send(list(), ALApplicationList::iconOfSize, ALApplicationIconSizeSmall, application);
      auto tell = objc::makeBlock<void()>([kept, message, wanted, i] {
        objc::perform<void>(kept.get(), message, send(wanted, NSArray::objectAtIndex, i));
      });
      dispatch_async(dispatch_get_main_queue(), tell);
    }
  });
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_LOW, 0), fetch);
}

UIColor* iconColor(NSString* application) {
  NSObject* archive = send(store(), KTPrefsManager::objectForKey, iconColorKey(application));
  if (!isDecodableArchive(archive)) return nullptr;
  return objc::as<UIColor>(
      NSKeyedUnarchiver::unarchiveObjectWithData(static_cast<NSData*>(archive)));
}

void forgetIconColor(NSString* application) { forget(iconColorKey(application)); }

}  // namespace varnix::pane
