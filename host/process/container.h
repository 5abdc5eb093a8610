// The container root: where the device's absolute paths lie on this machine.
#pragma once

#include <string>
#include <string_view>

#include "export.h"

namespace host {

/// Sets the folder that stands for the device's "/".
HOST_EXPORT void setContainerRoot(std::string root);
HOST_EXPORT const std::string& containerRoot();

/// The machine's path of an absolute device path; ".." never leaves the root. Where a relative
/// path or an empty one is given the result is empty: such a file does not exist.
HOST_EXPORT std::string hostPath(std::string_view devicePath);

/// The root that a command uses: the option's value, else $VARNIX_ROOT, else a folder under the
/// user's data directory ($XDG_DATA_HOME/varnix or ~/.local/share/varnix). Created where missing;
/// throws std::runtime_error where it cannot be.
HOST_EXPORT std::string resolveContainerRoot(std::string_view option);

}  // namespace host
