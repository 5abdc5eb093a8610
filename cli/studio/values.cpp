#include "studio/values.h"

#include <algorithm>
#include <iterator>

#include "Foundation/text.h"
#include "common/json.h"
#include "settings/property_text.h"

namespace varnix::cli {

namespace {

bool hasSame(const Values& values, const Values::value_type& entry) {
  const auto found = values.find(entry.first);
  return found != values.end() && send(found->second.get(), NSObject::isEqual, entry.second.get());
}

}  // namespace

Values valuesOf(NSDictionary* settings) {
  Values values;
  if (settings == nullptr) return values;
  NSArray* keys = send(settings, NSDictionary::allKeys);
  for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
    auto* key = static_cast<NSString*>(send(keys, NSArray::objectAtIndex, i));
    values[std::string(host::text(key))] =
        Strong<NSObject>::retain(send(settings, NSDictionary::objectForKey, key));
  }
  return values;
}

NSDictionary* dictionaryOf(const Values& values) {
  auto* made = NSMutableDictionary::dictionary();
  for (const auto& [key, value] : values)
    send(made, NSMutableDictionary::setObjectForKey, value.get(), host::makeString(key));
  return made;
}

bool areSame(const Values& a, const Values& b) {
  return a.size() == b.size() &&
         std::ranges::all_of(a, [&](const auto& entry) { return hasSame(b, entry); });
}

std::vector<std::string> differences(const Values& a, const Values& b) {
  std::vector<std::string> keys;
  for (const auto& entry : a) {
    if (!hasSame(b, entry)) keys.push_back(entry.first);
  }
  for (const auto& [key, value] : b) {
    if (!a.contains(key)) keys.push_back(key);
  }
  return keys;
}

void take(Values& to, const Values& from, const std::string& key) {
  const auto found = from.find(key);
  if (found == from.end()) to.erase(key);
  else to[key] = found->second;
}

Json valueJson(NSObject* value) {
  if (auto* string = objc::as<NSString>(value)) return std::string(host::text(string));
  if (auto* number = objc::as<NSNumber>(value)) {
    const char kind = *send<const char*>(number, "objCType"_sel);
    if (kind == 'c') return send(number, NSNumber::boolValue);
    if (kind != 'd' && kind != 'Q') return send(number, NSNumber::longLongValue);
  }
  return {{"text", valueText(value)}};
}

Json valueJson(const Values& values, const std::string& key) {
  const auto found = values.find(key);
  return found == values.end() ? Json() : valueJson(found->second.get());
}

Json valuesJson(const Values& values) {
  Json json = Json::object();
  for (const auto& [key, value] : values) json[key] = valueJson(value.get());
  return json;
}

}  // namespace varnix::cli
