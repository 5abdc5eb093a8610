// Framework files of the device that lie in a container.
#pragma once

#include <string>

namespace varnix::cli {

/// Puts the build's MediaPlayerUI where a library's dlopen() looks for it, unless that very file is
/// there. Running processes keep the one they have. Throws Failure.
void putMediaPlayerUI(const std::string& containerRoot);

}  // namespace varnix::cli
