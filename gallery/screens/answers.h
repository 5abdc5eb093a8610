// What a hosted process answered for a screen.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "drawing/color.h"

namespace varnix::screens {

using namespace drawing;

/// Nothing, a boolean, a number, or a text. A colour is "#rrggbbaa".
using Answer = std::variant<std::monostate, bool, double, std::string>;

/// By name. What was not asked counts as not answered.
struct Answers {
  std::map<std::string, Answer> values;

  std::optional<Color> color(const std::string& name) const;
  /// The platform's own colour if nothing was answered, as on the platform.
  Color colorOr(const std::string& name, const Color& platform) const;
  /// The colours named "NAME 0", "NAME 1" and so on.
  std::vector<Color> colors(const std::string& name) const;
  std::optional<std::string> text(const std::string& name) const;
  bool flag(const std::string& name) const;
  double number(const std::string& name) const;
  bool operator==(const Answers&) const = default;
};

}  // namespace varnix::screens
