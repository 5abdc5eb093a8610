// Reads lines at a terminal, with editing, history and completion. A module, loaded only by who
// reads lines there: other commands do without the library that it needs.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/module.h"

namespace varnix::cli {

struct LineEditor {
  /// What a line may become, as whole lines; may be empty.
  using Completions = std::function<std::vector<std::string>(const std::string& line)>;

  /// False at the end of the input. A line that is not blank can be called back later.
  bool (*read)(const char* prompt, const Completions& completions, std::string& line);
};

inline constexpr ModuleName<LineEditor> kLineEditor{"libvarnix-line-editor.so",
                                                    "varnix_line_editor", "the line editor"};

}  // namespace varnix::cli
