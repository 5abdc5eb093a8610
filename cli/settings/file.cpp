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
std::filesystem::path fileBehindLinks() {
  constexpr int kMostLinks = 40;
  std::filesystem::path file = settingsFile();
  std::error_code error;
  for (int links = 0; std::filesystem::is_symlink(file, error); ++links) {
    if (links == kMostLinks) throw Failure("too many links", settingsFile());
    file = file.parent_path() / std::filesystem::read_symlink(file, error);
  }
  return file;
}

NSMutableDictionary* copyOfStored() {
  auto* copy = NSMutableDictionary::dictionary();
  if (NSDictionary* stored = storedSettings())
    send(copy, NSMutableDictionary::addEntriesFromDictionary, stored);
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
  if (!bytes) throw Failure("cannot write as a property list", settingsFile());
  return *std::move(bytes);
}

void replaceFile(const std::string& file, const std::string& bytes) {
  host::clearLeftovers(file);
  if (!host::writeFile(file, bytes, true)) throw Failure("cannot write", file);
  host::postDarwinNotification(kChangedNotification);
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

NSDictionary* storedSettings() {
  std::error_code error;
  const auto status = std::filesystem::symlink_status(settingsFile(), error);
  if (status.type() == std::filesystem::file_type::not_found) return nullptr;
  auto* stored = objc::as<NSDictionary>(host::propertyListFromFile(settingsFile()));
  if (stored == nullptr) {
    throw Failure("no settings can be read from",
                  settingsFile() + " (move the file away to begin anew)");
  }
  return stored;
}

void store(std::span<const Entry> entries) {
  makeFolder();
  const std::filesystem::path file = fileBehindLinks();
  const FolderLock lock(file.parent_path());
  auto* settings = copyOfStored();
  for (const auto& [key, value] : entries)
    send(settings, NSMutableDictionary::setObjectForKey, objectFor(value), stringFor(key));
  const std::string bytes = bytesOf(settings);
  for (const auto& [key, value] : entries) requireReadable(bytes, stringFor(key), objectFor(value));
  replaceFile(file, bytes);
}

bool remove(std::string_view key) {
  NSString* name = stringFor(key);
  if (storedSettings() == nullptr) return false;
  makeFolder();
  const std::filesystem::path file = fileBehindLinks();
  const FolderLock lock(file.parent_path());
  auto* settings = copyOfStored();
  if (send(settings, NSDictionary::objectForKey, name) == nullptr) return false;
  send(settings, NSMutableDictionary::removeObjectForKey, name);
  replaceFile(file, bytesOf(settings));
  return true;
}

}  // namespace varnix::cli
