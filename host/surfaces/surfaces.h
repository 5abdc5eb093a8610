// What people see of a process: a table of questions to platform objects, and their answers.
#pragma once

#include <span>
#include <string>
#include <variant>

#include "objc/strong.h"

namespace host::surfaces {

/// Nothing, a boolean, or a colour as "#rrggbbaa".
using Answer = std::variant<std::monostate, bool, std::string>;

enum class Form : unsigned char { color, boolean };

struct Surface {
  const char* className;
  const char* property;
  const char* situation;
  Form form;
  /// Makes the object in that situation; the class is there.
  Strong<NSObject> (*make)(Class cls);
  const char* getter = nullptr;  ///< where it is not the property's own name
};

std::span<const Surface> all();

/// Whether this process has the class.
bool exists(const Surface& surface);
Answer ask(const Surface& surface);

/// "#rrggbbaa", or nothing for nil and for what is no colour.
Answer colorAnswer(NSObject* color);

}  // namespace host::surfaces
