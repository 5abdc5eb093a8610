// Checks a slice against the rules for everything that the platform's loader and run-time read: all
// but its signature.
#pragma once

#include <optional>

#include "rules/findings.h"
#include "rules/image.h"

namespace varnix::device {

/// Reads the image from its bytes and applies the rules in order. False if its load commands cannot
/// be read.
bool checkCode(Image& image, Findings& findings);

/// The first rule of the platform that the slice at `offset` of its file breaks; nothing if it
/// keeps all. Rules of signatures, and those of this project only, are left out.
std::optional<Broken> firstBroken(Reader slice, uint64_t offset);

}  // namespace varnix::device
