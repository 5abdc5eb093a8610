// Text from outside, made fit to be drawn.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace varnix::cli::pick {

/// Well-formed UTF-8 without control characters: each byte that is neither becomes U+FFFD.
std::string displayedText(std::string_view bytes);

/// The text as it is where it fits, else its two ends, as long as they do, around an ellipsis.
std::string shortenedInTheMiddle(const std::string& utf8,
                                 const std::function<bool(const std::string&)>& fits);

}  // namespace varnix::cli::pick
