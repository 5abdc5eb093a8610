// Which process is meant: the options that run and inspect share.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "process/process.h"
#include "temporary_container.h"

namespace varnix::cli {

struct ProcessChoice {
  /// Adds the options to a command; the choice outlives the parsing.
  void addTo(CLI::App& command);

  /// The options of the process, its container there. Throws UsageError where they do not fit
  /// together and Failure where the container cannot be had.
  host::ProcessOptions prepare();

  bool noLibrary = false;
  std::vector<std::string> extensions;  ///< files to load, in order
  std::optional<std::string> script;    ///< a file, or "-"

 private:
  void check() const;

  std::string bundle_;
  bool noBundle_ = false;
  std::string kind_;
  std::string open_;
  std::vector<std::string> without_;
  std::vector<std::string> icons_;  ///< as they were given, ID=FILE
  std::string root_;
  std::string settings_;
  const CLI::App* command_ = nullptr;
  std::optional<TemporaryContainer> container_;
};

const char* kindName(host::ProcessKind kind);

}  // namespace varnix::cli
