#include "abi/variadic.h"

#include <cstdint>
#include <cstring>

#include "Foundation/format.h"
#include "Foundation/log.h"
#include "Foundation/text.h"
#include "platform/CoreFoundation.h"

// In functions.S and functions_arm.S: each adds the address of the unnamed arguments to the named
// ones.
extern "C" void varnix_NSLog();
extern "C" void varnix_CFLog();
extern "C" void varnix_logNotice(NSString* format, const char* unnamed);
extern "C" void varnix_logLevel(std::int32_t level, CFStringRef format, const char* unnamed);

namespace varnix::device {

namespace {

/// Arguments in memory as the device leaves them: each begins at a word.
class WordArguments final : public host::FormatArguments {
 public:
  explicit WordArguments(const char* at) : at_(at) {}

  int nextInt() override { return next<int>(); }
  long nextLong() override { return next<long>(); }
  long long nextLongLong() override { return next<long long>(); }
  double nextDouble() override { return next<double>(); }
  void* nextPointer() override { return next<void*>(); }

 private:
  template <class T>
  T next() {
    T value;
    std::memcpy(&value, at_, sizeof value);
    constexpr std::size_t kWord = sizeof(void*);
    at_ += (sizeof value + kWord - 1) / kWord * kWord;
    return value;
  }

  const char* at_;
};

std::string formatted(NSString* format, const char* unnamed) {
  WordArguments arguments(unnamed);
  return host::format(host::text(format), arguments);
}

/// Messages whose last named argument is a format, and how many named ones there are, receiver and
/// selector included.
struct Formatting {
  std::string_view selector;
  int named;
};
constexpr Formatting kFormatting[] = {
    {"raise:format:", 4}, {"stringByAppendingFormat:", 3}, {"stringWithFormat:", 3}};

/// A format that gives this text.
std::string withoutFormats(const std::string& text) {
  std::string format;
  for (const char c : text) {
    if (c == '%') format += c;
    format += c;
  }
  return format;
}

}  // namespace

void* variadicFunction(std::string_view name) {
  if (name == "NSLog") return reinterpret_cast<void*>(&varnix_NSLog);
  if (name == "CFLog") return reinterpret_cast<void*>(&varnix_CFLog);
  return nullptr;
}

void* variadicMessage(std::string_view selector, void** words, void* stack) {
  for (const Formatting& each : kFormatting) {
    if (each.selector != selector) continue;
    // The text becomes the format of a message without unnamed arguments.
    void*& format = words[each.named - 1];
    void* unnamed = sizeof(void*) == 8 ? stack : words + each.named;
    format = host::makeString(withoutFormats(
        formatted(static_cast<NSString*>(format), static_cast<const char*>(unnamed))));
    return nullptr;
  }
#if defined(__aarch64__)
  return listMessage(selector, words, stack);
#else
  return nullptr;
#endif
}

}  // namespace varnix::device

using namespace varnix::device;

void varnix_logNotice(NSString* format, const char* unnamed) {
  host::log(host::LogLevel::notice, formatted(format, unnamed));
}

void varnix_logLevel(std::int32_t level, CFStringRef format, const char* unnamed) {
  host::log(static_cast<host::LogLevel>(level), formatted(format, unnamed));
}
