// Commands that arrive line by line, from a file or standard input.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "common/line_reader.h"

namespace varnix::cli {

using Words = std::vector<std::string>;

/// Finds the first form that a line fits, and passes its index and the line's free words on. A word
/// of a form in capitals stands for any word; at the end, for the rest of the line. Empty lines and
/// lines that begin with # are skipped. Throws Failure if no form fits.
void runLine(std::span<const char* const> forms, const std::string& line,
             const std::function<void(std::size_t form, const Words& arguments)>& run);

/// Runs every line of the source as it arrives. Throws Interrupted, and Failure with the line's
/// number for anything that a line throws.
void runLines(const LineSource& source, const std::function<void(const std::string& line)>& run);

/// The forms for people, one on each line.
std::string formList(std::span<const char* const> forms);

}  // namespace varnix::cli
