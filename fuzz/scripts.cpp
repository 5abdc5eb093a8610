// Scripts, run from their first line to their last by SpringBoard with the library in it.
#include <sys/mman.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "hosted_process.h"
#include "objc/autorelease_pool.h"
#include "runtime/runtime.h"
#include "script.h"
#include "settings_file.h"

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

void run(const std::string& script, varnix::cli::Stage& stage) {
  try {
    varnix::cli::runScript({.file = script}, stage, [](const varnix::cli::Json& value) {
      value.dump(-1, ' ', false, varnix::cli::Json::error_handler_t::strict);
    });
  } catch (const host::runtime::Exception&) {
    throw;  // the platform's: nothing that a script says may raise
  } catch (const std::exception&) {
  }
}

/// As if no script had run.
void tidyUp() {
  const Script script("track none\nforeground\nopen none\ncontrast off\nwait\n");
  varnix::cli::Stage stage;
  std::error_code ignored;
  std::filesystem::remove(varnix::cli::settingsFile(), ignored);
  varnix::cli::runScript({.file = script.path()}, stage, [](const varnix::cli::Json&) {});
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::host(host::ProcessKind::springboard, "com.apple.springboard");
  {
    const varnix::cli::Stage first;
  }  // what it records is to be replaced before the library comes
  host::loadLibrary(host::defaultLibraryPath());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const objc::AutoreleasePool pool;
  const Script script(fuzz::text(data, size));
  {
    varnix::cli::Stage stage;
    run(script.path(), stage);
  }
  tidyUp();
  return 0;
}
