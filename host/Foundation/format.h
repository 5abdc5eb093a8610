// The platform's format strings: printf's conversions and %@ for objects.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace host {

/// The unnamed arguments of a call, in order.
class FormatArguments {
 public:
  FormatArguments() = default;
  FormatArguments(const FormatArguments&) = delete;
  FormatArguments& operator=(const FormatArguments&) = delete;

  virtual int nextInt() = 0;
  virtual long nextLong() = 0;
  virtual long long nextLongLong() = 0;
  virtual double nextDouble() = 0;
  virtual void* nextPointer() = 0;

 protected:
  ~FormatArguments() = default;
};

/// The formatted text. A nil object or C string gives "(null)".
std::string format(std::string_view format, FormatArguments& arguments);
std::string format(std::string_view format, va_list arguments);

/// The number at the beginning of a text, in the C locale; 0 if there is none.
double leadingDouble(const std::string& text);

}  // namespace host
