// Commands that come line by line, from a file or from standard input.
#pragma once

#include <functional>
#include <istream>
#include <span>
#include <string>
#include <vector>

namespace varnix::cli {

using Words = std::vector<std::string>;

/// Finds the first form that a line fits and hands over its index and the line's free words. A word
/// of a form in capitals stands for any word; where it is the last, for the rest of the line. Empty
/// lines and lines that begin with # are nothing. Throws Failure where no form fits.
void runLine(std::span<const char* const> forms, const std::string& line,
             const std::function<void(std::size_t form, const Words& arguments)>& run);

/// False at the end. Throws Failure for a line of 8 KiB.
bool nextLine(std::istream& input, std::string& line);

/// Every line of the file, of standard input for "-", as it comes. Throws Failure, with the line's
/// number for what a line throws.
void runLines(const std::string& file, const std::function<void(const std::string& line)>& run);

/// The forms, one a line, for people.
std::string formList(std::span<const char* const> forms);

}  // namespace varnix::cli
