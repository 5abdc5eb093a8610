#include "Foundation/format.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>

#include "Foundation/text.h"

namespace host {

namespace {

template <class T>
void append(std::string& out, const std::string& conversion, T value) {
  char small[128];
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  const int length = std::snprintf(small, sizeof small, conversion.c_str(), value);
  if (length < 0) return;
  if (static_cast<std::size_t>(length) < sizeof small) {
    out.append(small, static_cast<std::size_t>(length));
    return;
  }
  std::string large(static_cast<std::size_t>(length) + 1, '\0');
  std::snprintf(large.data(), large.size(), conversion.c_str(), value);
#pragma GCC diagnostic pop
  large.pop_back();
  out += large;
}

std::string describe(NSObject* object) {
  if (object == nullptr) return "(null)";
  return std::string(text(send(object, NSObject::description)));
}

/// The arguments of a variadic function in this process.
class ListArguments final : public FormatArguments {
 public:
  explicit ListArguments(va_list given) { va_copy(list_, given); }
  ~ListArguments() { va_end(list_); }

  int nextInt() override { return va_arg(list_, int); }
  long nextLong() override { return va_arg(list_, long); }
  long long nextLongLong() override { return va_arg(list_, long long); }
  double nextDouble() override { return va_arg(list_, double); }
  void* nextPointer() override { return va_arg(list_, void*); }

 private:
  va_list list_;
};

}  // namespace

std::string format(std::string_view text, va_list given) {
  ListArguments arguments(given);
  return format(text, arguments);
}

std::string format(std::string_view format, FormatArguments& arguments) {
  std::string out;
  for (std::size_t at = 0; at < format.size();) {
    if (format[at] != '%') {
      const std::size_t next = std::min(format.find('%', at), format.size());
      out.append(format.substr(at, next - at));
      at = next;
      continue;
    }
    std::size_t end = at + 1;
    while (end < format.size() &&
           std::string_view("-+ #0123456789.").find(format[end]) != std::string_view::npos)
      ++end;
    std::size_t sizeAt = end;
    while (end < format.size() &&
           std::string_view("hlqzjt").find(format[end]) != std::string_view::npos)
      ++end;
    if (end == format.size()) break;
    const std::string_view size = format.substr(sizeAt, end - sizeAt);
    // A long is as wide as a pointer.
    const bool isLong = size == "l" || size == "z" || size == "t";
    const bool isLongLong = size == "ll" || size == "q" || size == "j";
    const char conversion = format[end];
    const std::string flags(format.substr(at, sizeAt - at));
    at = end + 1;
    switch (conversion) {
      case '%':
        out += '%';
        break;
      case '@':
        out += describe(static_cast<NSObject*>(arguments.nextPointer()));
        break;
      case 's': {
        const auto* string = static_cast<const char*>(arguments.nextPointer());
        append(out, flags + "s", string == nullptr ? "(null)" : string);
        break;
      }
      case 'd':
      case 'i':
        append(out, flags + "lld",
               isLongLong ? arguments.nextLongLong()
               : isLong   ? arguments.nextLong()
                          : arguments.nextInt());
        break;
      case 'u':
      case 'x':
      case 'X':
      case 'o':
        append(out, flags + "ll" + conversion,
               isLongLong ? static_cast<unsigned long long>(arguments.nextLongLong())
               : isLong   ? static_cast<unsigned long>(arguments.nextLong())
                          : static_cast<unsigned int>(arguments.nextInt()));
        break;
      case 'c':
        append(out, flags + "c", arguments.nextInt());
        break;
      case 'p':
        append(out, flags + "p", arguments.nextPointer());
        break;
      case 'f':
      case 'g':
      case 'e':
        append(out, flags + conversion, arguments.nextDouble());
        break;
      default:
        break;
    }
  }
  return out;
}

double leadingDouble(const std::string& text) {
  const char* first = text.c_str();
  const char* last = first + text.size();
  if (*first == '+') ++first;
  double value = 0;
  std::from_chars(first, last, value);
  return value;
}

}  // namespace host
