// Whether the icons that were given are pictures.
#pragma once

#include <map>
#include <string>

namespace varnix::cli {

/// To be asked in the hosted process, by its own image class; one without that class takes any
/// file. The files by identifier; throws Failure for the first that is no picture.
void checkIcons(const std::map<std::string, std::string>& icons);

}  // namespace varnix::cli
