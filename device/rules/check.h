// Holds a file against the rules that the platform's loader, kernel and run-time of classes impose.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rules/image.h"

namespace varnix::device {

struct RuleName {
  std::string_view name, sentence;
};
/// Every rule, in the order in which they are applied.
std::vector<RuleName> allRules();

struct Broken {
  std::string slice;      ///< "armv7", "arm64", or "file" for the whole.
  std::string_view rule;  ///< Its name.
  std::string what;       ///< The first place; how many more there are.
};

/// The rules that a file breaks, each once for a slice, in the order in which they are applied.
/// Rules that read by way of something unsound are left out: all of a slice without load commands,
/// what segments hold where these are wrong, and what is behind pointers where rebases or binds
/// are. Throws nothing for any bytes.
std::vector<Broken> checkLibrary(std::span<const uint8_t> file, const Offers& offers = {});

}  // namespace varnix::device
