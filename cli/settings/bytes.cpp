#include "settings/bytes.h"

#include <algorithm>

#include "Foundation/property_list.h"
#include "Foundation/text.h"

namespace varnix::cli {

namespace {

/// Checks a text, or everything in a container. What was read from a file is not nested deeply.
bool allFitsXml(NSObject* object) {
  if (auto* string = objc::as<NSString>(object)) return fitsXml(host::text(string));
  if (auto* array = objc::as<NSArray>(object)) {
    for (NSUInteger i = 0; i < send(array, NSArray::count); ++i) {
      if (!allFitsXml(send(array, NSArray::objectAtIndex, i))) return false;
    }
  }
  if (auto* dictionary = objc::as<NSDictionary>(object)) {
    NSArray* keys = send(dictionary, NSDictionary::allKeys);
    for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
      NSObject* key = send(keys, NSArray::objectAtIndex, i);
      NSObject* value = send(dictionary, NSDictionary::objectForKey, static_cast<NSString*>(key));
      if (!allFitsXml(key) || !allFitsXml(value)) return false;
    }
  }
  return true;
}

}  // namespace

bool fitsXml(std::string_view text) {
  return text.find("\xef\xbf\xbe") == text.npos && text.find("\xef\xbf\xbf") == text.npos &&
         std::all_of(text.begin(), text.end(),
                     [](unsigned char c) { return c >= ' ' || c == '\t' || c == '\n'; });
}

std::optional<std::string> settingsBytes(NSDictionary* settings) {
  return allFitsXml(settings) ? host::xmlFromPropertyList(settings)
                              : host::binaryFromPropertyList(settings);
}

}  // namespace varnix::cli
