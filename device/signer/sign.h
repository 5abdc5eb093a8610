// Ad-hoc signatures: digests of the code, without a key.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace varnix::device {

/// A copy of a library for one architecture, signed under that identifier with SHA-1, which older
/// systems want, and SHA-256. An existing signature is replaced. Throws Error if there is no room
/// for the load command, or if the file is not such a library.
std::vector<uint8_t> sign(std::span<const uint8_t> file, const std::string& identifier);

/// Throws Error, saying why, unless the file is what `sign` makes of it: both digests of each page.
void verify(std::span<const uint8_t> file, const std::string& identifier);

}  // namespace varnix::device
