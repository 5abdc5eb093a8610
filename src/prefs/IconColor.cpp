#include "prefs/IconColor.h"

#include "color/ImportantColor.h"
#include "platform/AppList.h"
#include "prefs/keyed_archive.h"

namespace varnix::Color {

namespace {

/// Asked of the manager anew each time; nil without one.
VXPrefsManager* storeOf(VNXManager* manager) {
  return send<VXPrefsManager*>(manager, "prefsMan"_sel);
}

NSString* cacheKey(NSString* identifier) {
  return NSString::stringWithFormat("cached_icon_color_%@"_ns, identifier);
}

NSObject* cachedColor(VNXManager* manager, NSString* identifier) {
  if (storeOf(manager) == nullptr) return nullptr;
  NSString* key = cacheKey(identifier);
  auto entry = [&] { return send<NSObject*>(storeOf(manager), "objectForKey:"_sel, key); };
  // Unarchiving raises for anything else, and there is nobody here to catch it.
  if (!isDecodableArchive(entry())) return nullptr;
  return NSKeyedUnarchiver::unarchiveObjectWithData(static_cast<NSData*>(entry()));
}

void keepColor(UIColor* color, VNXManager* manager, NSString* identifier) {
  if (storeOf(manager) == nullptr || color == nullptr) return;
  NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(color);
  if (archive == nullptr) return;
  send<void>(storeOf(manager), "setObject:forKey:"_sel, static_cast<NSObject*>(archive),
             cacheKey(identifier));
  send<void>(storeOf(manager), "save"_sel);
}

/// Without the icon's alpha: its transparent corners become pixels like others.
UIImage* opaqueCopy(UIImage* icon) {
  NSData* data = UIImageJPEGRepresentation(icon, 1);
  return Strong<UIImage>::adopt(send<UIImage*>(objc::alloc<UIImage>(), "initWithData:"_sel, data))
      .autorelease();
}

}  // namespace

UIColor* IconColor(NSString* identifier, UIColor* fallback, VNXManager* manager) {
  if (NSObject* cached = cachedColor(manager, identifier)) return static_cast<UIColor*>(cached);

  ALApplicationList* list = ALApplicationList::sharedApplicationList();
  auto* icon = send<UIImage*>(list, "iconOfSize:forDisplayIdentifier:"_sel,
                              ALApplicationIconSizeLarge, identifier);
  if (identifier == nullptr || list == nullptr || icon == nullptr) return fallback;

  UIImage* image = opaqueCopy(icon);
  ImportantColor(image);  // the first answer is dropped: the second is the one that counts
  UIColor* color = ImportantColor(image);
  keepColor(color, manager, identifier);
  return color;
}

}  // namespace varnix::Color
