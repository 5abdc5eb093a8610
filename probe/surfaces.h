// What people see of a process: a table of questions to platform objects, and the answers.
#pragma once

#include <span>
#include <string>
#include <variant>
#include <vector>

#include "platform/CoreGraphics.h"
#include "probe/situations.h"

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
  const Situation& staged;
  const char* property;
  const char* situation;  ///< for people
  Form form;
  /// What of the object is asked, if not the object itself. Nil if it has no such part.
  NSObject* (*part)(NSObject* object) = nullptr;
  const char* getter = nullptr;  ///< if it is not the property's own name; "" for the part itself

  const char* className() const { return staged.className; }
};

std::span<const Surface> all();

/// Whether this process has the class and, if the class itself is asked, the method.
bool exists(const Surface& surface);
Answer ask(const Surface& surface);

/// "#rrggbbaa", or nothing for nil and anything other than a colour.
Answer colorAnswer(NSObject* color);
Answer plainColorAnswer(CGColorRef color);
/// Of a balloon, from top to bottom.
std::vector<Answer> shadeAnswers(NSObject* balloon);

}  // namespace varnix::probe
