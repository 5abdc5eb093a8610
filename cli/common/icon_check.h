// Whether the icons and other images that were given are pictures, and whole ones.
#pragma once

#include <map>
#include <string>

#include "platform/Foundation.h"

namespace varnix::cli {

/// To be asked in the hosted process, by its own image class; one without that class takes any
/// file. The files by identifier; throws Failure for the first that is no picture.
void checkIcons(const std::map<std::string, std::string>& icons);

/// Says on standard error where an image of that file is there in part only.
void warnOfMissingRows(NSObject* image, const std::string& file);

}  // namespace varnix::cli
