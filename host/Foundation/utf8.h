// UTF-8: checking, and counting in UTF-16 units.
#pragma once

#include <string>
#include <string_view>

namespace host {

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates.
bool isUtf8(std::string_view bytes);

/// The length in UTF-16 units of well-formed UTF-8.
std::size_t utf16Length(std::string_view utf8);

/// Where the character goes that an offset divides: a pair of UTF-16 units is one here.
enum class Divided { before, after };

/// The byte that the UTF-16 unit of that index is in, of well-formed UTF-8; its end beyond that.
std::size_t utf8Offset(std::string_view utf8, std::size_t unit, Divided divided);

/// Well-formed UTF-8 with all letters small, one by one.
std::string lowerCase(std::string_view utf8);

}  // namespace host
