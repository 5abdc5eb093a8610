#include "common/line_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <iostream>
#include <string_view>
#include <utility>

#include "common/errors.h"
#include "common/interruption.h"

namespace varnix::cli {

namespace {

constexpr std::size_t kLongestLine = 8192;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Does not wait for the other end of a pipe. The reader does that, for as long as it may.
int openedForLines(const std::string& file) {
  if (file == "-") return STDIN_FILENO;
  const int descriptor = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) throw Failure("cannot read the script", file);
  struct stat status = {};
  if (fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    close(descriptor);
    throw Failure("cannot read the script", file + ": is a directory");
  }
  return descriptor;
}

}  // namespace

LineReader::LineReader(LineSource source)
    : source_(std::move(source)), descriptor_(openedForLines(source_.file)) {}

LineReader::~LineReader() {
  if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

bool LineReader::readSome() {
  const bool waits = source_.waitBeginsOrEnds && !isReadable(descriptor_);
  if (waits) source_.waitBeginsOrEnds();
  if (!awaitReadable(descriptor_, source_.deadline)) return false;
  if (waits) source_.waitBeginsOrEnds();
  std::array<char, 4096> block{};
  const ssize_t length = read(descriptor_, block.data(), block.size());
  if (length < 0 && errno != EINTR && errno != EAGAIN) throw Failure("cannot be read", "line");
  if (length == 0) isAtEnd_ = true;
  if (length > 0) {
    buffered_.erase(0, std::exchange(begin_, 0));
    buffered_.append(block.data(), static_cast<std::size_t>(length));
  }
  return true;
}

std::string LineReader::take(std::size_t length) {
  std::string line = buffered_.substr(begin_, length);
  begin_ = std::min(begin_ + length + 1, buffered_.size());
  return line;
}

bool LineReader::next(std::string& line) {
  while (true) {
    throwIfInterrupted();
    if (isOver(source_.deadline)) return false;
    const std::size_t end = buffered_.find('\n', begin_);
    const std::size_t length = (end == buffered_.npos ? buffered_.size() : end) - begin_;
    // Without a newline in so many bytes, the line may never end.
    if (length > kLongestLine) throw Failure("too long", "line");
    if (end != buffered_.npos || (isAtEnd_ && length > 0)) {
      line = take(length);
      if (std::exchange(isFirst_, false) && line.starts_with(kByteOrderMark))
        line.erase(0, kByteOrderMark.size());
      return true;
    }
    // The writer of the next line may be waiting for what was printed.
    std::cout.flush();
    if (isAtEnd_ || !readSome()) return false;
  }
}

}  // namespace varnix::cli
