// An extension that does what $MISBEHAVE says while it is loaded.
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace {

[[gnu::constructor]] void start() {
  const char* asked = std::getenv("MISBEHAVE");
  const std::string_view deed = asked == nullptr ? "" : asked;
  if (deed == "abort") std::abort();
  while (deed == "hang") pause();
}

}  // namespace
