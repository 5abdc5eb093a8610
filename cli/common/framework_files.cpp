#include "common/framework_files.h"

#include "process/process.h"

namespace varnix::cli {

std::map<std::string, std::filesystem::path> nowPlayingFiles() {
  constexpr char kDevicePath[] =
      "/System/Library/PrivateFrameworks/MediaPlayerUI.framework/MediaPlayerUI";
  return {{kDevicePath, host::ownFolder() / "Frameworks" / "MediaPlayerUI.so"}};
}

}  // namespace varnix::cli
