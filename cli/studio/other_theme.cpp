#include "studio/other_theme.h"

#include <utility>

#include "Foundation/text.h"
#include "common/errors.h"
#include "common/json.h"
#include "objc/autorelease_pool.h"
#include "settings/bytes.h"
#include "settings/file.h"
#include "settings/presets.h"
#include "theme/theme_file.h"

namespace varnix::cli {

namespace {

std::string bytesOf(NSDictionary* settings) {
  auto bytes = settingsBytes(settings != nullptr ? settings : NSMutableDictionary::dictionary());
  if (!bytes) throw UsageError("no theme", "settings that no property list can hold");
  return *std::move(bytes);
}

NSDictionary* presetNamed(const std::string& name) {
  auto* settings = NSMutableDictionary::dictionary();
  for (const auto& [key, value] : entriesOfPreset(name))
    send(settings, NSMutableDictionary::setObjectForKey, objectFor(value), host::makeString(key));
  return settings;
}

}  // namespace

void OtherTheme::take(const Json& choice, Session& session, const std::string& file) {
  const objc::AutoreleasePool pool;
  if (choice.contains("preset")) return put(bytesOf(presetNamed(choice["preset"])));
  if (choice.value("saved", false)) {
    if (file.empty()) throw UsageError("no theme", "nothing is saved");
    return takeList(file);
  }
  const auto position = choice.at("position").get<std::size_t>();
  std::string bytes;
  session.with([&](const Theme& theme) {
    if (const Values* values = theme.valuesAt(position)) bytes = bytesOf(dictionaryOf(*values));
  });
  if (bytes.empty()) throw UsageError("no such state", std::to_string(position));
  put(std::move(bytes));
}

void OtherTheme::takeList(const std::string& file) {
  const objc::AutoreleasePool pool;
  try {
    put(bytesOf(themeIn(file)));
  } catch (const Failure&) {
    throw UsageError("no theme", "these are no settings");
  }
}

void OtherTheme::put(std::string bytes) {
  const std::lock_guard lock(mutex_);
  shown_ = {shown_.revision + 1, std::move(bytes)};
}

Shown OtherTheme::shown() const {
  const std::lock_guard lock(mutex_);
  return shown_;
}

}  // namespace varnix::cli
