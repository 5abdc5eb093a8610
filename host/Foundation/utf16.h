// UTF-16, as texts from other systems have it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

/// Whether the bytes begin with UTF-16's byte order mark.
bool isUtf16(std::string_view bytes);

/// The text behind the byte order mark in UTF-8; nothing where a unit or a pair is not whole.
std::optional<std::string> utf8FromUtf16(std::string_view bytes);

}  // namespace host
