// A hosted Settings application: a pane in the last column of a split view, as the platform shows
// one, and a container with programs of a test's own.
#pragma once

#include "objc/autorelease_pool.h"
#include "platform/Preferences.h"
#include "support/hosted.h"

namespace test {

class Pane : public Hosted {
 protected:
  /// The library is switched off here: what it dyes is not what a pane does.
  void settingsApplication() {
    settings("<key>enabled</key><false/>");
    start("com.apple.Preferences");
    load();
  }
  /// A function that the library exports, as a pane that links against it finds it.
  template <class Function>
  static Function* exported(const char* name) {
    return reinterpret_cast<Function*>(host::librarySymbol(VARNIX_LIBRARY, name));
  }
  /// A shell script in the container's /usr/bin.
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
