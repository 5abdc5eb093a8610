#include "pane/session.h"

#include <algorithm>
#include <iostream>

#include "Foundation/run_loop.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "common/line_commands.h"
#include "common/nearest.h"
#include "objc/autorelease_pool.h"
#include "pane/row_values.h"

namespace varnix::cli {

namespace settings = host::settings;

struct PaneSession::Form {
  const char* form;
  const char* meaning;
  void (*run)(PaneSession& session, const Words& words);
};

const PaneSession::Form PaneSession::kForms[] = {
    {"list", "print the page", [](PaneSession& s, const Words&) { s.list(); }},
    {"open ROW", "open the page behind a row: its title, key or number",
     [](PaneSession& s, const Words& words) { s.open(words[0]); }},
    {"set ROW VALUE", "on or off; a choice; a colour like #1e88e5",
     [](PaneSession& s, const Words& words) { s.set(words[0] + " " + words[1]); }},
    {"press BUTTON", "a button row, a choice, a button of an alert, or bar",
     [](PaneSession& s, const Words& words) { s.press(words[0]); }},
    {"back", "go to the page before", [](PaneSession& s, const Words&) { s.back(); }},
    {"find TEXT", "type into the page's search field, or list rows that contain the text",
     [](PaneSession& s, const Words& words) { s.find(words[0]); }},
    {"find", "empty the search field", [](PaneSession& s, const Words&) { s.find(""); }},
    {"help", "print this", [](PaneSession&, const Words&) { std::cout << help(); }},
    {"quit", "end", [](PaneSession& s, const Words&) { s.isOver_ = true; }},
};

std::vector<const char*> PaneSession::forms() {
  std::vector<const char*> list;
  for (const Form& form : kForms) list.push_back(form.form);
  return list;
}

std::string PaneSession::help() {
  std::string text;
  constexpr std::size_t kFormWidth = 16;
  for (const Form& form : kForms) {
    std::string line = std::string("  ") + form.form;
    line.append(line.size() < kFormWidth ? kFormWidth - line.size() : 1, ' ');
    text += line + form.meaning + "\n";
  }
  return text;
}

PaneSession::PaneSession(bool withSwatches)
    : withSwatches_(withSwatches), events_([] { return settings::topPage(); }) {
  settings::open();
}

void PaneSession::openPath(const std::string& path) {
  for (std::size_t begin = 0; begin < path.size();) {
    const ShownPage page = shownPage();
    // A title may contain a slash.
    std::size_t end = path.size();
    while (end != begin && findRow(page, path.substr(begin, end - begin)) == nullptr) {
      const std::size_t slash = path.rfind('/', end - 1);
      end = slash == std::string::npos || slash < begin ? begin : slash;
    }
    if (end == begin) end = std::min(path.find('/', begin), path.size());
    openRow(rowNamed(page, path.substr(begin, end - begin)));
    begin = end + 1;
  }
}

void PaneSession::begin() {
  const objc::AutoreleasePool pool;
  list();
  events_.settle();
}

void PaneSession::list() {
  const ShownPage page = shownPage();
  path_ = page.path;
  shown_ = printed(page, withSwatches_);
  std::cout << shown_.all;
}

void PaneSession::tellChanges() {
  const objc::AutoreleasePool pool;
  host::MainRunLoop::instance().drain();
  const ShownPage page = shownPage();
  if (page.path != path_) return;
  PrintedPage fresh = printed(page, withSwatches_);
  std::cout << changes(shown_, fresh, "*");
  shown_ = std::move(fresh);
}

void PaneSession::tellOutcome() {
  events_.settle(awaitsAnswer_);
  awaitsAnswer_ = false;
  const ShownPage page = shownPage();
  if (page.path != path_) return list();
  PrintedPage fresh = printed(page, withSwatches_);
  std::cout << changes(shown_, fresh, "");
  shown_ = std::move(fresh);
}

void PaneSession::run(const std::string& line) {
  runLine(forms(), line, [&](std::size_t form, const Words& words) {
    const objc::AutoreleasePool pool;
    kForms[form].run(*this, words);
    tellOutcome();
    std::cout << std::flush;
  });
}

void PaneSession::requirePage() const {
  if (events_.hasAlert()) throw Failure("an alert covers the page", "press one of its buttons");
}

void PaneSession::openRow(const ShownRow& row) {
  if (!row.isEnabled) throw Failure("the row is disabled", row.title);
  if (!row.isLink) throw Failure("no page is behind the row", row.title);
  const std::size_t depth = settings::depth();
  settings::press(row.row);
  if (settings::depth() == depth) throw Failure("the row opened no page", row.title);
}

void PaneSession::open(const std::string& row) {
  requirePage();
  const ShownPage page = shownPage();
  if (findRow(page, row) == nullptr && row.find('/') != std::string::npos) return openPath(row);
  openRow(rowNamed(page, row));
}

void PaneSession::press(const std::string& name) {
  if (events_.hasAlert()) {
    // What a button of an invitation asks for may come from another thread.
    awaitsAnswer_ = true;
    return events_.press(name);
  }
  const ShownPage page = shownPage();
  if (name == "bar" && page.hasBarButton && findRow(page, name) == nullptr)
    return events_.pressBarButton();
  const ShownRow& row = rowNamed(page, name);
  if (!row.isEnabled) throw Failure("the row is disabled", row.title);
  if (!row.isButton && row.row.type() != PSListItemCell)
    throw Failure("the row is not a button", row.title);
  requireReadableFile();
  settings::press(row.row);
}

void PaneSession::set(const std::string& words) {
  requirePage();
  const ShownPage page = shownPage();
  const RowAndValue parts = splitRowAndValue(page, words);
  requireReadableFile();
  setRow(rowNamed(page, parts.row), parts.value);
}

void PaneSession::back() {
  requirePage();
  if (!settings::back()) throw Failure("no page is before this one", shownPage().title());
}

void PaneSession::find(const std::string& text) {
  const ShownPage page = shownPage();
  if (page.searched) {
    requirePage();
    NSString* typed = host::makeString(text);
    if (typed == nullptr) throw UsageError("not UTF-8", text);
    settings::search(typed);
    return list();
  }
  if (text.empty()) throw Failure("the page has no search field", page.title());
  const std::string found = rowsWith(page, text, withSwatches_);
  if (found.empty()) throw Failure("no row contains", text);
  std::cout << found;
}

std::vector<std::string> PaneSession::completions(const std::string& line) const {
  const objc::AutoreleasePool pool;
  std::vector<std::string> all;
  auto add = [&](const std::string& whole) {
    const bool begins =
        whole.size() >= line.size() && isSameText(whole.substr(0, line.size()), line);
    if (begins && std::ranges::find(all, whole) == all.end()) all.push_back(whole);
  };
  const ShownPage page = shownPage();
  const std::size_t space = line.find(' ');
  if (space == std::string::npos) {
    for (const char* form : forms()) {
      const std::string word(form);
      const std::size_t end = word.find(' ');
      add(end == std::string::npos ? word : word.substr(0, end + 1));
    }
    return all;
  }
  const std::string command = line.substr(0, space);
  if (command == "press" && events_.hasAlert()) {
    for (const std::string& button : events_.buttons()) add("press " + button);
    return all;
  }
  for (const ShownRow* row : page.rows()) {
    if (!row->isEnabled) continue;
    const bool isPressed = row->isButton || row->row.type() == PSListItemCell;
    if ((command == "open" && row->isLink) || (command == "press" && isPressed))
      add(command + " " + row->title);
    if (command != "set") continue;
    const std::vector<std::string> values = valuesOf(*row);
    if (values.empty()) continue;
    const std::string begun = "set " + row->title + " ";
    if (line.size() < begun.size()) add(begun);
    for (const std::string& value : values) {
      if (line.size() >= begun.size()) add(begun + value);
    }
  }
  return all;
}

}  // namespace varnix::cli
