// A hosted Settings application: a pane in the last column of a split view, as on the platform, and
// a container with the test's own programs.
#pragma once

#include "objc/autorelease_pool.h"
#include "platform/Preferences.h"
#include "support/hosted.h"

namespace test {

class Pane : public Hosted {
 protected:
  /// The library is switched off here, because the tests are about panes and not about dyes.
  void settingsApplication() {
    settings("<key>enabled</key><false/>");
    start("com.apple.Preferences");
    load();
  }
  /// A function that the library exports, found as by a pane that links the library.
  template <class Function>
  static Function* exported(const char* name) {
    return reinterpret_cast<Function*>(host::librarySymbol(VARNIX_LIBRARY, name));
  }
  /// Writes a shell script to the container's /usr/bin.
  void program(const std::string& name, const std::string& script) const {
    const std::filesystem::path path = folder.path() + "/usr/bin/" + name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "#!/bin/sh\n" << script;
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }

 private:
  objc::AutoreleasePool pool_;
};

}  // namespace test
