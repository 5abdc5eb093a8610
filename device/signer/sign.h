// Ad-hoc signatures: digests of the code, and nobody's key.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace varnix::device {

/// A copy of a library for one architecture, signed under that identifier with SHA-1, which older
/// systems want, and SHA-256. A signature that is there is replaced. Throws Error where there is no
/// room for the load command or the file is no such library.
std::vector<uint8_t> sign(std::span<const uint8_t> file, const std::string& identifier);

/// Throws Error, saying why, unless the file is what `sign` makes of it: both digests of each page.
void verify(std::span<const uint8_t> file, const std::string& identifier);

}  // namespace varnix::device
