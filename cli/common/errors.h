// What a command reports: "varnix: what was wrong: with what".
#pragma once

#include <cstring>
#include <stdexcept>
#include <string>

namespace varnix::cli {

/// A request failed: exit status 1.
class Failure : public std::runtime_error {
 public:
  Failure(const std::string& what, const std::string& with)
      : std::runtime_error(what + ": " + with) {}
};

/// A signal ended a hosted process. The command's exit status is 128 plus the signal's number.
class Death : public Failure {
 public:
  Death(const std::string& what, int number) : Failure(what, strsignal(number)), signal(number) {}
  int signal;
};

/// The command was not understood: exit status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  UsageError(const std::string& what, const std::string& with)
      : std::runtime_error(what + ": " + with) {}
};

}  // namespace varnix::cli
