#include "Foundation/keyed_archive.h"

#include "Foundation/text.h"
#include "runtime/runtime.h"

namespace host::archive {

NSString* storedKey(NSString* key) {
  if (key == nullptr) raiseArgument("a value is coded without a key");
  const std::string_view words = text(key);
  return words.starts_with('$') ? makeString("$" + std::string(words)) : key;
}

void raiseArgument(const std::string& reason) {
  throw runtime::Exception("NSInvalidArgumentException", reason);
}

void raiseOperation(const std::string& reason) {
  throw runtime::Exception("NSInvalidUnarchiveOperationException", reason);
}

}  // namespace host::archive
