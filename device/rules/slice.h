// Holds a slice against the rules of what the platform's loader and run-time read of it: all but
// its signature.
#pragma once

#include <optional>

#include "rules/findings.h"
#include "rules/image.h"

namespace varnix::device {

/// Reads the image by its bytes and applies the rules in order. False where its load commands
/// cannot be read.
bool checkCode(Image& image, Findings& findings);

/// The first rule of the platform that a slice breaks, which begins at `offset` of its file; none
/// where it keeps to all. Rules of signatures are left out, and those that only this project has.
std::optional<Broken> firstBroken(Reader slice, uint64_t offset);

}  // namespace varnix::device
