// SpringBoard, with the library in it, runs scripts from the first line to the last.
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

/// An unnamed file with those bytes.
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

/// Runs a script and returns what it printed; its objects are gone afterwards.
std::string run(std::string_view text) {
  const Script script(text);
  varnix::cli::Stage stage;
  std::string printed;
  try {
    varnix::cli::runScript({.file = script.path()}, stage,
                           [&](const varnix::cli::Json& value) { printed += value.dump() + "\n"; });
  } catch (const varnix::cli::Failure&) {
    // A line was wrong. Any other exception ends the fuzzer.
  }
  return printed;
}

/// Restores the state before any script, and returns what the surfaces answer then.
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
  // The recorder must be there before the library.
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
  // The script must leave nothing behind: not here, in the platform or in the library.
  fuzz::require(tidyUp() == saidBefore);
  return 0;
}
