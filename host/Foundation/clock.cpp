#include "Foundation/clock.h"

#include <chrono>
#include <mutex>

namespace host {

namespace {

struct Settings {
  std::mutex lock;
  std::optional<double> stoppedAt;
  std::string locale = "en_US";
  long zone = 0;
};

Settings& settings() {
  static auto* one = new Settings;
  return *one;
}

}  // namespace

void setClock(std::optional<double> seconds) {
  const std::scoped_lock guard(settings().lock);
  settings().stoppedAt = seconds;
}

double now() {
  const std::scoped_lock guard(settings().lock);
  if (const auto stopped = settings().stoppedAt) return *stopped;
  using namespace std::chrono;
  return duration<double>(system_clock::now() - sys_days{2001y / January / 1}).count();
}

void setUserLocale(std::string identifier) {
  const std::scoped_lock guard(settings().lock);
  settings().locale = std::move(identifier);
}

std::string userLocale() {
  const std::scoped_lock guard(settings().lock);
  return settings().locale;
}

void setLocalTimeZone(long seconds) {
  const std::scoped_lock guard(settings().lock);
  settings().zone = seconds;
}

long localTimeZone() {
  const std::scoped_lock guard(settings().lock);
  return settings().zone;
}

}  // namespace host
