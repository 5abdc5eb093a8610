// Text from outside, made safe to draw.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace varnix::cli::pick {

/// Well-formed UTF-8 without control characters: every other byte becomes U+FFFD.
std::string displayedText(std::string_view bytes);

/// The text unchanged if it fits, else its two ends, as long as fits, around an ellipsis.
std::string shortenedInTheMiddle(const std::string& utf8,
                                 const std::function<bool(const std::string&)>& fits);

}  // namespace varnix::cli::pick
