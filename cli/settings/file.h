// The settings file of a container, as the command changes it.
#pragma once

#include <string>
#include <string_view>

#include "platform/Foundation.h"
#include "settings/known_key.h"

namespace varnix::cli {

inline constexpr char kSettingsPath[] =
    "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
inline constexpr char kChangedNotification[] = "com.quillmarsh.varnix2.changed";

/// The path on this machine; the container root is set.
std::string settingsFile();

/// What is stored, autoreleased; nil where there is no file. Throws Failure for a file that holds
/// no dictionary.
NSDictionary* storedSettings();

/// The value as it is stored. Throws UsageError for text that a property list cannot hold.
NSObject* objectFor(const Value& value);

/// Change one entry, in a new file that replaces the old one at once, and tell every process.
/// False where there was nothing to remove.
void store(std::string_view key, const Value& value);
bool remove(std::string_view key);

}  // namespace varnix::cli
