// Lines of a file or of standard input, as they come.
#pragma once

#include <functional>
#include <string>

#include "common/waiting.h"

namespace varnix::cli {

struct LineSource {
  std::string file;        ///< "-" for standard input
  Deadline deadline = {};  ///< when there are to be no more lines
  /// Called before and after a wait for somebody who writes; may be empty.
  std::function<void()> waitBeginsOrEnds = {};
};

class LineReader {
 public:
  /// Throws Failure for what cannot be opened.
  explicit LineReader(LineSource source);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  /// False at the end, and once the time is over. Throws Failure for a line of 8 KiB, and
  /// Interrupted.
  bool next(std::string& line);

 private:
  bool readSome();
  std::string take(std::size_t length);

  LineSource source_;
  int descriptor_;
  std::string buffered_;
  std::size_t begin_ = 0;  ///< of what was not taken yet
  bool isFirst_ = true;    ///< the next line, before which some editors put a mark
  bool isAtEnd_ = false;
};

}  // namespace varnix::cli
