#include "Foundation/property_list_guard.h"

#include <algorithm>

#include "Foundation/property_list.h"

namespace host {

std::string_view withoutPreamble(std::string_view text) {
  if (text.starts_with("\xef\xbb\xbf")) text.remove_prefix(3);
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return text;
}

bool isBinaryPropertyList(std::string_view bytes) { return bytes.starts_with("bplist00"); }

PropertyListFormat guardPropertyList(std::string_view bytes) {
  if (bytes.size() > kMaximumBytes) return PropertyListFormat::refused;
  if (isBinaryPropertyList(bytes)) {
    return isSafeBinaryPropertyList(bytes) ? PropertyListFormat::binary
                                           : PropertyListFormat::refused;
  }
  const std::string_view text = withoutPreamble(bytes);
  if (!text.starts_with('<')) return PropertyListFormat::refused;
  return isSafeXmlPropertyList(text) ? PropertyListFormat::xml : PropertyListFormat::refused;
}

}  // namespace host
