// Which process is meant: the options that run and inspect share.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/command.h"
#include "common/root_choice.h"
#include "common/temporary_container.h"
#include "process/process.h"

namespace varnix::cli {

struct ProcessChoice {
  /// The options, which write into the choice.
  std::vector<Option> options();

  /// The options of the process, its container there, with a warning of what is wrong with the
  /// settings that it will read. Throws UsageError where they do not fit
  /// together and Failure where the container cannot be had.
  host::ProcessOptions prepare(RootUse use);

  /// The root, where it is a temporary one of --settings, else empty.
  std::string temporaryRoot() const { return container_ ? container_->root() : ""; }

  bool noLibrary = false;
  std::vector<std::string> extensions;  ///< files to load, in order
  std::optional<std::string> script;    ///< a file, or "-"

 private:
  void check() const;

  std::optional<std::string> bundle_;
  bool noBundle_ = false;
  std::optional<std::string> kind_;
  std::optional<std::string> open_;
  std::vector<std::string> without_;
  std::optional<std::string> hooking_;
  std::vector<std::string> icons_;  ///< as they were given, ID=FILE
  std::optional<std::string> root_;
  std::optional<std::string> settings_;
  std::optional<TemporaryContainer> container_;
};

/// Says on standard error what was to be left out of this process and is not here, or not yet.
void warnOfMissing();

const char* kindName(host::ProcessKind kind);

}  // namespace varnix::cli
