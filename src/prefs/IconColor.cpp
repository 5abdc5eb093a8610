#include "prefs/IconColor.h"

#include "color/ImportantColor.h"
#include "objc/strong.h"
#include "platform/AppList.h"
#include "prefs/keyed_archive.h"

namespace varnix::Color {

namespace {

/// Asked of the manager anew each time; nil without one.
VXPrefsManager* storeOf(VNXManager* manager) { return send(manager, VNXManager::prefsMan); }

NSString* cacheKey(NSString* identifier) {
  return NSString::stringWithFormat("cached_icon_color_%@"_ns, identifier);
}

NSObject* cachedColor(VNXManager* manager, NSString* identifier) {
  if (storeOf(manager) == nullptr) return nullptr;
  NSString* key = cacheKey(identifier);
  auto entry = [&] { return send(storeOf(manager), KTPrefsManager::objectForKey, key); };
  // Unarchiving raises for anything else, and there is nobody here to catch it.
  if (!isDecodableArchive(entry())) return nullptr;
  return NSKeyedUnarchiver::unarchiveObjectWithData(static_cast<NSData*>(entry()));
}

void keepColor(UIColor* color, VNXManager* manager, NSString* identifier) {
  if (storeOf(manager) == nullptr || color == nullptr) return;
  NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(color);
  if (archive == nullptr) return;
  send(storeOf(manager), KTPrefsManager::setObject, archive, cacheKey(identifier));
  send(storeOf(manager), KTPrefsManager::save);
}

/// Without the icon's alpha: its transparent corners become pixels like others.
UIImage* opaqueCopy(UIImage* icon) {
  NSData* data = UIImageJPEGRepresentation(icon, 1);
  return Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData, data))
      .autorelease();
}

}  // namespace

UIColor* IconColor(NSString* identifier, UIColor* fallback, VNXManager* manager) {
  if (NSObject* cached = cachedColor(manager, identifier)) return static_cast<UIColor*>(cached);

  ALApplicationList* list = ALApplicationList::sharedApplicationList();
  UIImage* icon = send(list, ALApplicationList::iconOfSize, ALApplicationIconSizeLarge, identifier);
  if (identifier == nullptr || list == nullptr || icon == nullptr) return fallback;

  UIImage* image = opaqueCopy(icon);
  ImportantColor(image);  // the first answer is dropped: the second is the one that counts
  UIColor* color = ImportantColor(image);
  keepColor(color, manager, identifier);
  return color;
}

}  // namespace varnix::Color
