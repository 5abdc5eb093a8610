// varnix preview --against: pictures as a test.
#pragma once

#include <string>
#include <vector>

#include "preview/studio.h"

namespace varnix::cli {

/// Throws Failure if there is no such folder.
void requireKeptPictures(const std::string& kept);

/// Draws, compares with the kept pictures, and writes what differs to the other folder. Prints a
/// line for each picture that differs. Of the kept ones, only those of the named screens are
/// compared; all if none is named. The exit status: 1 if anything differs.
int compareWithKept(Studio& studio, const std::string& kept, const std::string& out,
                    const std::vector<std::string>& screens, const Studio::Progress& progress);

}  // namespace varnix::cli
