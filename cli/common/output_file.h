// A file that a command writes: all of it appears at once, or the old one stays.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace varnix::cli {

/// Writes a file beside the one that is meant and renames it; a link stays one, and what it points
/// at is replaced. A device or a pipe is written to. Throws Failure; the old file is intact then.
void writeOutput(const std::string& file, std::string_view contents);

/// Throws UsageError where the output is one of the inputs, under whatever name.
void requireNoInput(const std::string& output, const std::vector<std::string>& inputs);

/// The same for a folder that is replaced as a whole, and inputs in it.
void requireNoInputWithin(const std::string& folder, const std::vector<std::string>& inputs);

}  // namespace varnix::cli
