// A file that a command writes: it appears complete, or the old one stays.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace varnix::cli {

/// Writes a file beside the target and renames it. A link stays, and the file it points at is
/// replaced. A device or a pipe is written to directly. Throws Failure; the old file is then
/// intact.
void writeOutput(const std::string& file, std::string_view contents);

/// Throws UsageError if the output is one of the inputs, by any name.
void requireNoInput(const std::string& output, const std::vector<std::string>& inputs);

/// The same for a folder that is replaced as a whole, and inputs inside it.
void requireNoInputWithin(const std::string& folder, const std::vector<std::string>& inputs);

}  // namespace varnix::cli
