// The icons that a process is told of.
#pragma once

#include <map>
#include <string>

namespace varnix::cli {

/// By identifier; the icons of a gallery, as that process has to know them. In the Settings
/// application's list of applications none comes twice: an icon of the samples belongs to the
/// application that every phone has.
std::map<std::string, std::string> iconsFor(const std::string& bundle,
                                            std::map<std::string, std::string> icons);

}  // namespace varnix::cli
