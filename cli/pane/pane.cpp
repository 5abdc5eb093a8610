// varnix pane: a settings pane in the terminal, over the exported functions and classes.
#include <unistd.h>

#include <iostream>
#include <memory>
#include <optional>

#include "Accounts/accounts.h"
#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "UIKit/UIApplication_urls.h"
#include "commands.h"
#include "common/death_report.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "common/line_commands.h"
#include "common/root_choice.h"
#include "common/swatches.h"
#include "objc/autorelease_pool.h"
#include "pane/events.h"
#include "pane/rows.h"
#include "probe/surfaces.h"
#include "process/process.h"
#include "settings/property_text.h"

namespace varnix::cli {

namespace {

struct PaneArguments {
  std::optional<std::string> root;
  std::optional<std::string> script;
  std::vector<std::string> accounts;
  std::vector<std::string> clients;
  bool refusesAccess = false;
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

struct Session {
  explicit Session(bool swatches) : withSwatches(swatches) {}

  PaneRows rows;
  PaneEntries pane = loadPane();
  SettingsScreen screen;
  PaneEvents events{screen};
  bool withSwatches;
  bool isOver = false;
};

void list(Session& session) {
  constexpr std::size_t kNameWidth = 22;
  constexpr std::size_t kValueWidth = 12;
  for (const PaneRow& row : session.rows.all()) {
    const std::string value = escaped(valueText(session.rows.value(row)));
    const bool hasSwatch = session.withSwatches && row.key->kind == settings::Kind::color &&
                           value.size() >= 7 && value[0] == '#';
    std::cout << padded(row.key->name, kNameWidth) << (hasSwatch ? swatch(value) : "")
              << padded(value, kValueWidth) << ' ' << row.key->meaning << '\n';
  }
}

void printBar(const Session& session) {
  const auto color = varnix::probe::colorAnswer(barColor(session.screen));
  const auto* text = std::get_if<std::string>(&color);
  std::cout << "bar       " << (text == nullptr ? "the system's" : *text) << '\n';
}

void footer(Session& session) {
  const PSSpecifier* specifier = session.pane.footer();
  auto* text =
      send<NSString*>(const_cast<PSSpecifier*>(specifier), "propertyForKey:"_sel, "footerText"_ns);
  std::cout << host::text(text) << '\n';
}

struct PaneCommand {
  const char* form;
  void (*run)(Session& session, const Words& arguments);
};

constexpr PaneCommand kPaneCommands[] = {
    {"list", [](Session& s, const Words&) { list(s); }},
    {"set KEY VALUE", [](Session& s, const Words& words) { s.rows.set(words[0], words[1]); }},
    {"appear",
     [](Session& s, const Words&) {
       s.pane.willAppear(s.screen.pane);
       printBar(s);
     }},
    {"disappear",
     [](Session& s, const Words&) {
       s.pane.willDisappear(s.screen.pane);
       printBar(s);
     }},
    {"footer", [](Session& s, const Words&) { footer(s); }},
    {"follow", [](Session& s, const Words&) { s.pane.follow(); }},
    {"press BUTTON", [](Session& s, const Words& words) { s.events.press(words[0]); }},
    {"profile", [](Session& s, const Words&) { s.pane.profile(); }},
    {"share", [](Session& s, const Words&) { s.events.share(); }},
    {"write", [](Session& s, const Words&) { s.pane.write(); }},
    {"restart",
     [](Session& s, const Words&) {
       const int code = s.pane.restart();
       std::cout << (code == 0 ? "restarts SpringBoard" : "cannot restart SpringBoard: no killall")
                 << '\n';
     }},
    {"quit", [](Session& s, const Words&) { s.isOver = true; }},
};

std::vector<const char*> paneForms() {
  std::vector<const char*> list;
  for (const PaneCommand& command : kPaneCommands) list.push_back(command.form);
  return list;
}

void runOne(Session& session, const std::string& line) {
  if (session.isOver) return;
  runLine(paneForms(), line, [&](std::size_t command, const Words& arguments) {
    const objc::AutoreleasePool pool;
    // What others changed while nobody typed comes first.
    host::MainRunLoop::instance().drain();
    kPaneCommands[command].run(session, arguments);
    session.events.settle(std::string_view(kPaneCommands[command].form).starts_with("press"));
    std::cout << std::flush;
  });
}

/// A person's mistakes end nothing.
void talk(Session& session) {
  std::cout << "Commands:\n" << formList(paneForms());
  LineReader reader({.file = "-"});
  std::string line;
  while (!session.isOver && (std::cout << "pane> " << std::flush) && reader.next(line)) {
    try {
      runOne(session, line);
    } catch (const std::exception& error) {
      std::cout << escaped(error.what()) << '\n';
    }
  }
}

int show(const PaneArguments& arguments) {
  const bool withSwatches = wantsSwatches(arguments.color);
  const objc::AutoreleasePool pool;
  host::ProcessOptions process;
  process.bundle = "com.apple.Preferences";
  process.root = chosenRoot(arguments.root, RootUse::changes);
  tellOfDeath(STDERR_FILENO, Telling::sentence);
  host::startProcess(process);
  loadNamed(host::defaultLibraryPath());
  host::setAccounts("com.apple.twitter"_ns, strings(arguments.accounts));
  host::setAccountAccess(!arguments.refusesAccess);
  host::setInstalledURLSchemes(strings(arguments.clients));
  Session session(withSwatches);
  session.pane.didLoad(session.screen.pane);
  list(session);
  if (arguments.script) {
    runLines({.file = *arguments.script}, [&](const std::string& line) { runOne(session, line); });
  } else if (isatty(STDIN_FILENO) != 0) {
    talk(session);
  } else {
    runLines({.file = "-"}, [&](const std::string& line) { runOne(session, line); });
  }
  return 0;
}

}  // namespace

Command paneCommand() {
  auto arguments = std::make_shared<PaneArguments>();
  return {.name = "pane",
          .summary = "Show the settings in a hosted Settings application, and change them",
          .options = {rootOption(arguments->root),
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
                      colorOption(arguments->color)},
          .notes = "It uses what the library offers to a pane. Commands, one a line:\n" +
                   formList(paneForms()),
          .run = [arguments] { return show(*arguments); }};
}

}  // namespace varnix::cli
