#include "Preferences/entries.h"

#include <filesystem>
#include <map>
#include <string>

#include "Foundation/log.h"
#include "Foundation/property_list.h"
#include "Foundation/text.h"
#include "process/container.h"
#include "process/system_version.h"
#include "runtime/send.h"

namespace host {
namespace {

namespace files = std::filesystem;

constexpr char kEntries[] = "/Library/PreferenceLoader/Preferences";
constexpr const char* kBundleFolders[] = {"/Library/PreferenceBundles",
                                          "/System/Library/PreferenceBundles"};

/// Of the root and of what packages have installed, by the names below their folder; the root's
/// come first.
std::map<std::string, std::string> entryFiles() {
  std::map<std::string, std::string> found;
  for (const std::string& top : {containerRoot(), installedFolder()}) {
    if (top.empty()) continue;
    std::error_code error;
    for (files::recursive_directory_iterator entry(top + kEntries, error), end;
         !error && entry != end; entry.increment(error)) {
      if (entry->path().extension() == ".plist")
        found.emplace(files::relative(entry->path(), top + kEntries), entry->path());
    }
  }
  return found;
}

template <class T>
T* in(NSDictionary* item, NSString* key) {
  return objc::as<T>(send(item, NSDictionary::objectForKey, key));
}

/// One or two numbers: at least the first, and below the second.
bool passes(NSDictionary* filter) {
  auto* versions = in<NSArray>(filter, "CoreFoundationVersion"_ns);
  auto at = [&](NSUInteger index) {
    if (index >= send(versions, NSArray::count)) return static_cast<NSNumber*>(nullptr);
    return objc::as<NSNumber>(send(versions, NSArray::objectAtIndex, index));
  };
  NSNumber* first = at(0);
  NSNumber* end = at(1);
  return (first == nullptr || kSystemVersion >= send(first, NSNumber::doubleValue)) &&
         (end == nullptr || kSystemVersion < send(end, NSNumber::doubleValue));
}

/// Where the bundle is; where it would be for one that is nowhere.
std::string bundlePath(NSString* name) {
  const std::string file = std::string(text(name)) + ".bundle";
  for (const files::path folder : kBundleFolders) {
    std::error_code ignored;
    const std::string path = folder / file;
    if (files::is_directory(readablePath(path), ignored)) return path;
  }
  return files::path(kBundleFolders[0]) / file;
}

/// Nil for a list that is no entry.
PSSpecifier* rowOf(NSDictionary* list, NSObject* page) {
  auto* entry = in<NSDictionary>(list, "entry"_ns);
  auto* label = in<NSString>(entry, "label"_ns);
  if (label == nullptr || !passes(in<NSDictionary>(list, "filter"_ns))) return nullptr;
  PSSpecifier* row = PSSpecifier::preferenceSpecifierNamed(label, page, nullptr, nullptr, nullptr,
                                                           PSLinkCell, nullptr);
  send<void>(row, "setProperties:"_sel, entry);
  auto* name = in<NSString>(entry, "bundle"_ns);
  if (name == nullptr || text(name).find('/') != std::string_view::npos) return row;
  NSString* path = makeString(bundlePath(name));
  send(row, PSSpecifier::setProperty, path, "lazy-bundle"_ns);
  send<void>(row, "setControllerLoadAction:"_sel, "lazyLoadBundle:"_sel.get());
  send<void>(row, "setupIconImageWithBundle:"_sel,
             send<NSBundle*>(objc_getClass("NSBundle"), "bundleWithPath:"_sel, path));
  return row;
}

}  // namespace

NSArray* settingsEntries(NSObject* page) {
  std::multimap<std::string, PSSpecifier*> rows;
  for (const auto& [name, file] : entryFiles()) {
    auto* list = objc::as<NSDictionary>(propertyListFromFile(file));
    if (list == nullptr) NSLog("Not a settings entry: %@"_ns, makeString(name));
    if (PSSpecifier* row = rowOf(list, page)) rows.emplace(text(send(row, PSSpecifier::name)), row);
  }
  auto* made = NSMutableArray::array();
  for (const auto& [name, row] : rows) send(made, NSMutableArray::addObject, row);
  return made;
}

}  // namespace host
