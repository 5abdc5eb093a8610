// Pictures and settings that come with the sources.
#pragma once

#include <string>

namespace varnix::cli {

/// The file of that name in samples/. Throws Failure if there is none.
std::string sampleFile(const std::string& name);

}  // namespace varnix::cli
