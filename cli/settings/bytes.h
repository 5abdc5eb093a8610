// The bytes of a settings file.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Foundation.h"

namespace varnix::cli {

/// Whether XML can store the text so that every reader gets the same back: it cannot write most
/// control characters, U+FFFE and U+FFFF, and a carriage return comes back as a line feed.
bool fitsXml(std::string_view text);

/// XML, or the binary form if some text does not fit; nothing if a property list cannot hold the
/// contents.
std::optional<std::string> settingsBytes(NSDictionary* settings);

}  // namespace varnix::cli
