#include "contrast/knobs.h"

#include <algorithm>

#include "Foundation/text.h"
#include "common/errors.h"
#include "contrast/shades.h"
#include "prefs/elements.h"
#include "prefs/keys.h"
#include "runtime/send.h"
#include "settings/bytes.h"

namespace varnix::cli {

namespace {

constexpr char kGlobal[] = "global_color";
constexpr long long kOwnColor = 2;

std::string textAt(NSDictionary* settings, const std::string& key) {
  if (settings == nullptr) return "";
  auto* value =
      objc::as<NSString>(send(settings, NSDictionary::objectForKey, host::makeString(key)));
  return value == nullptr ? "" : std::string(host::text(value));
}

std::vector<std::string> colorKeys(NSDictionary* settings) {
  std::vector<std::string> keys{kGlobal};
  if (settings == nullptr) return keys;
  NSArray* all = send(settings, NSDictionary::allKeys);
  for (NSUInteger i = 0; i < send(all, NSArray::count); ++i) {
    std::string key(host::text(static_cast<NSString*>(send(all, NSArray::objectAtIndex, i))));
    if (key != kGlobal && kindOf(key) == settings::Kind::color) keys.push_back(std::move(key));
  }
  std::sort(keys.begin() + 1, keys.end());
  return keys;
}

std::string restOf(const std::string& value) {
  const std::size_t colon = value.find(':');
  return colon == std::string::npos ? "" : value.substr(colon);
}

}  // namespace

std::vector<Entry> Knob::entriesFor(const drawing::ByteColor& color) const {
  std::vector<Entry> entries{{key, drawing::hex(color).substr(0, 7) + rest}};
  if (!typeKey.empty()) entries.push_back({typeKey, kOwnColor});
  return entries;
}

std::vector<Knob> knobsOf(NSDictionary* settings) {
  std::vector<Knob> knobs;
  for (const std::string& key : colorKeys(settings)) {
    std::string value = textAt(settings, key);
    if (key == kGlobal && !isColor(value)) value = settings::kDefaultDye.text;
    const auto color = isColor(value) ? plainColor(value) : std::nullopt;
    if (color) knobs.push_back({key, "", *color, restOf(value)});
  }
  const drawing::ByteColor global = knobs.front().present;
  for (const settings::Element& element : settings::kElements) {
    const std::string key = std::string(element.key) + "_color";
    knobs.push_back({key, key + "_type", global, ""});
  }
  return knobs;
}

std::string settingsWith(NSDictionary* settings, const std::vector<Entry>& entries) {
  auto* made = NSMutableDictionary::dictionary();
  if (settings != nullptr) {
    NSArray* keys = send(settings, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      auto* key = static_cast<NSString*>(send(keys, NSArray::objectAtIndex, i));
      send(made, NSMutableDictionary::setObjectForKey,
           send(settings, NSDictionary::objectForKey, key), key);
    }
  }
  for (const auto& [key, value] : entries)
    send(made, NSMutableDictionary::setObjectForKey, objectFor(value), host::makeString(key));
  auto bytes = settingsBytes(made);
  if (!bytes) throw Failure("cannot be written", "settings that no property list can hold");
  return *std::move(bytes);
}

}  // namespace varnix::cli
