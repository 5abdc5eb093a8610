// Which process to host: the options that run and inspect share.
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
  /// The options, which store their values in this choice.
  std::vector<Option> options();

  /// Sets the container up and returns the process's options. Warns of what is wrong with the
  /// settings that the process will read. Throws UsageError if the options do not fit together, and
  /// Failure if the container is not available.
  host::ProcessOptions prepare(RootUse use);

  /// The root if it is a temporary one, from --settings; else empty.
  std::string temporaryRoot() const { return container_ ? container_->root() : ""; }

  bool noLibrary = false;
  std::vector<std::string> earlierExtensions;  ///< files to load before the library, in order
  std::vector<std::string> extensions;         ///< and after it
  std::optional<std::string> script;           ///< a file, or "-"

 private:
  void check() const;

  std::optional<std::string> bundle_;
  bool noBundle_ = false;
  std::optional<std::string> kind_;
  std::optional<std::string> open_;
  std::vector<std::string> without_;
  std::optional<std::string> hooking_;
  std::vector<std::string> icons_;  ///< as given: ID=FILE
  std::optional<std::string> root_;
  std::optional<std::string> settings_;
  std::optional<TemporaryContainer> container_;
};

/// Warns on standard error of things to leave out that this process does not have, or not yet.
void warnOfMissing();

const char* kindName(host::ProcessKind kind);

}  // namespace varnix::cli
