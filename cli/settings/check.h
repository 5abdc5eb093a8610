// What is wrong with a settings file. The library reads such a file without complaint.
#pragma once

#include <string>
#include <vector>

namespace varnix::cli {

struct Finding {
  std::string key;      ///< empty for the file as a whole
  std::string wrong;    ///< "\"maybe\" is not true or false"
  std::string instead;  ///< what happens instead: "it counts as false"
};

/// What the library does not read as it was meant, by key in alphabetical order: a file without
/// settings, unknown keys, values of another kind, unreadable colours. Empty for a file that does
/// not exist.
std::vector<Finding> checkSettings(const std::string& file);

/// "enabled: \"maybe\" is not true or false; it counts as false", safe for a terminal.
std::string findingText(const Finding& finding);

/// Prints what is wrong with any file, a pipe too. The exit status: 1 if something is. Throws
/// Failure for one that cannot be read.
int printFindings(const std::string& file);
int printFindings(const std::vector<Finding>& findings);

/// Warns of what is wrong with the file, under that name; of the first twenty things.
void warnOfSettings(const std::string& file, const std::string& name);

}  // namespace varnix::cli
