// Whole files, in and out.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace varnix::device {

/// Throws Error with the path and the reason.
std::vector<uint8_t> readFile(const std::string& path);
std::string readTextFile(const std::string& path);
void writeFile(const std::string& path, std::span<const uint8_t> bytes);

}  // namespace varnix::device
