#include "settings/file.h"

#include <filesystem>
#include <system_error>

#include "Foundation/darwin_notify.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "common/errors.h"
#include "common/folder_lock.h"
#include "process/container.h"
#include "settings/bytes.h"

namespace varnix::cli {

namespace {

void makeFolder() {
  const auto folder = std::filesystem::path(settingsFile()).parent_path();
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error)
    throw Failure("cannot make the settings folder", folder.string() + ": " + error.message());
}

/// The file behind any links, which stay. The last link may lead to nothing yet.
std::filesystem::path fileBehindLinks(const std::string& wanted) {
  constexpr int kMostLinks = 40;
  std::filesystem::path file = wanted;
  std::error_code error;
  for (int links = 0; std::filesystem::is_symlink(file, error); ++links) {
    if (links == kMostLinks) throw Failure("too many links", wanted);
    file = file.parent_path() / std::filesystem::read_symlink(file, error);
  }
  return file;
}

NSMutableDictionary* copyOf(NSDictionary* stored) {
  auto* copy = NSMutableDictionary::dictionary();
  if (stored != nullptr) send(copy, NSMutableDictionary::addEntriesFromDictionary, stored);
  return copy;
}

NSString* stringFor(std::string_view text) {
  if (!fitsXml(text) || text.find('\x7f') != text.npos)
    throw UsageError("a property list cannot hold this", std::string(text));
  NSString* string = host::makeString(text);
  if (string == nullptr) throw UsageError("not UTF-8", std::string(text));
  return string;
}

/// Refuses to write anything that would not be read back.
void requireReadable(const std::string& bytes, NSString* key, NSObject* value) {
  auto* back = objc::as<NSDictionary>(host::propertyListFromData(bytes));
  NSObject* found = back == nullptr ? nullptr : send(back, NSDictionary::objectForKey, key);
  if (found == nullptr || !send(found, NSObject::isEqual, value)) {
    throw UsageError("a property list cannot hold this", std::string(host::text(key)));
  }
}

std::string bytesOf(NSDictionary* settings) {
  auto bytes = settingsBytes(settings);
  if (!bytes) throw Failure("cannot be written", "settings that no property list can hold");
  return *std::move(bytes);
}

void replaceFile(const std::string& file, const std::string& bytes) {
  host::clearLeftovers(file);
  if (!host::writeFile(file, bytes, true)) throw Failure("cannot write", file);
}

bool updateStored(const Update& changed) {
  makeFolder();
  if (!update(settingsFile(), changed)) return false;
  host::postDarwinNotification(kChangedNotification);
  return true;
}

}  // namespace

NSObject* objectFor(const Value& value) {
  if (const bool* truth = std::get_if<bool>(&value)) return NSNumber::numberWithBool(*truth);
  if (const auto* number = std::get_if<long long>(&value)) {
    return NSNumber::numberWithLongLong(*number);
  }
  return stringFor(std::get<std::string>(value));
}

std::string settingsFile() { return host::hostPath(kSettingsPath); }

NSDictionary* settingsIn(const std::string& file) {
  std::error_code error;
  const auto status = std::filesystem::symlink_status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) return nullptr;
  auto* stored = objc::as<NSDictionary>(host::propertyListFromFile(file));
  if (stored == nullptr) {
    throw Failure("no settings can be read from", file + " (move the file away to begin anew)");
  }
  return stored;
}

bool update(const std::string& wanted, const Update& changed) {
  const std::filesystem::path file = fileBehindLinks(wanted);
  const FolderLock lock(file.parent_path());
  NSDictionary* settings = changed(settingsIn(wanted));
  if (settings == nullptr) return false;
  replaceFile(file, bytesOf(settings));
  return true;
}

void store(std::span<const Entry> entries) {
  updateStored([&](NSDictionary* stored) {
    auto* settings = copyOf(stored);
    for (const auto& [key, value] : entries)
      send(settings, NSMutableDictionary::setObjectForKey, objectFor(value), stringFor(key));
    const std::string bytes = bytesOf(settings);
    for (const auto& [key, value] : entries)
      requireReadable(bytes, stringFor(key), objectFor(value));
    return settings;
  });
}

bool remove(std::string_view key) {
  NSString* name = stringFor(key);
  if (storedSettings() == nullptr) return false;
  return updateStored([&](NSDictionary* stored) -> NSDictionary* {
    auto* settings = copyOf(stored);
    if (send(settings, NSDictionary::objectForKey, name) == nullptr) return nullptr;
    send(settings, NSMutableDictionary::removeObjectForKey, name);
    return settings;
  });
}

}  // namespace varnix::cli
