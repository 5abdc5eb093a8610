// Versions as load commands have them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace varnix::device {

/// "9.3" or "2.0.0" as a number: 0x00090300. Throws Error for anything else.
uint32_t parseVersion(std::string_view text);

/// All three parts: "9.3.0".
std::string versionText(uint32_t version);

}  // namespace varnix::device
