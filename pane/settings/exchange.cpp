#include "settings/exchange.h"

#include "objc/strong.h"
#include "settings/scope.h"
#include "settings/settings.h"

namespace varnix::pane {

NSString* exportedSettings() {
  NSData* data = NSPropertyListSerialization::dataWithPropertyList(
      userSettings(), NSPropertyListXMLFormat, 0, nullptr);
  return Strong<NSString>::adopt(
             send(objc::alloc<NSString>(), NSString::initWithData, data, NSUTF8StringEncoding))
      .autorelease();
}

NSDictionary* importedSettings(NSString* text) {
  NSData* data = send(text, NSString::dataUsingEncoding, NSUTF8StringEncoding);
  if (data == nullptr) return nullptr;
  auto* root = objc::as<NSDictionary>(
      NSPropertyListSerialization::propertyListWithData(data, 0, nullptr, nullptr));
  NSDictionary* known = knownEntries(root);
  return send(known, NSDictionary::count) == 0 ? nullptr : known;
}

NSDictionary* settingsWith(const settings::Preset& preset) {
  auto changed = Strong<NSMutableDictionary>::adopt(
      static_cast<NSMutableDictionary*>(send(userSettings(), NSObject::mutableCopy)));
  auto put = [&](NSObject* value, NSString* key) {
    send(changed, NSMutableDictionary::setObjectForKey, value, key);
  };
  const Scope everybody;
  put(NSNumber::numberWithLongLong(0), "global_color_type"_ns);
  put(NSString::stringWithUTF8String(preset.dye), "global_color"_ns);
  for (std::size_t i = 0; i < settings::kElementCount; ++i) {
    const char* own = preset.own[i];
    const ColorType type = own == nullptr ? kFollows : *own == '\0' ? kUndyedType : kOwnColor;
    const char* key = settings::kElements[i].key;
    put(NSNumber::numberWithLongLong(type), everybody.key(key, "_color_type"));
    if (type == kOwnColor) put(NSString::stringWithUTF8String(own), everybody.key(key, "_color"));
  }
  return changed.autorelease();
}

}  // namespace varnix::pane
