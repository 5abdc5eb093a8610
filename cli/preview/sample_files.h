// Pictures and settings that come with the sources.
#pragma once

#include <string>

namespace varnix::cli {

/// The file of that name below samples/. Throws Failure where it is not there.
std::string sampleFile(const std::string& name);

}  // namespace varnix::cli
