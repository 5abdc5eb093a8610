#include "preview/followed_file.h"

#include <chrono>
#include <optional>

#include "Foundation/file_contents.h"
#include "Foundation/property_list.h"
#include "common/errors.h"
#include "common/warning.h"
#include "objc/autorelease_pool.h"
#include "settings/check.h"

namespace varnix::cli {

namespace {

// A file that is being written is empty or cut short, and one that is removed may be made again.
constexpr std::chrono::milliseconds kGrace{500};

/// Empty if the bytes hold settings.
std::string whyNoSettings(const std::optional<std::string>& bytes, const std::string& file) {
  const objc::AutoreleasePool pool;
  if (bytes && objc::as<NSDictionary>(host::propertyListFromData(*bytes)) != nullptr) return "";
  const auto findings = checkSettings(file);
  // It may have become readable since.
  return findings.empty() || !findings.front().key.empty() ? "not there" : findings.front().wrong;
}

}  // namespace

void followFile(FileWatch& watch, const std::string& file, const std::string& copy,
                const std::function<void()>& changed) {
  std::optional<std::string> last = host::fileContents(copy, host::kMaximumBytes);
  std::string complaint;
  while (true) {
    const auto bytes = host::fileContents(file, host::kMaximumBytes);
    if (bytes != last || !complaint.empty()) {
      const std::string why = whyNoSettings(bytes, file);
      if (why.empty()) {
        if (!host::writeFile(copy, *bytes, true)) throw Failure("cannot write", copy);
        last = bytes;
        warnOfSettings(copy, file);
        changed();
      } else if (why != complaint) {
        if (watch.wait(std::chrono::steady_clock::now() + kGrace)) continue;
        warn(file + ": " + why + "; the last pictures stay");
      }
      complaint = why;
    }
    watch.wait({});
  }
}

}  // namespace varnix::cli
