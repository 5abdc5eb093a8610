// The settings file of a container, which the command changes.
#pragma once

#include <string>
#include <string_view>

#include "platform/Foundation.h"
#include "settings/known_key.h"

namespace varnix::cli {

inline constexpr char kSettingsPath[] =
    "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
inline constexpr char kChangedNotification[] = "com.quillmarsh.varnix2.changed";

/// The path on this machine; the container root must be set.
std::string settingsFile();

/// The stored settings, autoreleased; nil if there is no file. Throws Failure if the file does not
/// hold a dictionary.
NSDictionary* storedSettings();

/// The value as stored. Throws UsageError for text that a property list cannot hold.
NSObject* objectFor(const Value& value);

/// Each changes one entry, in a new file that replaces the old one in one step, and tells every
/// process. False if there was nothing to remove.
void store(std::string_view key, const Value& value);
bool remove(std::string_view key);

}  // namespace varnix::cli
