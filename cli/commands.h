// The commands. Each adds its subcommand; parsing sets the action that was asked for.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace varnix::cli {

/// Returns the exit status.
using Action = std::function<int()>;

void addSettings(CLI::App& app, Action& chosen);
void addRun(CLI::App& app, Action& chosen);
void addInspect(CLI::App& app, Action& chosen);
void addPick(CLI::App& app, Action& chosen);
void addPane(CLI::App& app, Action& chosen);
void addPreview(CLI::App& app, Action& chosen);

}  // namespace varnix::cli
