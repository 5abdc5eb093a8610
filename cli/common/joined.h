// Words joined into one text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace varnix::cli {

inline std::string joined(const std::vector<std::string>& words, std::string_view between = " ") {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : between).append(word);
  return text;
}

}  // namespace varnix::cli
