#include "line_editor/line_editor.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

// The library's header relies on that one.
#include <editline/readline.h>

#include "export.h"

namespace varnix::cli {

namespace {

// The library calls plain functions.
const LineEditor::Completions* completions = nullptr;
std::vector<std::string> candidates;

char* nextCandidate(const char*, int state) {
  const auto index = static_cast<std::size_t>(state);
  return index < candidates.size() ? strdup(candidates[index].c_str()) : nullptr;
}

char** complete(const char* text, int, int) {
  // Never files.
  rl_attempted_completion_over = 1;
  if (completions == nullptr || !*completions) return nullptr;
  candidates = (*completions)(text);
  return candidates.empty() ? nullptr : rl_completion_matches(text, nextCandidate);
}

bool readLine(const char* prompt, const LineEditor::Completions& offered, std::string& line) {
  completions = &offered;
  rl_attempted_completion_function = complete;
  // A line is completed as a whole, because titles contain blanks.
  static char none[] = "";
  rl_basic_word_break_characters = none;
  rl_completion_append_character = '\0';
  std::fflush(stdout);
  const std::unique_ptr<char, decltype(&std::free)> typed(readline(prompt), &std::free);
  if (typed == nullptr) return false;
  line = typed.get();
  if (line.find_first_not_of(" \t") != std::string::npos) add_history(typed.get());
  return true;
}

constexpr LineEditor kEditor{readLine};

}  // namespace

}  // namespace varnix::cli

extern "C" HOST_EXPORT const varnix::cli::LineEditor* varnix_line_editor() noexcept {
  return &varnix::cli::kEditor;
}
