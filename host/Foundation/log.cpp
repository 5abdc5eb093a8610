#include "Foundation/log.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>

#include "Foundation/format.h"
#include "Foundation/text.h"
#include "platform/CoreFoundation.h"

namespace host {

namespace {

struct Log {
  std::mutex mutex;
  std::vector<LogLine> lines;
  bool print = false;
};

Log& systemLog() {
  static auto* lines = new Log;
  return *lines;
}

void add(int level, std::string line) {
  Log& target = systemLog();
  std::scoped_lock guard(target.mutex);
  if (target.print) std::fprintf(stderr, "<%d> %s\n", level, line.c_str());
  target.lines.push_back({level, std::move(line)});
}

}  // namespace

void log(LogLevel level, std::string line) { add(static_cast<int>(level), std::move(line)); }

std::vector<LogLine> logLines() {
  std::scoped_lock guard(systemLog().mutex);
  return systemLog().lines;
}

void printLog(bool enabled) {
  std::scoped_lock guard(systemLog().mutex);
  systemLog().print = enabled;
}

}  // namespace host

extern "C" {

HOST_EXPORT void CFLog(std::int32_t level, CFStringRef format, ...) {
  va_list arguments;
  va_start(arguments, format);
  host::add(level, host::format(host::text(format), arguments));
  va_end(arguments);
}

HOST_EXPORT void NSLog(NSString* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  host::add(static_cast<int>(host::LogLevel::notice), host::format(host::text(format), arguments));
  va_end(arguments);
}
}
