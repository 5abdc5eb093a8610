// The container root: where the device's absolute paths are on this machine.
#pragma once

#include <string>
#include <string_view>

#include "export.h"

namespace host {

/// Sets the folder that stands for the device's "/".
HOST_EXPORT void setContainerRoot(std::string root);
HOST_EXPORT const std::string& containerRoot();

/// The machine's path for an absolute device path; ".." never leaves the root. Empty for a relative
/// or empty path: such a file does not exist.
HOST_EXPORT std::string hostPath(std::string_view devicePath);

/// Sets the folder with what packages have installed on every phone; empty for none.
HOST_EXPORT void setInstalledFolder(std::string folder);
HOST_EXPORT const std::string& installedFolder();

/// The machine's path to read from: that of hostPath where there is something, else the installed
/// one where there is something, else hostPath's. Never write there.
HOST_EXPORT std::string readablePath(std::string_view devicePath);

/// The device's path for one of the machine, below the root or the installed folder; empty for all
/// others.
HOST_EXPORT std::string devicePath(std::string_view path);

/// The root that a command uses: the option's value, else $VARNIX_ROOT, else a folder in the user's
/// data directory ($XDG_DATA_HOME/varnix or ~/.local/share/varnix). Created if missing; throws
/// std::runtime_error if that fails.
HOST_EXPORT std::string resolveContainerRoot(std::string_view option);

}  // namespace host
