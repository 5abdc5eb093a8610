// The installed applications, as far as their icons go.
#include <string>

#include "Foundation/file_contents.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/AppList.h"
#include "process/container.h"
#include "process/process.h"

namespace {

constexpr std::size_t kMaximumFile = 64 << 20;
// No surface shows a larger icon, and its pixels take 16 MiB.
constexpr NSUInteger kMaximumSize = 1024;

/// The file on this machine; empty for what is no identifier.
std::string iconFile(NSString* identifier) {
  const std::string name(host::text(identifier));
  if (name.empty() || name.find('/') != name.npos) return {};
  const auto& icons = host::processOptions().icons;
  const auto chosen = icons.find(name);
  return chosen != icons.end() ? chosen->second : host::hostPath("/Applications/" + name + ".png");
}

/// A bitmap of its own, in pixels of the screen.
UIImage* drawn(UIImage* icon, CGFloat size) {
  UIGraphicsBeginImageContextWithOptions({size, size}, false, 0);
  send(icon, UIImage::drawInRect, {{0, 0}, {size, size}});
  UIImage* image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return image;
}

struct ApplicationList : ALApplicationList {
  static ApplicationList* shared();
  UIImage* icon(NSUInteger size, NSString* identifier);
};

/// The size in points. Nil for an unknown application, for an icon that is no picture, and for a
/// size of 0 or beyond reason.
UIImage* ApplicationList::icon(NSUInteger size, NSString* identifier) {
  if (size > kMaximumSize || objc::as<NSString>(identifier) == nullptr) return nullptr;
  NSData* data = host::fileData(iconFile(identifier), kMaximumFile);
  if (data == nullptr) return nullptr;
  auto* image = objc::alloc<UIImage>();
  if (image == nullptr) return nullptr;  // a process without that class
  const auto whole = Strong<UIImage>::adopt(send(image, UIImage::initWithData, data));
  return whole == nullptr ? nullptr : drawn(whole, static_cast<CGFloat>(size));
}

}  // namespace

OBJC_CLASS_NAMED(ALApplicationList, NSObject, ApplicationList, NSObject,
                 objc::ClassMethod<"sharedApplicationList", &ApplicationList::shared>,
                 objc::Method<"iconOfSize:forDisplayIdentifier:", &ApplicationList::icon>)

ApplicationList* ApplicationList::shared() {
  static auto* list =
      static_cast<ApplicationList*>(class_createInstance(&objc_class_ALApplicationList, 0));
  return list;
}
