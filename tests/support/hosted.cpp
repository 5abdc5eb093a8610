#include "support/hosted.h"

namespace test {

Folder::Folder() {
  std::string name = (std::filesystem::temp_directory_path() / "varnix-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) std::abort();
  path_ = name;
}
Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string contentsOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

std::string Hosted::settingsPath() const {
  return folder.path() + "/var/mobile/Library/Preferences/com.quillmarsh.varnix2.plist";
}
void Hosted::writeSettings(const std::string& bytes) {
  std::filesystem::create_directories(std::filesystem::path(settingsPath()).parent_path());
  std::ofstream(settingsPath(), std::ios::binary | std::ios::trunc) << bytes;
}
void Hosted::settings(const std::string& entries) {
  writeSettings("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" +
                entries + "</dict></plist>\n");
}
void Hosted::start(std::optional<std::string> bundle, host::ProcessKind kind,
                   std::optional<std::string> open, std::vector<std::string> without) {
  std::filesystem::create_directories(std::filesystem::path(settingsPath()).parent_path());
  host::runtime::observeChanges([this](const host::runtime::Change& change) {
    const bool isHook = change.kind == host::runtime::Change::Kind::hook;
    installed.push_back(std::string(isHook ? "hook " : "add ") + (change.classMethod ? "+" : "-") +
                        "[" + change.className + " " + change.selector + "]" +
                        (isHook ? "" : " " + change.types));
  });
  host::startProcess({.bundle = std::move(bundle),
                      .kind = kind,
                      .open = std::move(open),
                      .without = std::move(without),
                      .withoutLibraries = withoutLibraries,
                      .icons = icons,
                      .root = folder.path(),
                      .hooking = hooking,
                      .language = language});
}
void Hosted::load() { host::loadLibrary(VARNIX_LIBRARY); }
void Hosted::application(const std::string& entries) {
  settings(entries);
  start("com.example.app");
  load();
}
void Hosted::springBoard(const std::string& entries, std::optional<std::string> open) {
  settings(entries);
  start("com.apple.springboard", host::ProcessKind::springboard, std::move(open));
  load();
}

std::vector<std::string> Hosted::log() const {
  std::vector<std::string> lines;
  for (const auto& line : host::logLines())
    lines.push_back(std::to_string(line.level) + " " + line.line);
  return lines;
}
std::vector<std::string> Hosted::passedOver() {
  auto* pairs = send<NSArray*>(objc_getClass("VarnixInstallation"), "skipped"_sel);
  auto text = [pairs](NSUInteger index) {
    auto* string = static_cast<NSString*>(send(pairs, NSArray::objectAtIndex, index));
    return std::string(send(string, NSString::UTF8String));
  };
  std::vector<std::string> lines;
  for (NSUInteger i = 0; i < send(pairs, NSArray::count); i += 2)
    lines.push_back(text(i) + ": " + text(i + 1));
  return lines;
}

std::string hex(UIColor* color) {
  if (color == nullptr) return "nil";
  CGFloat c[4] = {};
  send<bool>(color, "getRed:green:blue:alpha:"_sel, &c[0], &c[1], &c[2], &c[3]);
  char text[10];
  auto byte = [&](int i) { return static_cast<unsigned>(c[i] * 255 + CGFloat{0.5}); };
  std::snprintf(text, sizeof text, "#%02x%02x%02x%02x", byte(0), byte(1), byte(2), byte(3));
  return text;
}

std::array<CGFloat, 4> hsbOf(UIColor* color) {
  std::array<CGFloat, 4> parts{};
  send(color, UIColor::getHue, &parts[0], &parts[1], &parts[2], &parts[3]);
  return parts;
}

bool eventually(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(VARNIX_PATIENCE);
  while (std::chrono::steady_clock::now() < end) {
    if (host::MainRunLoop::instance().runUntil(condition, std::chrono::milliseconds(50)))
      return true;
  }
  return condition();
}

}  // namespace test
