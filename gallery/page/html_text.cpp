#include "gallery/page/html_text.h"

namespace varnix::cli::gallery {

std::string htmlText(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '<':
        result += "&lt;";
        break;
      case '&':
        result += "&amp;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

}  // namespace varnix::cli::gallery
