// Framework files that a library of the device asks for by their paths.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace varnix::cli {

/// The build's MediaPlayerUI at the device's path: nothing of it lies in a container, which may be
/// full, or another user's.
std::map<std::string, std::filesystem::path> nowPlayingFiles();

}  // namespace varnix::cli
