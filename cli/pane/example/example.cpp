// varnix pane --example: the small pane in C, over the functions and classes that the library
// exports.
#include "pane/example/example.h"

#include <iostream>
#include <memory>

#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "common/escaped.h"
#include "common/line_commands.h"
#include "common/swatches.h"
#include "objc/autorelease_pool.h"
#include "pane/events.h"
#include "pane/example/rows.h"
#include "pane/example/settings_screen.h"
#include "probe/surfaces.h"
#include "settings/property_text.h"

namespace varnix::cli {

namespace {

struct ExampleSession {
  explicit ExampleSession(bool swatches) : withSwatches(swatches) {}

  PaneRows rows;
  PaneEntries pane = loadPane();
  SettingsScreen screen;
  PaneEvents events{[this] { return screen.pane.get(); }};
  bool withSwatches;
  bool isOver = false;
};

void listSettings(ExampleSession& session) {
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

void printBar(const ExampleSession& session) {
  const auto color = varnix::probe::colorAnswer(barColor(session.screen));
  const auto* text = std::get_if<std::string>(&color);
  std::cout << "bar       " << (text == nullptr ? "the system's" : *text) << '\n';
}

void printFooter(ExampleSession& session) {
  const PSSpecifier* specifier = session.pane.footer();
  auto* text =
      send<NSString*>(const_cast<PSSpecifier*>(specifier), "propertyForKey:"_sel, "footerText"_ns);
  std::cout << host::text(text) << '\n';
}

struct ExampleCommand {
  const char* form;
  void (*run)(ExampleSession& session, const Words& arguments);
};

constexpr ExampleCommand kExampleCommands[] = {
    {"list", [](ExampleSession& s, const Words&) { listSettings(s); }},
    {"set KEY VALUE",
     [](ExampleSession& s, const Words& words) { s.rows.set(words[0], words[1]); }},
    {"appear",
     [](ExampleSession& s, const Words&) {
       s.pane.willAppear(s.screen.pane);
       printBar(s);
     }},
    {"disappear",
     [](ExampleSession& s, const Words&) {
       s.pane.willDisappear(s.screen.pane);
       printBar(s);
     }},
    {"footer", [](ExampleSession& s, const Words&) { printFooter(s); }},
    {"follow", [](ExampleSession& s, const Words&) { s.pane.follow(); }},
    {"press BUTTON", [](ExampleSession& s, const Words& words) { s.events.press(words[0]); }},
    {"profile", [](ExampleSession& s, const Words&) { s.pane.profile(); }},
    {"share", [](ExampleSession& s, const Words&) { s.events.pressBarButton(); }},
    {"write", [](ExampleSession& s, const Words&) { s.pane.write(); }},
    {"restart", [](ExampleSession& s, const Words&) { s.pane.restart(); }},
    {"quit", [](ExampleSession& s, const Words&) { s.isOver = true; }},
};

std::vector<const char*> exampleForms() {
  std::vector<const char*> list;
  for (const ExampleCommand& command : kExampleCommands) list.push_back(command.form);
  return list;
}

void runExampleLine(ExampleSession& session, const std::string& line) {
  if (session.isOver) return;
  runLine(exampleForms(), line, [&](std::size_t command, const Words& arguments) {
    const objc::AutoreleasePool pool;
    // What others changed while nobody typed comes first.
    host::MainRunLoop::instance().drain();
    kExampleCommands[command].run(session, arguments);
    session.events.settle(std::string_view(kExampleCommands[command].form).starts_with("press"));
    std::cout << std::flush;
  });
}

}  // namespace

PaneFace examplePane(bool withSwatches) {
  auto session = std::make_shared<ExampleSession>(withSwatches);
  session->pane.didLoad(session->screen.pane);
  listSettings(*session);
  return {.help = formList(exampleForms()),
          .run = [session](const std::string& line) { runExampleLine(*session, line); },
          .isOver = [session] { return session->isOver; }};
}

std::string exampleHelp() { return formList(exampleForms()); }

}  // namespace varnix::cli
