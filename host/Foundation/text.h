// The implementation of strings: the stand-in's own code reads and makes them without messages.
#pragma once

#include <string>
#include <string_view>

#include "export.h"
#include "objc/strong.h"
#include "platform/Foundation.h"
#include "runtime/send.h"

namespace host {

/// The text of a string, valid as long as the string; empty for nil.
HOST_EXPORT std::string_view text(NSString* string);

/// A new string, autoreleased; nil for text that is not UTF-8.
HOST_EXPORT NSString* makeString(std::string_view utf8);
/// The same, owned by the caller.
HOST_EXPORT Strong<NSString> makeOwnedString(std::string_view utf8);

/// The same for every kind of string with the same text.
std::size_t hashOf(NSString* string);

bool isString(NSObject* object);

}  // namespace host
