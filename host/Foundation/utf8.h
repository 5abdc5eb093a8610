// UTF-8: checking, and counting in UTF-16 units.
#pragma once

#include <string_view>

namespace host {

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates.
bool isUtf8(std::string_view bytes);

/// The length in UTF-16 units of well-formed UTF-8.
std::size_t utf16Length(std::string_view utf8);

}  // namespace host
