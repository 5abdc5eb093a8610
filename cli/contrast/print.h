// varnix theme contrast.
#pragma once

#include <string>

namespace varnix::cli {

struct LegibilityChoice {
  bool asJson = false, advises = false;
};

/// Measures the settings file and prints the places. Returns 1 if one does not hold. Throws Failure
/// and Interrupted.
int printLegibility(const std::string& file, const LegibilityChoice& choice);

}  // namespace varnix::cli
