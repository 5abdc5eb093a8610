// The lines of a file or of standard input, as they arrive.
#pragma once

#include <functional>
#include <string>

#include "common/waiting.h"

namespace varnix::cli {

struct LineSource {
  std::string file;        ///< "-" for standard input
  Deadline deadline = {};  ///< no lines are returned after this
  /// Called before and after each wait for a writer; may be empty.
  std::function<void()> waitBeginsOrEnds = {};
};

class LineReader {
 public:
  /// Throws Failure if the file cannot be opened.
  explicit LineReader(LineSource source);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  /// False at the end, and after the deadline. Throws Failure for a line of more than 8 KiB, and
  /// Interrupted.
  bool next(std::string& line);

 private:
  bool readSome();
  std::string take(std::size_t length);

  LineSource source_;
  int descriptor_;
  std::string buffered_;
  std::size_t begin_ = 0;  ///< start of what has not been returned yet
  bool isFirst_ = true;    ///< the next line is the first, and may begin with a byte order mark
  bool isAtEnd_ = false;
};

}  // namespace varnix::cli
