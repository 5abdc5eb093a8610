// The settings file of a container, which the command changes.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Foundation.h"
#include "settings/known_key.h"

namespace varnix::cli {

inline constexpr char kSettingsPath[] =
    "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
inline constexpr char kChangedNotification[] = "com.quillmarsh.varnix2.changed";

/// The path on this machine; the container root must be set.
std::string settingsFile();

/// The settings in a file of this machine, autoreleased; nil if there is no file. Throws Failure if
/// the file does not hold a dictionary.
NSDictionary* settingsIn(const std::string& file);
/// Those of the container.
inline NSDictionary* storedSettings() { return settingsIn(settingsFile()); }

/// The value as stored. Throws UsageError for text that a property list cannot hold.
NSObject* objectFor(const Value& value);

/// Makes new settings from the stored ones, which are nil if there are none; nil for no change.
using Update = std::function<NSDictionary*(NSDictionary* stored)>;
/// Replaces that file, which exists or whose folder does, in one step. Other commands wait
/// meanwhile. False if nothing was changed. Throws Failure, and what the function throws.
bool update(const std::string& file, const Update& changed);

struct Entry {
  std::string key;
  Value value;
};

/// Each writes a new file, which replaces the old one in one step, and tells every process. False
/// if there was nothing to remove.
void store(std::span<const Entry> entries);
inline void store(std::string key, Value value) {
  const Entry entry{std::move(key), std::move(value)};
  store({&entry, 1});
}
bool remove(std::string_view key);

}  // namespace varnix::cli
