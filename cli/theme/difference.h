// What differs between two themes.
#pragma once

#include <string>
#include <vector>

#include "platform/Foundation.h"

namespace varnix::cli {

/// For each key whose stored value differs "- key = value" of the first theme, then "+ key = value"
/// of the second, without the line of one that does not have it. Text is quoted, so "1" differs
/// from 1. First the keys for everybody in the order of the help, then each application's in the
/// same order, then unknown ones. What the library keeps for itself is not compared.
std::vector<std::string> differences(NSDictionary* one, NSDictionary* other);

}  // namespace varnix::cli
