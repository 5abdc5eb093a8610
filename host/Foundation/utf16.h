// UTF-16, as used in texts from other systems.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

/// Whether the bytes begin with UTF-16's byte order mark.
bool isUtf16(std::string_view bytes);

/// The text after the byte order mark, in UTF-8; nothing if a unit or a pair is incomplete.
std::optional<std::string> utf8FromUtf16(std::string_view bytes);

}  // namespace host
