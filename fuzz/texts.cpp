// Tables of texts: what is read, written out again, reads the same.
#include <string>

#include "Foundation/strings_file.h"
#include "Foundation/text.h"
#include "hosted_process.h"
#include "objc/autorelease_pool.h"
#include "runtime/send.h"

namespace {

std::string quoted(NSString* text) {
  std::string written = "\"";
  for (const char c : host::text(text)) {
    if (c == '"' || c == '\\') written += '\\';
    written += c;
  }
  return written + '"';
}

/// In the form of text; nothing for a property list with values of other kinds.
std::string written(NSDictionary* table) {
  std::string lines;
  NSArray* keys = send(table, NSDictionary::allKeys);
  for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
    NSObject* key = send(keys, NSArray::objectAtIndex, i);
    auto* value = objc::as<NSString>(send(table, NSDictionary::objectForKey, key));
    if (value == nullptr) return {};
    lines += quoted(static_cast<NSString*>(key)) + " = " + quoted(value) + ";\n";
  }
  return lines;
}

/// Bytes that another form would be taken for.
bool isAmbiguous(const std::string& lines) { return lines.find("<plist") != lines.npos; }

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  host::ProcessOptions options;
  options.kind = host::ProcessKind::daemon;
  fuzz::host(options);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const objc::AutoreleasePool pool;
  NSDictionary* table = host::stringsFromData(fuzz::text(data, size));
  if (table == nullptr) return 0;
  const std::string lines = written(table);
  if (lines.empty() || isAmbiguous(lines)) return 0;
  NSDictionary* again = host::stringsFromData(lines);
  fuzz::require(again != nullptr && send(table, NSObject::isEqual, again));
  return 0;
}
