// What is in a theme, in order, and what differs between two.
#pragma once

#include <string>
#include <vector>

#include "platform/Foundation.h"

namespace varnix::cli {

/// "key = value" for each key, in the order of the help: first the keys for everybody, then each
/// application's, then unknown ones. Without what the library keeps for itself.
std::vector<std::string> settingLines(NSDictionary* theme);

/// For each key whose stored value differs "- key = value" of the first theme, then "+ key = value"
/// of the second, without the line of one that does not have it. Text is quoted, so "1" differs
/// from 1. In the same order.
std::vector<std::string> differences(NSDictionary* one, NSDictionary* other);

}  // namespace varnix::cli
