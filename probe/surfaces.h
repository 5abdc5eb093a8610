// What people see of a process: a table of questions to platform objects, and the answers.
#pragma once

#include <span>
#include <string>
#include <variant>

#include "objc/strong.h"
#include "platform/CoreGraphics.h"

namespace varnix::probe {

/// Nothing, a boolean, or a colour as "#rrggbbaa".
using Answer = std::variant<std::monostate, bool, std::string>;

enum class Form : unsigned char {
  color,       ///< the object answers a UIColor
  plainColor,  ///< the object answers a CGColor
  boolean,
  classColor,  ///< the class itself answers a UIColor
};

struct Surface {
  const char* className;
  const char* property;
  const char* situation;
  Form form;
  /// Makes the object in that situation; the class exists. Null if the class itself is asked.
  Strong<NSObject> (*make)(Class cls);
  const char* getter = nullptr;  ///< if it is not the property's own name
};

std::span<const Surface> all();

/// Whether this process has the class and, if the class itself is asked, the method.
bool exists(const Surface& surface);
Answer ask(const Surface& surface);

/// "#rrggbbaa", or nothing for nil and anything other than a colour.
Answer colorAnswer(NSObject* color);
Answer plainColorAnswer(CGColorRef color);

}  // namespace varnix::probe
