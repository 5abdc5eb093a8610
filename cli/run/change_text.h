// Events of the run-time, one line each.
#pragma once

#include <string>

#include "runtime/runtime.h"

namespace varnix::cli {

/// "add  -[UIColor isVarnixColor] B@:" or "hook -[UIView tintColor]".
inline std::string changeText(const host::runtime::Change& change) {
  const bool isAddition = change.kind == host::runtime::Change::Kind::add;
  std::string line = isAddition ? "add  " : "hook ";
  line += change.classMethod ? '+' : '-';
  line += '[' + change.className + ' ' + change.selector + ']';
  return isAddition ? line + ' ' + change.types : line;
}

/// "send -[UIView tintColor]".
inline std::string messageText(const host::runtime::Message& message) {
  return std::string("send ") + (message.toClass ? '+' : '-') + '[' +
         std::string(message.className) + ' ' + std::string(message.selector) + ']';
}

}  // namespace varnix::cli
