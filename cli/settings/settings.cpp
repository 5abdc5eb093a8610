// varnix settings: the stored values, key by key.
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include "Foundation/text.h"
#include "commands.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "common/interruption.h"
#include "common/root_choice.h"
#include "objc/autorelease_pool.h"
#include "process/container.h"
#include "settings/check.h"
#include "settings/file.h"
#include "settings/known_key.h"
#include "settings/presets.h"
#include "settings/property_text.h"

namespace varnix::cli {

namespace {

struct SettingsArguments {
  std::optional<std::string> root;
  std::string key;
  std::string value;
  std::string preset;
  std::optional<std::string> file;
  bool force = false;
  bool keepText = false;
};

int list(const SettingsArguments&) {
  NSDictionary* stored = storedSettings();
  if (stored == nullptr) return 0;
  std::vector<std::string> lines;
  NSArray* keys = send(stored, NSDictionary::allKeys);
  for (NSUInteger i = 0; i < send(keys, NSArray::count); ++i) {
    auto* key = static_cast<NSString*>(send(keys, NSArray::objectAtIndex, i));
    lines.push_back(entryLine(host::text(key), send(stored, NSDictionary::objectForKey, key)));
  }
  std::sort(lines.begin(), lines.end());
  for (const std::string& line : lines) std::cout << line << '\n';
  return 0;
}

int get(const SettingsArguments& arguments) {
  NSDictionary* stored = storedSettings();
  NSObject* value = stored == nullptr
                        ? nullptr
                        : send(stored, NSDictionary::objectForKey, host::makeString(arguments.key));
  if (value == nullptr) throw Failure("not set", withNearestKey(arguments.key));
  // A program gets every byte; a terminal gets none that would control it.
  const std::string text = valueText(value);
  std::cout << (isatty(STDOUT_FILENO) == 1 ? escaped(text) : text) << '\n';
  return 0;
}

Value checkedValue(const SettingsArguments& arguments) {
  if (arguments.force) {
    return arguments.keepText ? Value(arguments.value) : plainValue(arguments.value);
  }
  const auto kind = kindOf(arguments.key);
  if (!kind) throw UsageError("no such setting", withNearestKey(arguments.key));
  return valueFor(*kind, arguments.value, arguments.keepText);
}

int set(const SettingsArguments& arguments) {
  store(arguments.key, checkedValue(arguments));
  return 0;
}

int unset(const SettingsArguments& arguments) {
  if (!remove(arguments.key)) throw Failure("not set", withNearestKey(arguments.key));
  return 0;
}

int usePreset(const SettingsArguments& arguments) {
  store(entriesOfPreset(arguments.preset));
  return 0;
}

int check(const SettingsArguments& arguments) {
  if (arguments.file && arguments.root)
    throw UsageError("options that exclude each other", "FILE and --root");
  noteInterruptions();
  if (arguments.file) return printFindings(*arguments.file);
  host::setContainerRoot(chosenRoot(arguments.root, RootUse::reads));
  return printFindings(checkSettings(settingsFile()));
}

}  // namespace

Command settingsCommand() {
  auto arguments = std::make_shared<SettingsArguments>();
  auto command = [&](const char* name, const char* summary, int (*action)(const SettingsArguments&),
                     RootUse use) {
    return Command{.name = name,
                   .summary = summary,
                   .options = {rootOption(arguments->root)},
                   .run = [arguments, action, use] {
                     objc::AutoreleasePool pool;
                     host::setContainerRoot(chosenRoot(arguments->root, use));
                     return action(*arguments);
                   }};
  };
  auto withKey = [&](Command made) {
    made.options.push_back({.name = "KEY",
                            .target = &arguments->key,
                            .meaning = "The setting's name",
                            .choices = keyNames()});
    return made;
  };
  Command change =
      withKey(command("set", "Store one value and tell every process", set, RootUse::changes));
  change.options.push_back({.name = "VALUE",
                            .target = &arguments->value,
                            .meaning = "true, false, a whole number or text"});
  change.options.push_back(
      {.name = "--force", .target = &arguments->force, .meaning = "Store any value under any key"});
  change.options.push_back({.name = "--string",
                            .target = &arguments->keepText,
                            .meaning = "Store true, false and digits as text"});
  change.notes = keyHelp();
  Command use = command("use", "Store a preset's colours and tell every process", usePreset,
                        RootUse::changes);
  use.options.push_back({.name = "PRESET",
                         .target = &arguments->preset,
                         .meaning = "Its name",
                         .choices = presetNames()});
  Command checked{
      .name = "check",
      .summary = "Print what of a settings file does not count as it was meant",
      .options = {rootOption(arguments->root),
                  {.name = "FILE",
                   .target = &arguments->file,
                   .meaning = "The file; the container's where there is none",
                   .completes = Completes::files,
                   .isOptional = true}},
      .notes =
          "It looks for what is no property list, keys that are no settings, values of another\n"
          "kind and colours that are none. Where there is something the exit status is 1.",
      .run = [arguments] { return check(*arguments); }};
  return {.name = "settings",
          .summary = "List, read, check and change what is stored",
          .options = {rootOption(arguments->root)},
          .commands = {command("list", "Print everything that is stored", list, RootUse::reads),
                       withKey(command("get", "Print one value", get, RootUse::reads)),
                       std::move(change),
                       std::move(checked),
                       {.name = "presets",
                        .summary = "Print sets of colours to start from",
                        .run = [] { return listPresets(), 0; }},
                       std::move(use),
                       withKey(command("unset", "Remove one value and tell every process", unset,
                                       RootUse::reads))},
          .notes = keyHelp()};
}

}  // namespace varnix::cli
