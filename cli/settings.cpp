// varnix settings: what is stored, key by key.
#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

#include "Foundation/text.h"
#include "commands.h"
#include "errors.h"
#include "known_key.h"
#include "objc/autorelease_pool.h"
#include "process/container.h"
#include "property_text.h"
#include "settings_file.h"

namespace varnix::cli {

namespace {

struct Arguments {
  std::string root;
  std::string key;
  std::string value;
  bool force = false;
  bool keepText = false;
};

int list() {
  NSDictionary* stored = storedSettings();
  if (stored == nullptr) return 0;
  std::vector<std::string> lines;
  NSArray* keys = stored->allKeys();
  for (NSUInteger i = 0; i < keys->count(); ++i) {
    auto* key = static_cast<NSString*>(keys->objectAtIndex(i));
    lines.push_back(entryLine(host::text(key), stored->objectForKey(key)));
  }
  std::sort(lines.begin(), lines.end());
  for (const std::string& line : lines) std::cout << line << '\n';
  return 0;
}

int get(const Arguments& arguments) {
  NSDictionary* stored = storedSettings();
  NSObject* value =
      stored == nullptr ? nullptr : stored->objectForKey(host::makeString(arguments.key));
  if (value == nullptr) throw Failure("not set", arguments.key);
  std::cout << valueText(value) << '\n';
  return 0;
}

Value checkedValue(const Arguments& arguments) {
  if (arguments.force) {
    return arguments.keepText ? Value(arguments.value) : plainValue(arguments.value);
  }
  const auto kind = kindOf(arguments.key);
  if (!kind) throw UsageError("no such setting", arguments.key);
  return valueFor(*kind, arguments.value, arguments.keepText);
}

int set(const Arguments& arguments) {
  store(arguments.key, checkedValue(arguments));
  return 0;
}

int unset(const Arguments& arguments) {
  if (!remove(arguments.key)) throw Failure("not set", arguments.key);
  return 0;
}

}  // namespace

void addSettings(CLI::App& app, Action& chosen) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* settings = app.add_subcommand("settings", "List, read and change what is stored");
  settings->require_subcommand(0, 1);

  auto addRoot = [arguments](CLI::App* command) {
    command->add_option("--root", arguments->root, "Container root")->type_name("DIR");
  };
  auto add = [&](const char* name, const char* what, auto action) {
    CLI::App* command = settings->add_subcommand(name, what);
    addRoot(command);
    command->callback([arguments, action, &chosen] {
      chosen = [arguments, action] {
        objc::AutoreleasePool pool;
        host::setContainerRoot(host::resolveContainerRoot(arguments->root));
        return action(*arguments);
      };
    });
    return command;
  };
  auto withKey = [arguments](CLI::App* command) {
    command->add_option("KEY", arguments->key, "The setting's name")->required()->type_name("");
    return command;
  };

  addRoot(settings);
  add("list", "Print everything that is stored", [](const Arguments&) { return list(); });
  withKey(add("get", "Print one value", get));
  CLI::App* change = withKey(add("set", "Store one value and tell every process", set));
  change->add_option("VALUE", arguments->value, "true, false, a whole number or text")
      ->required()
      ->type_name("");
  change->add_flag("--force", arguments->force, "Store any value under any key");
  change->add_flag("--string", arguments->keepText, "Store true, false and digits as text");
  change->footer(keyHelp());
  withKey(add("unset", "Remove one value and tell every process", unset));
  // Last: a subcommand takes over the footer that its parent has.
  settings->footer(keyHelp());
}

}  // namespace varnix::cli
