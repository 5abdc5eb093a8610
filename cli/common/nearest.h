// What somebody may have meant.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnix::cli {

struct Nearest {
  std::string word;
  std::size_t distance;  ///< letters to insert, remove, replace or swap with a neighbour
};

/// The nearest of the known words, ignoring case, if at most a third of the letters differ, and at
/// most three; the first of several.
std::optional<Nearest> nearest(std::string_view word, const std::vector<std::string>& known);

/// " (did you mean X?)", or empty if nothing is near.
std::string didYouMean(const std::optional<Nearest>& found);
std::string didYouMean(std::string_view word, const std::vector<std::string>& known);

}  // namespace varnix::cli
