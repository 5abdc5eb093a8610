// The hosted Settings application with pages of a test's own.
#pragma once

#include "Preferences/pages.h"
#include "support/pane.h"

namespace test {

namespace pages = host::settings;

/// What the test's pages did, in order.
inline std::vector<std::string>& events() {
  static std::vector<std::string> list;
  return list;
}
/// What has happened since the last call.
inline std::vector<std::string> newEvents() { return std::exchange(events(), {}); }

class SettingsApp : public Pane {
 protected:
  void SetUp() override { startSettings(); }
  void startSettings(std::vector<std::string> without = {}) {
    host::ProcessOptions options;
    options.bundle = "com.apple.Preferences";
    options.root = folder.path();
    options.without = std::move(without);
    options.withoutLibraries = withoutLibraries;
    options.language = language;
    if (installedFolder) options.installed = *installedFolder;
    host::startProcess(options);
  }

  std::string language = "en";                 ///< to be set before startSettings()
  std::optional<std::string> installedFolder;  ///< the same; absent for the build's

  /// A file below the container's root.
  void file(const std::string& path, const std::string& contents) const {
    const std::filesystem::path whole = folder.path() + path;
    std::filesystem::create_directories(whole.parent_path());
    std::ofstream(whole) << contents;
  }
  static std::string list(const std::string& entries) {
    return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + entries + "</dict></plist>";
  }

  template <class Function>
  static void method(Class cls, SEL selector, Function function, const char* types) {
    class_addMethod(cls, selector, reinterpret_cast<IMP>(+function), types);
  }
  /// A class of pages; it is registered.
  static Class pageClass(const char* name, NSArray* (*rows)(NSObject*, SEL)) {
    Class cls = objc_allocateClassPair(objc_getClass("PSListController"), name, 0);
    method(cls, "specifiers"_sel, rows, "@@:");
    objc_registerClassPair(cls);
    return cls;
  }

  /// Puts a page on top of the list of settings.
  static UIViewController* show(Class cls) {
    pages::open();
    auto* page = static_cast<UIViewController*>(
        objc_autorelease(send<NSObject*>(send<NSObject*>(cls, "alloc"_sel), "init"_sel)));
    send<void>(pages::navigation(), "pushViewController:animated:"_sel, page, true);
    return page;
  }
  /// The shown row of that identifier.
  static pages::Row row(const std::string& identifier) {
    for (const auto& section : pages::sections()) {
      for (const auto& shown : section.rows) {
        if (shown.identifier() == identifier) return shown;
      }
    }
    ADD_FAILURE() << "no row " << identifier;
    return {};
  }
  static std::vector<std::string> titles() {
    std::vector<std::string> all;
    for (const auto& section : pages::sections()) {
      for (const auto& shown : section.rows) all.push_back(shown.title());
    }
    return all;
  }
};

/// Rows, kept in the page's variable as the platform's pages do.
template <class Make>
NSArray* keptRows(NSObject* page, Make make) {
  auto* list = static_cast<PSListController*>(page);
  if (objc::read(list, PSListController::_specifiers) == nullptr)
    objc::store(list, PSListController::_specifiers, static_cast<NSArray*>(make()));
  return objc::read(list, PSListController::_specifiers);
}

inline PSSpecifier* makeRow(const char* name, NSObject* target, PSCellType type,
                            Class detail = nullptr) {
  return PSSpecifier::preferenceSpecifierNamed(string(name), target,
                                               "setPreferenceValue:specifier:"_sel,
                                               "readPreferenceValue:"_sel, detail, type, nullptr);
}
inline NSArray* listOf(std::initializer_list<NSObject*> objects) {
  return NSArray::arrayWithObjects(objects.begin(), objects.size());
}
inline NSMutableArray* rowsOf(std::initializer_list<NSObject*> objects) {
  auto* list = NSMutableArray::array();
  for (NSObject* object : objects) send(list, NSMutableArray::addObject, object);
  return list;
}

}  // namespace test
