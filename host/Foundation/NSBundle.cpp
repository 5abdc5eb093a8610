// Bundles: the main one, which is the identity of this process, and those that it loads.
#include <filesystem>
#include <map>
#include <mutex>
#include <vector>

#include "Foundation/log.h"
#include "Foundation/property_list.h"
#include "Foundation/strings_file.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "process/container.h"
#include "process/process.h"

namespace {

struct Bundle : NSBundle {
  static Bundle* main();
  static NSBundle* withPath(NSString* path);
  static NSBundle* forClass(Class cls);

  NSString* identifier() {
    return this == main() ? identifier_.get()
                          : objc::as<NSString>(infoFor("CFBundleIdentifier"_ns));
  }
  NSDictionary* info();
  NSObject* infoFor(NSString* key) { return send(info(), NSDictionary::objectForKey, key); }
  /// Of the bundle itself, else of the user's language, else of the one that it was written in.
  NSString* pathForResource(NSString* name, NSString* type);
  NSString* localized(NSString* key, NSString* value, NSString* table);
  /// False where the binary is missing or cannot be loaded; the log says why.
  bool load();
  /// The class that Info.plist names.
  Class principal();

 private:
  std::string_view folder() { return host::text(path_); }
  bool isMain() { return this == main(); }
  std::vector<std::string> languages();
  /// A device path if there is such a file; empty for none.
  std::string existing(const std::string& name);

 public:
  Strong<NSString> identifier_;
  Strong<NSString> path_;  ///< the device's; nil for a process without one
  Strong<NSDictionary> info_;
  std::map<std::string, Strong<NSDictionary>> tables_;
  bool loaded_;
};

std::mutex& bundleMutex() {
  static std::mutex mutex;
  return mutex;
}

std::string fileName(NSString* name, NSString* type) {
  std::string file(host::text(name));
  if (!host::text(type).empty()) file.append(".").append(host::text(type));
  return file;
}

/// "zh-Hans-CN", "zh-Hans", "zh".
std::vector<std::string> formsOf(std::string language) {
  std::vector<std::string> forms{language};
  for (std::size_t at; (at = language.find_last_of("-_")) != language.npos;) {
    language.resize(at);
    forms.push_back(language);
  }
  return forms;
}

}  // namespace

OBJC_CLASS_NAMED(NSBundle, NSObject, Bundle, NSObject,
                 objc::Ivar<"_identifier", &Bundle::identifier_>,
                 objc::Readable<"bundlePath", &Bundle::path_, "_path">,
                 objc::Ivar<"_info", &Bundle::info_>, objc::Ivar<"_tables", &Bundle::tables_>,
                 objc::Readable<"isLoaded", &Bundle::loaded_, "_loaded">,
                 objc::ClassMethod<"mainBundle", &Bundle::main>,
                 objc::ClassMethod<"bundleWithPath:", &Bundle::withPath>,
                 objc::ClassMethod<"bundleForClass:", &Bundle::forClass>,
                 objc::Method<"bundleIdentifier", &Bundle::identifier>,
                 objc::Method<"infoDictionary", &Bundle::info>,
                 objc::Method<"objectForInfoDictionaryKey:", &Bundle::infoFor>,
                 objc::Method<"pathForResource:ofType:", &Bundle::pathForResource>,
                 objc::Method<"localizedStringForKey:value:table:", &Bundle::localized>,
                 objc::Method<"load", &Bundle::load>,
                 objc::Method<"principalClass", &Bundle::principal>)

Bundle* Bundle::main() {
  static Bundle* bundle = [] {
    auto* made = static_cast<Bundle*>(class_createInstance(&objc_class_NSBundle, 0));
    made->loaded_ = true;
    if (const auto& name = host::processOptions().bundle)
      made->identifier_ = host::makeOwnedString(*name);
    return made;
  }();
  return bundle;
}

/// One object a folder, which lives as long as the process. Nil where there is no folder.
NSBundle* Bundle::withPath(NSString* path) {
  std::string folder(host::text(path));
  while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  std::error_code ignored;
  if (!std::filesystem::is_directory(host::readablePath(folder), ignored)) return nullptr;
  static auto* known = new std::map<std::string, Bundle*>;
  const std::scoped_lock guard(bundleMutex());
  Bundle*& bundle = (*known)[folder];
  if (bundle == nullptr) {
    bundle = static_cast<Bundle*>(class_createInstance(&objc_class_NSBundle, 0));
    bundle->path_ = host::makeOwnedString(folder);
  }
  return bundle;
}

/// The main one for a class of no bundle's.
NSBundle* Bundle::forClass(Class cls) {
  const std::filesystem::path file = host::devicePath(host::fileOfAddress(cls));
  for (auto folder = file.parent_path(); folder.has_relative_path();
       folder = folder.parent_path()) {
    if (folder.extension() == ".bundle" || folder.extension() == ".framework")
      return withPath(host::makeString(folder.string()));
  }
  return main();
}

NSDictionary* Bundle::info() {
  const std::scoped_lock guard(bundleMutex());
  if (info_ == nullptr) {
    const std::string file = existing("Info.plist");
    auto* read = objc::as<NSDictionary>(host::propertyListFromFile(host::readablePath(file)));
    info_ = Strong<NSDictionary>::retain(
        read != nullptr ? read : static_cast<NSDictionary*>(NSMutableDictionary::dictionary()));
  }
  return info_;
}

std::string Bundle::existing(const std::string& name) {
  if (path_ == nullptr || name.empty()) return {};
  std::string path = std::string(folder()) + "/" + name;
  std::error_code ignored;
  return std::filesystem::is_regular_file(host::readablePath(path), ignored) ? path : std::string();
}

std::vector<std::string> Bundle::languages() {
  std::vector<std::string> all = formsOf(host::processOptions().language);
  auto* own = objc::as<NSString>(infoFor("CFBundleDevelopmentRegion"_ns));
  all.emplace_back(own == nullptr ? "en" : host::text(own));
  return all;
}

NSString* Bundle::pathForResource(NSString* name, NSString* type) {
  const std::string file = fileName(name, type);
  std::string found = existing(file);
  for (const std::string& language : languages()) {
    if (found.empty()) found = existing(std::filesystem::path(language + ".lproj") / file);
  }
  return found.empty() ? nullptr : host::makeString(found);
}

NSString* Bundle::localized(NSString* key, NSString* value, NSString* table) {
  const std::string name(host::text(table).empty() ? "Localizable" : host::text(table));
  const std::string file =
      std::string(host::text(pathForResource(host::makeString(name), "strings"_ns)));
  NSDictionary* texts = nullptr;
  {
    const std::scoped_lock guard(bundleMutex());
    auto& known = tables_[file];
    if (known == nullptr && !file.empty())
      known = Strong<NSDictionary>::retain(host::stringsFromFile(host::readablePath(file)));
    texts = known;
  }
  if (auto* text = objc::as<NSString>(send(texts, NSDictionary::objectForKey, key))) return text;
  if (!host::text(value).empty()) return value;
  return key == nullptr ? ""_ns : key;
}

bool Bundle::load() {
  if (loaded_) return true;
  auto* named = objc::as<NSString>(infoFor("CFBundleExecutable"_ns));
  const std::string name = named != nullptr ? std::string(host::text(named))
                                            : std::filesystem::path(folder()).stem().string();
  const std::string file = existing(name);
  if (file.empty()) {
    NSLog("Cannot find executable for bundle %@"_ns, path_.get());
    return false;
  }
  try {
    host::loadLibrary(host::readablePath(file));
  } catch (const std::runtime_error& error) {
    NSLog("Error loading %@: %@"_ns, host::makeString(file), host::makeString(error.what()));
    return false;
  }
  loaded_ = true;
  return true;
}

Class Bundle::principal() {
  if (!load()) return nullptr;
  auto* name = objc::as<NSString>(infoFor("NSPrincipalClass"_ns));
  return name == nullptr ? nullptr : objc_getClass(std::string(host::text(name)).c_str());
}
