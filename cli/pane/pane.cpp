// varnix pane: the settings pane in the terminal.
#include <unistd.h>

#include <iostream>
#include <memory>
#include <optional>

#include "Accounts/accounts.h"
#include "Foundation/text.h"
#include "UIKit/UIApplication_urls.h"
#include "commands.h"
#include "common/death_report.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "common/icon_choices.h"
#include "common/line_commands.h"
#include "common/module.h"
#include "common/root_choice.h"
#include "common/swatches.h"
#include "line_editor/line_editor.h"
#include "objc/autorelease_pool.h"
#include "pane/example/example.h"
#include "pane/session.h"
#include "process/process.h"

namespace varnix::cli {

namespace {

struct PaneArguments {
  std::optional<std::string> root;
  std::optional<std::string> script;
  std::string open = "Varnix";
  std::string language = "en";
  std::vector<std::string> accounts;
  std::vector<std::string> clients;
  std::vector<std::string> icons;
  bool refusesAccess = false;
  bool isExample = false;
  std::string color = "auto";
};

NSArray* strings(const std::vector<std::string>& texts) {
  auto* list = NSMutableArray::array();
  for (const std::string& text : texts) {
    NSString* string = host::makeString(text);
    if (string == nullptr) throw UsageError("not UTF-8", text);
    send(list, NSMutableArray::addObject, string);
  }
  return list;
}

PaneFace settingsPane(const PaneArguments& arguments, bool withSwatches) {
  auto session = std::make_shared<PaneSession>(withSwatches);
  session->openPath(arguments.open);
  session->begin();
  return {.help = PaneSession::help(),
          .run = [session](const std::string& line) { session->run(line); },
          .isOver = [session] { return session->isOver(); },
          .tellChanges = [session] { session->tellChanges(); },
          .completions = [session](const std::string& line) { return session->completions(line); }};
}

/// Reads a line at a terminal. False at the end of the input.
using Prompt = std::function<bool(std::string& line)>;

Prompt editedPrompt(const PaneFace& pane) {
  if (isDumbTerminal() || isatty(STDOUT_FILENO) == 0) {
    auto reader = std::make_shared<LineReader>(LineSource{.file = "-"});
    return [reader](std::string& line) {
      std::cout << "pane> " << std::flush;
      return reader->next(line);
    };
  }
  const LineEditor& editor = loadModule(kLineEditor);
  return
      [&editor, &pane](std::string& line) { return editor.read("pane> ", pane.completions, line); };
}

/// A person's mistakes end nothing.
void talk(const PaneFace& pane) {
  std::cout << "Commands:\n" << pane.help << std::flush;
  const Prompt prompt = editedPrompt(pane);
  std::string line;
  auto tell = [&] {
    if (pane.tellChanges) pane.tellChanges();
    std::cout << std::flush;
  };
  for (tell(); !pane.isOver() && prompt(line); tell()) {
    try {
      pane.run(line);
    } catch (const std::exception& error) {
      std::cout << escaped(error.what()) << '\n';
    }
  }
}

void follow(const PaneFace& pane, const std::string& file) {
  runLines({.file = file}, [&](const std::string& line) {
    if (pane.isOver()) return;
    if (pane.tellChanges) pane.tellChanges();
    pane.run(line);
  });
}

int show(const PaneArguments& arguments) {
  const bool withSwatches = wantsSwatches(arguments.color);
  const objc::AutoreleasePool pool;
  host::ProcessOptions process;
  process.bundle = "com.apple.Preferences";
  process.root = chosenRoot(arguments.root, RootUse::changes);
  process.language = arguments.language;
  process.icons = iconsFrom(arguments.icons);
  tellOfDeath(STDERR_FILENO, Telling::sentence);
  host::startProcess(process);
  loadNamed(host::defaultLibraryPath());
  host::setAccounts("com.apple.twitter"_ns, strings(arguments.accounts));
  host::setAccountAccess(!arguments.refusesAccess);
  host::setInstalledURLSchemes(strings(arguments.clients));
  const PaneFace pane =
      arguments.isExample ? examplePane(withSwatches) : settingsPane(arguments, withSwatches);
  if (arguments.script) follow(pane, *arguments.script);
  else if (isatty(STDIN_FILENO) != 0) talk(pane);
  else follow(pane, "-");
  return 0;
}

}  // namespace

Command paneCommand() {
  auto arguments = std::make_shared<PaneArguments>();
  return {.name = "pane",
          .summary = "Show the settings pane in a hosted Settings application, and use it",
          .options = {rootOption(arguments->root),
                      {.name = "--open",
                       .value = "PATH",
                       .target = &arguments->open,
                       .meaning = "The page to begin with: rows' titles, keys or numbers from the "
                                  "list of settings on, with / between them; Varnix"},
                      {.name = "--language",
                       .value = "LANG",
                       .target = &arguments->language,
                       .meaning = "The user's language; en",
                       .choices = {"en", "de", "fr", "es", "it", "ja", "zh-Hans"}},
                      {.name = "--script",
                       .value = "FILE",
                       .target = &arguments->script,
                       .meaning = "Commands of this file, - for standard input",
                       .completes = Completes::files},
                      {.name = "--account",
                       .value = "NAME",
                       .target = &arguments->accounts,
                       .meaning = "An account of the social network on the device; repeatable"},
                      {.name = "--refuse-access",
                       .target = &arguments->refusesAccess,
                       .meaning = "The user does not let the pane at the accounts"},
                      {.name = "--client",
                       .value = "SCHEME",
                       .target = &arguments->clients,
                       .meaning = "The URL scheme of an installed client: tweetbot, twitterrific, "
                                  "tweetings, twitter; repeatable",
                       .choices = {"tweetbot", "twitterrific", "tweetings", "twitter"}},
                      iconOption(arguments->icons),
                      {.name = "--example",
                       .target = &arguments->isExample,
                       .meaning = "Show the small pane of examples/pane instead"},
                      colorOption(arguments->color)},
          .notes =
              "Commands, one a line:\n" + PaneSession::help() + "With --example:\n" + exampleHelp(),
          .run = [arguments] { return show(*arguments); }};
}

}  // namespace varnix::cli
