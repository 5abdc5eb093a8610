#include "support/settings_pane.h"

#include "Foundation/darwin_notify.h"

namespace test {

namespace {

constexpr char kSettle[] = "settle";
/// As long as it may take until what was announced has been heard.
constexpr std::chrono::milliseconds kHearing{30};

void answerQuestions(int questions, int answers, const std::string& root,
                     const std::string& bundle) {
  host::ProcessOptions options;
  options.bundle = bundle;
  options.root = root;
  host::startProcess(options);
  host::loadLibrary(VARNIX_LIBRARY);
  NSObject* asked =
      send<NSObject*>(send<NSObject*>(objc_getClass("VNXManager"), "alloc"_sel), "init"_sel);
  FILE* in = fdopen(questions, "r");
  FILE* out = fdopen(answers, "w");
  std::fputs("ready\n", out);
  std::fflush(out);
  char operation[64];
  char expected[64];
  while (std::fscanf(in, "%63s %63s", operation, expected) == 2) {
    const objc::AutoreleasePool pool;
    if (std::string_view(operation) == kSettle) {
      host::MainRunLoop::instance().runFor(kHearing);
      std::fputs("settled\n", out);
      std::fflush(out);
      continue;
    }
    std::string found;
    eventually([&] {
      found = hex(objc::perform<UIColor*>(asked, sel_registerName(operation)));
      return found == expected;
    });
    std::fprintf(out, "%s\n", found.c_str());
    std::fflush(out);
  }
  _exit(0);
}

}  // namespace

OtherProcess::OtherProcess(const std::string& root, const std::string& bundle) {
  int to[2];
  int from[2];
  if (pipe(to) != 0 || pipe(from) != 0) std::abort();
  process_ = fork();
  if (process_ == 0) {
    close(to[1]);
    close(from[0]);
    answerQuestions(to[0], from[1], root, bundle);
  }
  close(to[0]);
  close(from[1]);
  questions_ = fdopen(to[1], "w");
  answers_ = fdopen(from[0], "r");
  char ready[16];
  if (std::fscanf(answers_, "%15s", ready) != 1) std::abort();
}

OtherProcess::~OtherProcess() {
  std::fclose(questions_);
  std::fclose(answers_);
  waitpid(process_, nullptr, 0);
}

std::string OtherProcess::ask(const std::string& operation, const std::string& expected) {
  std::fprintf(questions_, "%s %s\n", operation.c_str(), expected.c_str());
  std::fflush(questions_);
  char found[64];
  return std::fscanf(answers_, "%63s", found) == 1 ? found : "no answer";
}

void OtherProcess::settle() { ask(kSettle, "settled"); }

void SettingsPane::openFrom(const std::string& bundle, const std::string& entries) {
  if (!entries.empty()) settings(entries);
  other = std::make_unique<OtherProcess>(folder.path(), bundle);
  open(entries);
}

void SettingsPane::open(const std::string& entries, const std::vector<std::string>& without) {
  if (!entries.empty()) settings(entries);
  start("com.apple.Preferences", host::ProcessKind::application, {}, without);
  load();
  pages::open();
  press("Varnix");
  settle();
  // The invitation comes once; most tests are about something else.
  if (send(host::shownAlerts(), NSArray::count) != 0) answer("No thanks!");
}

bool SettingsPane::has(const std::string& title) {
  for (const auto& section : pages::sections()) {
    for (const auto& row : section.rows) {
      if (row.title() == title) return true;
    }
  }
  return false;
}

pages::Row SettingsPane::row(const std::string& title) {
  for (const auto& section : pages::sections()) {
    for (const auto& row : section.rows) {
      if (row.title() == title) return row;
    }
  }
  throw std::runtime_error("no row " + title + " on " + SettingsPane::title());
}

void SettingsPane::choose(const std::string& title, const std::string& choice) {
  press(title);
  press(choice);
  pages::back();
  settle();
}

std::string SettingsPane::alertTitle() {
  auto* alert = send(host::shownAlerts(), NSArray::lastObject);
  return alert == nullptr ? "none" : pages::Row::words(send<NSObject*>(alert, "title"_sel));
}

void SettingsPane::answer(const std::string& button) {
  auto* alert = send(host::shownAlerts(), NSArray::lastObject);
  const auto count = send<NSInteger>(alert, "numberOfButtons"_sel);
  for (NSInteger i = 0; i < count; ++i) {
    if (pages::Row::words(send<NSObject*>(alert, "buttonTitleAtIndex:"_sel, i)) != button) continue;
    host::pressAlertButton(alert, i);
    settle();
    return;
  }
  throw std::runtime_error("no button " + button);
}

std::string SettingsPane::stored(const std::string& key) const {
  auto* file = objc::as<NSDictionary>(host::propertyListFromFile(settingsPath()));
  NSObject* value = send(file, NSDictionary::objectForKey, host::makeString(key));
  return value == nullptr ? "none" : pages::Row::words(value);
}

void SettingsPane::changeElsewhere(const std::string& entries) {
  settings(entries);
  announceChange();
}

void SettingsPane::announceChange() {
  host::postDarwinNotification("com.quillmarsh.varnix2.changed");
}

void SettingsPane::settle() { host::MainRunLoop::instance().runFor(kHearing); }

}  // namespace test
