#include "common/process_choice.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <utility>

#include "common/class_names.h"
#include "common/errors.h"
#include "common/framework_files.h"
#include "common/icon_choices.h"
#include "common/nearest.h"
#include "common/warning.h"
#include "process/absence.h"
#include "settings/check.h"
#include "settings/file.h"

namespace varnix::cli {

using host::ProcessKind;

namespace {

constexpr std::array<std::pair<const char*, ProcessKind>, 3> kKinds = {{
    {"application", ProcessKind::application},
    {"springboard", ProcessKind::springboard},
    {"daemon", ProcessKind::daemon},
}};

std::vector<std::string> kindNames() {
  std::vector<std::string> names;
  for (const auto& [word, kind] : kKinds) names.emplace_back(word);
  return names;
}

ProcessKind kindNamed(const std::string& name) {
  for (const auto& [word, kind] : kKinds) {
    if (name == word) return kind;
  }
  throw UsageError("no such kind of process", name + didYouMean(name, kindNames()));
}

std::vector<std::string> hookingNames() { return {"dynamic", "snapshot", "late"}; }

host::runtime::Hooking hookingFor(const std::string& name) {
  const auto hooking = host::runtime::hookingNamed(name);
  if (!hooking) throw UsageError("no such way of hooking", name + didYouMean(name, hookingNames()));
  return *hooking;
}

/// Whether a library would find the framework of the playing track.
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

std::vector<Option> ProcessChoice::options() {
  return {
      {.name = "--bundle",
       .value = "ID",
       .target = &bundle_,
       .meaning = "The process's bundle identifier"},
      {.name = "--no-bundle", .target = &noBundle_, .meaning = "A process without a bundle"},
      {.name = "--kind",
       .value = "KIND",
       .target = &kind_,
       .meaning = "application, springboard or daemon (without UIKit); springboard for\n"
                  "com.apple.springboard, else application",
       .choices = kindNames()},
      {.name = "--open",
       .value = "ID",
       .target = &open_,
       .meaning = "SpringBoard: the frontmost application"},
      {.name = "--without",
       .value = "NAME",
       .target = &without_,
       .meaning =
           "Leave a class, a method '-[Class selector]' or '+[Class selector]', an instance\n"
           "variable Class.variable or a C function out of the platform; repeatable"},
      {.name = "--hooking",
       .value = "HOW",
       .target = &hooking_,
       .meaning = "What a replaced method that was inherited is saved as: dynamic (what the\n"
                  "superclass has at each call), snapshot (what it had) or late (the same, and\n"
                  "only after the replacement is live); dynamic",
       .choices = hookingNames()},
      iconOption(icons_),
      rootOption(root_),
      {.name = "--settings",
       .value = "FILE",
       .target = &settings_,
       .meaning = "Use a copy of this file in a container of its own",
       .completes = Completes::files},
      {.name = "--no-library", .target = &noLibrary, .meaning = "Do not load the library"},
      {.name = "--load-first",
       .value = "FILE",
       .target = &earlierExtensions,
       .meaning = "Load another extension before it; repeatable",
       .completes = Completes::files},
      {.name = "--load",
       .value = "FILE",
       .target = &extensions,
       .meaning = "Load another extension after it; repeatable",
       .completes = Completes::files},
      {.name = "--script",
       .value = "FILE",
       .target = &script,
       .meaning = "Act on the process by the commands of this file, - for standard input",
       .completes = Completes::files},
  };
}

void warnOfMissing() {
  for (const std::string& name : host::notHereYet()) {
    const auto absence = host::readAbsence(name);
    const std::string& className = absence && !absence->owner.empty() ? absence->owner : name;
    warn("to be left out, but not here yet: " + name + didYouMean(className, classNames()));
  }
}

void ProcessChoice::check() const {
  if (bundle_ && noBundle_) {
    throw UsageError("options that exclude each other", "--bundle and --no-bundle");
  }
  if (!bundle_ && !noBundle_) throw UsageError("missing option", "--bundle ID or --no-bundle");
  if (root_ && settings_) {
    throw UsageError("options that exclude each other", "--root and --settings");
  }
  for (const auto& [option, file] :
       {std::pair("--settings", settings_), std::pair("--script", script)})
    if (file && file->empty()) throw UsageError("not a file", std::string(option) + " \"\"");
  for (const auto& [option, files] :
       {std::pair("--load-first", &earlierExtensions), std::pair("--load", &extensions)})
    if (std::ranges::find(*files, "") != files->end())
      throw UsageError("not a file", std::string(option) + " \"\"");
  for (const std::string& name : without_)
    if (!host::readAbsence(name))
      throw UsageError("not a class, method, variable or function", name);
}

host::ProcessOptions ProcessChoice::prepare(RootUse use) {
  check();
  host::ProcessOptions options;
  options.bundle = bundle_;
  options.kind =
      bundle_ == "com.apple.springboard" ? ProcessKind::springboard : ProcessKind::application;
  if (kind_) options.kind = kindNamed(*kind_);
  options.open = open_;
  options.without = without_;
  if (hooking_) options.hooking = hookingFor(*hooking_);
  options.icons = iconsFrom(icons_);
  for (const auto& [identifier, file] : options.icons) checkReadable(file);
  if (settings_) {
    container_.emplace(kSettingsPath, *settings_);
    options.root = container_->root();
  } else {
    options.root = chosenRoot(root_, use);
  }
  const std::string file = options.root + kSettingsPath;
  if (!noLibrary) warnOfSettings(file, settings_.value_or(file));
  if (hasNowPlaying(options)) options.files = nowPlayingFiles();
  return options;
}

}  // namespace varnix::cli
