#include "common/swatches.h"

#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "common/errors.h"
#include "common/nearest.h"

namespace varnix::cli {

namespace {

int channel(std::string_view color, std::size_t at) {
  int value = 0;
  std::from_chars(color.data() + at, color.data() + at + 2, value, 16);
  return value;
}

}  // namespace

bool wantsSwatches(const std::string& choice) {
  if (choice == "always") return true;
  if (choice == "never") return false;
  if (choice != "auto")
    throw UsageError("no such choice of --color",
                     choice + didYouMean(choice, {"auto", "always", "never"}));
  const char* refused = std::getenv("NO_COLOR");
  return isatty(STDOUT_FILENO) == 1 && (refused == nullptr || *refused == '\0') &&
         !isDumbTerminal();
}

bool isDumbTerminal() {
  const char* terminal = std::getenv("TERM");
  return terminal != nullptr && std::string_view(terminal) == "dumb";
}

std::string swatch(std::string_view color) {
  char text[40];
  std::snprintf(text, sizeof text, "\x1b[48;2;%d;%d;%dm  \x1b[0m ", channel(color, 1),
                channel(color, 3), channel(color, 5));
  return text;
}

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

}  // namespace varnix::cli
