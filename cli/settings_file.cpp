#include "settings_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "Foundation/darwin_notify.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "errors.h"
#include "process/container.h"
#include "settings_bytes.h"

namespace varnix::cli {

namespace {

/// Holds other commands off between reading the file and replacing it. The folder carries the
/// lock: the file itself is replaced, and a file of its own would be left behind.
class FolderLock {
 public:
  explicit FolderLock(const std::string& folder)
      : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ >= 0) flock(descriptor_, LOCK_EX);
  }
  ~FolderLock() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int descriptor_;
};

std::string madeFolder() {
  const auto folder = std::filesystem::path(settingsFile()).parent_path();
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error)
    throw Failure("cannot make the settings folder", folder.string() + ": " + error.message());
  return folder.string();
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

/// What would not come back is not written.
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

void replaceFile(const std::string& bytes) {
  if (!host::writeFile(settingsFile(), bytes, true)) throw Failure("cannot write", settingsFile());
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

void store(std::string_view key, const Value& value) {
  NSString* name = stringFor(key);
  NSObject* object = objectFor(value);
  const FolderLock lock(madeFolder());
  auto* settings = copyOfStored();
  send(settings, NSMutableDictionary::setObjectForKey, object, name);
  const std::string bytes = bytesOf(settings);
  requireReadable(bytes, name, object);
  replaceFile(bytes);
}

bool remove(std::string_view key) {
  NSString* name = stringFor(key);
  if (storedSettings() == nullptr) return false;
  const FolderLock lock(madeFolder());
  auto* settings = copyOfStored();
  if (send(settings, NSDictionary::objectForKey, name) == nullptr) return false;
  send(settings, NSMutableDictionary::removeObjectForKey, name);
  replaceFile(bytesOf(settings));
  return true;
}

}  // namespace varnix::cli
