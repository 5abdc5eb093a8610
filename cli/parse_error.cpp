#include "parse_error.h"

#include <string_view>

namespace varnix::cli {

std::string messageFor(const CLI::ParseError& error) {
  const std::string text = error.what();
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    return "unexpected argument: " + text.substr(text.find(": ") + 2);
  }
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    constexpr std::string_view kEnd = " is required";
    if (text.ends_with(kEnd)) {
      return "missing argument: " + text.substr(0, text.size() - kEnd.size());
    }
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return "wrong number of values: " + text;
  }
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr) {
    return "unusable value: " + text.substr(text.find(": ") + 2);
  }
  return "wrong usage: " + text;
}

}  // namespace varnix::cli
