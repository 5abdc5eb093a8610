// Settings files, XML and binary: read as property lists, written again, and used by the library as
// an application's settings.
#include <filesystem>
#include <fstream>
#include <string>

#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "hosted_process.h"
#include "objc/autorelease_pool.h"
#include "prefs/VNXManager.h"
#include "prefs/elements.h"
#include "runtime/send.h"
#include "settings/bytes.h"
#include "settings/file.h"
#include "settings/property_text.h"

namespace {

VNXManager* manager = nullptr;

bool isSame(NSObject* a, NSObject* b);

bool haveSameItems(NSArray* a, NSArray* b) {
  const NSUInteger count = send(a, NSArray::count);
  if (send(b, NSArray::count) != count) return false;
  for (NSUInteger i = 0; i < count; ++i) {
    if (!isSame(send(a, NSArray::objectAtIndex, i), send(b, NSArray::objectAtIndex, i)))
      return false;
  }
  return true;
}

bool haveSameEntries(NSDictionary* a, NSDictionary* b) {
  NSArray* keys = send(a, NSDictionary::allKeys);
  const NSUInteger count = send(keys, NSArray::count);
  if (send(send(b, NSDictionary::allKeys), NSArray::count) != count) return false;
  for (NSUInteger i = 0; i < count; ++i) {
    NSObject* key = send(keys, NSArray::objectAtIndex, i);
    NSObject* other = send(b, NSDictionary::objectForKey, key);
    if (other == nullptr || !isSame(send(a, NSDictionary::objectForKey, key), other)) return false;
  }
  return true;
}

/// XML stores dates in whole seconds, and NaN equals nothing.
bool isSame(NSObject* a, NSObject* b) {
  if (auto* array = objc::as<NSArray>(a))
    return objc::as<NSArray>(b) != nullptr && haveSameItems(array, objc::as<NSArray>(b));
  if (auto* dictionary = objc::as<NSDictionary>(a)) {
    return objc::as<NSDictionary>(b) != nullptr &&
           haveSameEntries(dictionary, objc::as<NSDictionary>(b));
  }
  if (objc::as<NSDate>(a) != nullptr) return objc::as<NSDate>(b) != nullptr;
  return send(a, NSObject::isEqual, b) || !send(a, NSObject::isEqual, a);
}

/// Whether there is text with a zero in it, which can be read and shown but not written.
bool hasZero(NSObject* list) {
  const std::string shown = varnix::cli::valueText(list);
  return shown.find('\0') != shown.npos || shown.find("\\u0000") != shown.npos;
}

/// What was written must be read back unchanged.
void requireReadable(NSObject* list, const std::optional<std::string>& bytes) {
  fuzz::require(bytes.has_value() || hasZero(list));
  if (!bytes) return;
  NSObject* back = host::propertyListFromData(*bytes);
  fuzz::require(back != nullptr && isSame(list, back));
}

/// Subtracts the number of objects in the tree; false if it has more than that.
bool countDown(NSObject* object, std::size_t& left) {
  if (left == 0) return false;
  --left;
  if (auto* array = objc::as<NSArray>(object)) {
    for (NSUInteger i = 0; i < send(array, NSArray::count); ++i) {
      if (!countDown(send(array, NSArray::objectAtIndex, i), left)) return false;
    }
  } else if (auto* dictionary = objc::as<NSDictionary>(object)) {
    NSArray* keys = send(dictionary, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      NSObject* key = send(keys, NSArray::objectAtIndex, i);
      if (!countDown(send(dictionary, NSDictionary::objectForKey, key), left)) return false;
    }
  }
  return true;
}

/// A few bytes may expand to something that takes too long.
bool isLarge(NSObject* list) {
  std::size_t left = 1 << 14;
  return !countDown(list, left);
}

/// Shows and stores it as the command does.
void write(NSDictionary* settings) {
  requireReadable(settings, varnix::cli::settingsBytes(settings));
  requireReadable(settings, host::binaryFromPropertyList(settings));
  NSArray* keys = send(settings, NSDictionary::allKeys);
  for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
    auto* key = static_cast<NSString*>(send(keys, NSArray::objectAtIndex, i));
    varnix::cli::entryLine(host::text(key), send(settings, NSDictionary::objectForKey, key));
  }
}

/// Asks everything that depends on the settings.
void ask() {
  NSString* identifier = "com.example.app"_ns;
  send(manager, VNXManager::tweakEnabled);
  send(manager, VNXManager::appIsDisabled, identifier);
  send(manager, VNXManager::wantsIconColor);
  send(manager, VNXManager::useAlbumArt);
  send(manager, VNXManager::dye);
  for (const auto& element : varnix::settings::kElements) {
    const std::string operation = std::string(element.operation) + "Dye";
    objc::sendDynamic<NSObject*>(manager, sel_registerName(operation.c_str()));
  }
}

void takeAsSettings(std::string_view bytes) {
  const objc::AutoreleasePool pool;
  // A new file each time, since a file that was truncated is written to the disk when it is closed.
  std::error_code ignored;
  std::filesystem::remove(varnix::cli::settingsFile(), ignored);
  std::ofstream(varnix::cli::settingsFile(), std::ios::binary) << bytes;
  send(manager, VNXManager::setCachedIconColor, nullptr);
  VXPrefsManager* store = send(manager, VNXManager::prefsMan);
  send(store, KTPrefsManager::updateCurrentImplementation);
  ask();
  for (const auto& key : varnix::settings::kKeys) {
    NSString* name = host::makeString(key.name);
    send(store, KTPrefsManager::boolForKey, name);
    send(store, KTPrefsManager::intForKey, name);
    send(store, KTPrefsManager::floatForKey, name);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::hostApplication();
  host::loadLibrary(host::defaultLibraryPath());
  manager = static_cast<VNXManager*>(
      send<NSObject*>(send<NSObject*>(objc_getClass("VNXManager"), "alloc"_sel), "init"_sel));
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // The library waits for an empty file, in case somebody is about to write it.
  if (size == 0) return 0;
  const objc::AutoreleasePool pool;
  const std::string_view bytes = fuzz::text(data, size);
  NSObject* list = host::propertyListFromData(bytes);
  if (list != nullptr && isLarge(list)) return 0;
  if (auto* settings = objc::as<NSDictionary>(list)) write(settings);
  else if (list != nullptr) requireReadable(list, host::binaryFromPropertyList(list));
  takeAsSettings(bytes);
  return 0;
}
