// Checks a file against the rules of the platform's loader, kernel and Objective-C run-time.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "rules/findings.h"
#include "rules/image.h"

namespace varnix::device {

/// Every rule, in the order in which they are applied.
std::vector<RuleName> allRules();

/// The rules that a file breaks, each once per slice, in the order in which they are applied. Rules
/// that depend on something unsound are skipped: all rules of a slice without load commands, those
/// of segments' contents if the segments are wrong, and those behind pointers if rebases or binds
/// are wrong. Never throws, whatever the bytes.
std::vector<Broken> checkLibrary(std::span<const uint8_t> file, const Offers& offers = {},
                                 Asked asked = Asked::all);

}  // namespace varnix::device
