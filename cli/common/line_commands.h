// Commands that come line by line, from a file or from standard input.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "common/line_reader.h"

namespace varnix::cli {

using Words = std::vector<std::string>;

/// Finds the first form that a line fits and hands over its index and the line's free words. A word
/// of a form in capitals stands for any word; where it is the last, for the rest of the line. Empty
/// lines and lines that begin with # are skipped. Throws Failure if no form fits.
void runLine(std::span<const char* const> forms, const std::string& line,
             const std::function<void(std::size_t form, const Words& arguments)>& run);

/// Every line of the source, as it comes. Throws Interrupted, and Failure with the line's number
/// for what a line throws.
void runLines(const LineSource& source, const std::function<void(const std::string& line)>& run);

/// The forms, one a line, for people.
std::string formList(std::span<const char* const> forms);

}  // namespace varnix::cli
