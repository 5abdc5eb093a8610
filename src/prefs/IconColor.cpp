#include "prefs/IconColor.h"

#include "color/ImportantColor.h"
#include "objc/answers.h"
#include "objc/strong.h"
#include "platform/AppList.h"
#include "platform/Dispatch.h"
#include "prefs/keyed_archive.h"

namespace varnix::Color {

namespace {

/// The manager is asked again each time; nil without one.
VXPrefsManager* storeOf(VNXManager* manager) { return send(manager, VNXManager::prefsMan); }

NSString* cacheKey(NSString* identifier) {
  return NSString::stringWithFormat("cached_icon_color_%@"_ns, identifier);
}

NSObject* cachedColor(VNXManager* manager, NSString* identifier) {
  if (storeOf(manager) == nullptr) return nullptr;
  NSString* key = cacheKey(identifier);
  auto entry = [&] { return send(storeOf(manager), KTPrefsManager::objectForKey, key); };
  // Unarchiving raises for anything else, and nothing here catches it.
  if (!isDecodableArchive(entry())) return nullptr;
  return NSKeyedUnarchiver::unarchiveObjectWithData(static_cast<NSData*>(entry()));
}

/// Whether the file has bytes that are not settings: truncated, or in the middle of being written.
bool isFileSpoiled(VNXManager* manager) {
  NSString* path = send(storeOf(manager), KTPrefsManager::plistPath);
  return NSDictionary::dictionaryWithContentsOfFile(path) == nullptr &&
         send(NSData::dataWithContentsOfFile(path), NSData::length) != 0;
}

/// Saving writes the whole view, so what others stored since the last reload is read first. If it
/// cannot be read, saving would write the defaults over it, so the colour is kept only in memory.
void storeArchive(NSData* archive, VNXManager* manager, NSString* identifier) {
  const bool isSpoiled = isFileSpoiled(manager);
  if (!isSpoiled) send(storeOf(manager), KTPrefsManager::updateCurrentImplementation);
  send(storeOf(manager), KTPrefsManager::setObject, archive, cacheKey(identifier));
  if (!isSpoiled) send(storeOf(manager), KTPrefsManager::save);
}

/// The store is changed and written on the main thread only: two writers would damage the file.
void keepColor(UIColor* color, VNXManager* manager, NSString* identifier) {
  if (storeOf(manager) == nullptr || color == nullptr) return;
  NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(color);
  if (archive == nullptr) return;
  if (NSThread::isMainThread()) return storeArchive(archive, manager, identifier);
  auto store = objc::makeBlock<void()>(
      [kept = Strong<NSData>::retain(archive), owner = Strong<VNXManager>::retain(manager),
       name = Strong<NSString>::retain(identifier)] { storeArchive(kept, owner, name); });
  dispatch_async(dispatch_get_main_queue(), store);
}

/// Nil for an application without icon, and if there is no list or the list cannot tell.
UIImage* iconOf(NSString* identifier) {
  if (!objc::understands(ALApplicationList::sharedApplicationList)) return nullptr;
  ALApplicationList* list = ALApplicationList::sharedApplicationList();
  if (!objc::answers(list, ALApplicationList::iconOfSize)) return nullptr;
  return send(list, ALApplicationList::iconOfSize, ALApplicationIconSizeLarge, identifier);
}

/// The icon without alpha: its transparent corners become ordinary pixels.
UIImage* opaqueCopy(UIImage* icon) {
  NSData* data = UIImageJPEGRepresentation(icon, 1);
  return Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData, data))
      .autorelease();
}

}  // namespace

UIColor* IconColor(NSString* identifier, UIColor* fallback, VNXManager* manager) {
  if (NSObject* cached = cachedColor(manager, identifier)) return static_cast<UIColor*>(cached);

  UIImage* icon = iconOf(identifier);
  if (identifier == nullptr || icon == nullptr) return fallback;

  UIImage* image = opaqueCopy(icon);
  ImportantColor(image);  // this answer is discarded: only the second counts
  UIColor* color = ImportantColor(image);
  keepColor(color, manager, identifier);
  return color;
}

}  // namespace varnix::Color
