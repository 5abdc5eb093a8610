// Checks that the given icons and other images are pictures, and complete.
#pragma once

#include <map>
#include <string>

#include "platform/Foundation.h"

namespace varnix::cli {

/// Called in the hosted process, whose image class decides; without that class any file passes.
/// Takes files by identifier. Throws Failure for the first that is not a picture.
void checkIcons(const std::map<std::string, std::string>& icons);

/// Warns on standard error if part of that file's image is missing.
void warnOfMissingRows(NSObject* image, const std::string& file);

}  // namespace varnix::cli
