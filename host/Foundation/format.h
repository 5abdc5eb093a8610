// The platform's format strings: printf's conversions and %@ for objects.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace host {

/// The formatted text. A nil object or C string reads "(null)".
std::string format(std::string_view format, va_list arguments);

/// The number that a text begins with, in the C locale; 0 where there is none.
double leadingDouble(const std::string& text);

}  // namespace host
