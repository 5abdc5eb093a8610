// Holds a file against the rules that the platform's loader, kernel and run-time of classes impose.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "rules/findings.h"
#include "rules/image.h"

namespace varnix::device {

/// Every rule, in the order in which they are applied.
std::vector<RuleName> allRules();

/// The rules that a file breaks, each once for a slice, in the order in which they are applied.
/// Rules that read by way of something unsound are left out: all of a slice without load commands,
/// what segments hold where these are wrong, and what is behind pointers where rebases or binds
/// are. Throws nothing for any bytes.
std::vector<Broken> checkLibrary(std::span<const uint8_t> file, const Offers& offers = {});

}  // namespace varnix::device
