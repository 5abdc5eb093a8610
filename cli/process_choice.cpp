#include "process_choice.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <utility>

#include "errors.h"
#include "framework_copy.h"
#include "icon_choices.h"
#include "process/container.h"
#include "script.h"
#include "settings_file.h"

namespace varnix::cli {

using host::ProcessKind;

namespace {

constexpr std::array<std::pair<const char*, ProcessKind>, 3> kKinds = {{
    {"application", ProcessKind::application},
    {"springboard", ProcessKind::springboard},
    {"daemon", ProcessKind::daemon},
}};

ProcessKind kindNamed(const std::string& name) {
  for (const auto& [word, kind] : kKinds) {
    if (name == word) return kind;
  }
  throw UsageError("no such kind of process", name);
}

/// Whether a library finds the framework of the playing track.
bool hasNowPlaying(const host::ProcessOptions& options) {
  const auto& hidden = options.without;
  return options.kind == ProcessKind::springboard &&
         std::find(hidden.begin(), hidden.end(), "MPUNowPlayingController") == hidden.end();
}

void checkReadable(const std::string& icon) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(icon, ignored)) throw Failure("no such icon file", icon);
  if (access(icon.c_str(), R_OK) != 0) throw Failure("cannot read the icon file", icon);
}

}  // namespace

const char* kindName(ProcessKind kind) {
  for (const auto& [word, value] : kKinds) {
    if (kind == value) return word;
  }
  return "";
}

void ProcessChoice::addTo(CLI::App& command) {
  command_ = &command;
  command.add_option("--bundle", bundle_, "The process's bundle identifier")->type_name("ID");
  command.add_flag("--no-bundle", noBundle_, "A process without a bundle");
  command
      .add_option("--kind", kind_,
                  "application, springboard or daemon (without UIKit); springboard for\n"
                  "com.apple.springboard, else application")
      ->type_name("KIND");
  command.add_option("--open", open_, "SpringBoard: the frontmost application")->type_name("ID");
  command.add_option("--without", without_, "Hide a class from look-up by name; repeatable")
      ->type_name("CLASS")
      ->allow_extra_args(false);
  command.add_option("--icon", icons_, "An application's icon, PNG or JPEG; repeatable")
      ->type_name("ID=FILE")
      ->allow_extra_args(false);
  command.add_option("--root", root_, "Container root")->type_name("DIR");
  command.add_option("--settings", settings_, "Use a copy of this file in a container of its own")
      ->type_name("FILE");
  command.add_flag("--no-library", noLibrary, "Do not load the library");
  command.add_option("--load", extensions, "Load another extension after it; repeatable")
      ->type_name("FILE")
      ->allow_extra_args(false);
  command
      .add_option("--script", script,
                  "Act on the process by the commands of this file, - for standard input")
      ->type_name("FILE");
  command.footer(scriptHelp());
}

void ProcessChoice::check() const {
  const bool hasBundle = command_->count("--bundle") > 0;
  if (hasBundle && noBundle_) {
    throw UsageError("options that exclude each other", "--bundle and --no-bundle");
  }
  if (!hasBundle && !noBundle_) throw UsageError("missing option", "--bundle ID or --no-bundle");
  if (command_->count("--root") > 0 && command_->count("--settings") > 0) {
    throw UsageError("options that exclude each other", "--root and --settings");
  }
}

host::ProcessOptions ProcessChoice::prepare() {
  check();
  host::ProcessOptions options;
  if (!noBundle_) options.bundle = bundle_;
  options.kind =
      bundle_ == "com.apple.springboard" ? ProcessKind::springboard : ProcessKind::application;
  if (command_->count("--kind") > 0) options.kind = kindNamed(kind_);
  if (command_->count("--open") > 0) options.open = open_;
  options.without = without_;
  options.icons = iconsFrom(icons_);
  for (const auto& [identifier, file] : options.icons) checkReadable(file);
  if (command_->count("--settings") > 0) {
    container_.emplace(kSettingsPath, settings_);
    options.root = container_->root();
  } else {
    options.root = host::resolveContainerRoot(root_);
  }
  if (hasNowPlaying(options)) putMediaPlayerUI(options.root);
  return options;
}

}  // namespace varnix::cli
