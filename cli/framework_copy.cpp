#include "framework_copy.h"

#include <filesystem>
#include <system_error>

#include "Foundation/file_contents.h"
#include "Foundation/property_list.h"
#include "errors.h"
#include "input_limits.h"
#include "process/process.h"

namespace varnix::cli {

namespace {

constexpr char kDevicePath[] =
    "/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI";
}  // namespace

void putMediaPlayerUI(const std::string& containerRoot) {
  const auto build = std::filesystem::path(host::defaultLibraryPath()).parent_path();
  const std::string source = build / "Frameworks" / "MediaPlayerUI.so";
  const auto contents = host::fileContents(source, kLargestFile);
  if (!contents) throw Failure("cannot read the framework", source);
  const std::string target = containerRoot + kDevicePath;
  if (host::fileContents(target, kLargestFile) == contents) return;
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(target).parent_path(), error);
  // A file that is replaced stays with the processes that run it; one that is rewritten would not.
  if (error || !host::writeFile(target, *contents, true))
    throw Failure("cannot put the framework into the container", target);
}

}  // namespace varnix::cli
