// A settings file's bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Foundation.h"

namespace varnix::cli {

/// Whether XML can say the text so that everybody reads the same: it has no way to write most
/// control characters, U+FFFE and U+FFFF, and a carriage return comes back as a line feed.
bool fitsXml(std::string_view text);

/// XML, or the binary form for contents with text that does not fit; nothing for what no property
/// list can hold.
std::optional<std::string> settingsBytes(NSDictionary* settings);

}  // namespace varnix::cli
