// Scripts, run from their first line to their last by SpringBoard with the library in it.
#include <sys/mman.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "Foundation/darwin_notify.h"
#include "common/errors.h"
#include "common/framework_files.h"
#include "common/json.h"
#include "hosted_process.h"
#include "objc/autorelease_pool.h"
#include "script/script.h"
#include "settings/file.h"

namespace {

/// A file of no name with those bytes.
class Script {
 public:
  explicit Script(std::string_view text) : descriptor_(memfd_create("script", MFD_CLOEXEC)) {
    fuzz::require(descriptor_ >= 0 && write(descriptor_, text.data(), text.size()) ==
                                          static_cast<ssize_t>(text.size()));
  }
  ~Script() { close(descriptor_); }
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

/// What it printed, with its objects gone again.
std::string run(std::string_view text) {
  const Script script(text);
  varnix::cli::Stage stage;
  std::string printed;
  try {
    varnix::cli::runScript({.file = script.path()}, stage,
                           [&](const varnix::cli::Json& value) { printed += value.dump() + "\n"; });
  } catch (const varnix::cli::Failure&) {
    // A line is to blame. Anything else ends the fuzzer.
  }
  return printed;
}

/// As if no script had run; answers what the surfaces say then.
std::string tidyUp() {
  std::error_code ignored;
  std::filesystem::remove(varnix::cli::settingsFile(), ignored);
  host::postDarwinNotification(varnix::cli::kChangedNotification);
  return run(
      "wait\ntrack none\nforeground\nopen none\ncontrast off\nwait\nprint\n"
      "present control-centre\npresent notification-centre\nvolume\nfolder\nicon\nbadge\n"
      "keyboard\nprint\n");
}

std::string saidBefore;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  host::ProcessOptions options;
  options.bundle = "com.apple.springboard";
  options.kind = host::ProcessKind::springboard;
  options.files = varnix::cli::nowPlayingFiles();
  fuzz::host(options);
  // What records has to be there before the library.
  {
    const varnix::cli::Stage first;
  }
  host::loadLibrary(host::defaultLibraryPath());
  tidyUp();
  saidBefore = tidyUp();
  fuzz::require(!saidBefore.empty());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const objc::AutoreleasePool pool;
  run(fuzz::text(data, size));
  // Nothing is left of it, neither here nor in the platform or the library.
  fuzz::require(tidyUp() == saidBefore);
  return 0;
}
