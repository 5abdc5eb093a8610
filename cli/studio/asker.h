// A process that hosts others for the studio, which itself has several threads and so cannot fork.
#pragma once

#include <sys/types.h>

#include <mutex>
#include <string>

#include "common/temporary_container.h"
#include "gallery/ask/ask.h"

namespace varnix::cli {

class Asker {
 public:
  /// Starts it. This process must have a single thread. Throws Failure.
  Asker();
  /// Ends it, and a process that it is asking.
  ~Asker();
  Asker(const Asker&) = delete;
  Asker& operator=(const Asker&) = delete;

  /// Asks a new process with these settings, the bytes of a settings file. One question at a time.
  /// Throws std::runtime_error.
  ProcessAnswer ask(ProcessQuestion question, const std::string& settings);

  /// The analysis of a picture, as an object of `varnix pick --json`. Throws std::runtime_error.
  Json pick(const std::string& file);

 private:
  std::string answerTo(const Json& question);

  TemporaryContainer container_;
  pid_t process_ = -1;
  int socket_ = -1;
};

}  // namespace varnix::cli
