#include "settings/kinds.h"

#include "prefs/parsed_color.h"
#include "prefs/value.h"

namespace varnix::pane {

using settings::Kind;

Kind kindOf(NSString* key) {
  auto is = [&](const char* name) {
    return send(key, NSString::isEqualToString, NSString::stringWithUTF8String(name));
  };
  auto endsLike = [&](const char* name) {
    return send(
        key, NSString::hasSuffix,
        send("_"_ns, NSString::stringByAppendingString, NSString::stringWithUTF8String(name)));
  };
  if (send(key, NSString::hasPrefix, "cached_icon_color_"_ns)) return Kind::data;
  // Where one name ends like another, both are of one kind.
  for (const settings::Key& known : settings::kKeys) {
    if (is(known.name) || endsLike(known.name)) return known.kind;
  }
  return Kind::data;
}

bool isOfKind(NSObject* value, Kind kind) {
  if (kind == Kind::data) return false;
  if (kind != Kind::color) return isReadable(value);
  auto* text = objc::as<NSString>(value);
  Rgba color;
  return text != nullptr && readColor(send(text, NSString::UTF8String), color);
}

NSDictionary* knownEntries(NSDictionary* entries) {
  auto* known = NSMutableDictionary::dictionary();
  eachKey(entries, [&](NSString* key) {
    NSObject* value = send(entries, NSDictionary::objectForKey, key);
    if (isOfKind(value, kindOf(key))) send(known, NSMutableDictionary::setObjectForKey, value, key);
  });
  return known;
}

}  // namespace varnix::pane
