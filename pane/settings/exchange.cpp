#include "settings/exchange.h"

#include "objc/strong.h"
#include "settings/kinds.h"
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
  settings::eachSetting(
      preset, [&](const char* name, const char* suffix, const char* color, int number) {
        NSObject* value = color != nullptr
                              ? static_cast<NSObject*>(NSString::stringWithUTF8String(color))
                              : NSNumber::numberWithLongLong(number);
        send(changed, NSMutableDictionary::setObjectForKey, value, Scope{}.key(name, suffix));
      });
  return changed.autorelease();
}

}  // namespace varnix::pane
