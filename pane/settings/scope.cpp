#include "settings/scope.h"

#include "prefs/keys.h"
#include "prefs/parsed_color.h"
#include "prefs/value.h"
#include "settings/applications.h"
#include "settings/kinds.h"
#include "settings/settings.h"

namespace varnix::pane {

namespace {

NSString* joined(const char* name, const char* suffix) {
  return send(NSString::stringWithUTF8String(name), NSString::stringByAppendingString,
              NSString::stringWithUTF8String(suffix));
}

NSObject* stored(NSString* key) {
  NSObject* value = send(store(), KTPrefsManager::objectForKey, key);
  return isOfKind(value, kindOf(key)) ? value : nullptr;
}

}  // namespace

NSString* Scope::key(NSString* name) const {
  return application == nullptr ? name : NSString::stringWithFormat("%@_%@"_ns, application, name);
}

NSString* Scope::key(const char* name, const char* suffix) const {
  return key(joined(name, suffix));
}

NSObject* Scope::value(const char* name, const char* suffix) const {
  NSString* plain = joined(name, suffix);
  NSObject* own = application == nullptr ? nullptr : stored(key(plain));
  return own != nullptr ? own : stored(plain);
}

NSString* Scope::fallbackColor(const char* name, const char* suffix, const char* fallback) const {
  NSObject* everybodys = application == nullptr ? nullptr : Scope{}.value(name, suffix);
  return digitsOf(pane::colorOf(everybodys, fallback));
}

bool Scope::counts() const {
  return application == nullptr || boolOf(stored(key("scope_enabled"_ns)));
}

ColorType Scope::typeOf(const settings::Element& element) const {
  const NSInteger type = integerOf(value(element.key, "_color_type"));
  return type == kUndyedType || type == kOwnColor ? static_cast<ColorType>(type) : kFollows;
}

UIColor* Scope::dye() const {
  if (integerOf(value("global_color_type")) == 1)
    return application == nullptr ? send(manager(), VNXManager::dye) : iconColor(application);
  return pane::colorOf(value("global_color"), settings::kDefaultDye.text);
}

UIColor* Scope::colorOf(const settings::Element& element) const {
  switch (typeOf(element)) {
    case kUndyedType:
      return nullptr;
    case kOwnColor:
      return pane::colorOf(value(element.key, "_color"), element.ownColor);
    case kFollows:
      return dye();
  }
  return nullptr;
}

UIColor* colorOf(NSObject* value, const char* fallback) {
  Rgba color{};
  auto* text = objc::as<NSString>(value);
  if (text == nullptr || !readColor(send(text, NSString::UTF8String), color))
    readColor(fallback, color);
  return UIColor::colorWithRed(static_cast<CGFloat>(color.red), static_cast<CGFloat>(color.green),
                               static_cast<CGFloat>(color.blue), static_cast<CGFloat>(color.alpha));
}

NSString* digitsOf(UIColor* color) {
  CGFloat red = 0;
  CGFloat green = 0;
  CGFloat blue = 0;
  if (color == nullptr || !send(color, UIColor::getRed, &red, &green, &blue, nullptr))
    return nullptr;
  auto byte = [](CGFloat part) {
    return part <= 0 ? 0 : part >= 1 ? 255 : static_cast<int>(part * 255 + CGFloat(0.5));
  };
  return NSString::stringWithFormat("#%02x%02x%02x"_ns, byte(red), byte(green), byte(blue));
}

}  // namespace varnix::pane
