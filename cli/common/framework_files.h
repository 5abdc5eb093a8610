// Framework files that a library of the device asks for by their paths.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace varnix::cli {

/// The build's MediaPlayerUI at the device's path. It is not copied into the container, which may
/// be full or belong to another user.
std::map<std::string, std::filesystem::path> nowPlayingFiles();

}  // namespace varnix::cli
