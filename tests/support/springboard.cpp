#include "support/springboard.h"

#include "support/base64.h"

namespace test {

namespace {

std::string written(bool value) { return value ? "yes" : "no"; }
std::string written(UIColor* color) { return hex(color); }
std::string written(CGFloat value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
  return text;
}

/// Records calls of one setter of the backdrops' settings and passes them on.
template <objc::FixedString Name, class Value>
class RecordedSetter {
 public:
  static void install() {
    hook_.template install<&noted>(objc_getClass("_UIBackdropViewSettings"),
                                   objc::Selector<Name>::get());
  }

 private:
  static void noted(NSObject* self, SEL command, Value value) {
    writes().push_back(std::string(Name.text) + " " + written(value));
    hook_.original(self, command, value);
  }
  static inline constinit objc::Hook<objc::Message<NSObject, Name, void(Value)>{}> hook_;
};

/// The library's own store; known after a notification has revealed it.
KTPrefsManager* libraryStore = nullptr;
constinit objc::Hook<KTPrefsManager::notificationReceived> notificationReceived;

void noteStore(KTPrefsManager* self, SEL command) {
  if (libraryStore == nullptr) libraryStore = self;
  notificationReceived.original(self, command);
}

}  // namespace

std::vector<std::string>& writes() {
  static std::vector<std::string> lines;
  return lines;
}

UIColor* fromHex(const std::string& text) {
  const auto value = static_cast<unsigned>(std::stoul(text.substr(1), nullptr, 16));
  auto part = [=](int shift) { return static_cast<CGFloat>((value >> shift & 0xff) / 255.0); };
  return UIColor::colorWithRed(part(24), part(16), part(8), part(0));
}

std::string integerEntry(const std::string& key, int value) {
  return "<key>" + key + "</key><integer>" + std::to_string(value) + "</integer>";
}
std::string stringEntry(const std::string& key, const std::string& value) {
  return "<key>" + key + "</key><string>" + value + "</string>";
}
std::string boolEntry(const std::string& key, bool value) {
  return "<key>" + key + "</key>" + (value ? "<true/>" : "<false/>");
}

void SpringBoard::installNowPlaying() {
  const std::filesystem::path build =
      std::filesystem::path(host::defaultLibraryPath()).parent_path();
  const std::filesystem::path file = folder.path() + kMediaPlayerUI;
  std::filesystem::create_directories(file.parent_path());
  std::filesystem::copy_file(build / "Frameworks/MediaPlayerUI.so", file);
}

void SpringBoard::loadNowPlaying() {
  ASSERT_NE(dlopen(host::hostPath(kMediaPlayerUI).c_str(), RTLD_NOW), nullptr);
}

void SpringBoard::startSpringBoard(std::vector<std::string> without) {
  start("com.apple.springboard", host::ProcessKind::springboard, {}, std::move(without));
}

void SpringBoard::reload() {
  if (libraryStore == nullptr) {
    notificationReceived.install<&noteStore>(objc_getClass("KTPrefsManager"),
                                             KTPrefsManager::notificationReceived);
    host::postDarwinNotification("com.quillmarsh.varnix2.changed");
    ASSERT_TRUE(eventually([] { return libraryStore != nullptr; }));
  } else {
    send(libraryStore, KTPrefsManager::notificationReceived);
  }
}

void SpringBoard::settingsNow(const std::string& entries) {
  settings(entries);
  reload();
}

std::string SpringBoard::cachedIconColor(const std::string& identifier, const std::string& color) {
  NSData* archive = NSKeyedArchiver::archivedDataWithRootObject(fromHex(color));
  return "<key>cached_icon_color_" + identifier + "</key><data>" + base64(archive) + "</data>";
}

void SpringBoard::setTrack(UIImage* artwork, bool playing) {
  send<void>(objc_getClass("MPUNowPlayingController"), "_setArtwork:playing:"_sel, artwork,
             playing);
}

void SpringBoard::open(NSString* identifier) {
  send<void>(UIApplication::sharedApplication(), "_setFrontMostApplicationIdentifier:"_sel,
             identifier);
}

Strong<NSObject> SpringBoard::makeControlCenter() {
  return framed("SBControlCenterContentContainerView");
}

Strong<NSObject> SpringBoard::makeNotificationCenter() {
  auto* raw = send<NSObject*>(objc_getClass("SBNotificationCenterViewController"), "alloc"_sel);
  return Strong<NSObject>::adopt(send<NSObject*>(raw, "initWithNibName:bundle:"_sel,
                                                 static_cast<NSString*>(nullptr),
                                                 static_cast<NSBundle*>(nullptr)));
}

Strong<NSObject> SpringBoard::framed(const char* className) {
  auto* raw = send<NSObject*>(objc_getClass(className), "alloc"_sel);
  return Strong<NSObject>::adopt(
      send<NSObject*>(raw, "initWithFrame:"_sel, CGRect{{0, 0}, {320, 200}}));
}

NSObject* SpringBoard::controlCenter() {
  if (controlCenter_ == nullptr) controlCenter_ = makeControlCenter();
  return controlCenter_;
}

NSObject* SpringBoard::notificationCenter() {
  if (notificationCenter_ == nullptr) notificationCenter_ = makeNotificationCenter();
  return notificationCenter_;
}

NSObject* SpringBoard::hud() {
  if (hud_ == nullptr) hud_ = framed("SBHUDView");
  return hud_;
}

NSObject* SpringBoard::inputSettings(NSObject* surface) {
  auto* backdrop = send<NSObject*>(surface, "backdropView"_sel);
  return send<NSObject*>(backdrop, "inputSettings"_sel);
}

void SpringBoard::recordSettings() {
  RecordedSetter<"setRequiresColorStatistics:", bool>::install();
  RecordedSetter<"setUsesColorTintView:", bool>::install();
  RecordedSetter<"setColorTint:", UIColor*>::install();
  RecordedSetter<"setColorTintAlpha:", CGFloat>::install();
  RecordedSetter<"setColorTintMaskAlpha:", CGFloat>::install();
}

std::vector<std::string> tinted(const std::string& color, const std::string& alpha) {
  return {"setRequiresColorStatistics: yes", "setUsesColorTintView: yes", "setColorTint: " + color,
          "setColorTintAlpha: " + alpha, "setColorTintMaskAlpha: 0.7"};
}
std::vector<std::string> cleared() {
  return {"setRequiresColorStatistics: no", "setUsesColorTintView: no", "setColorTint: nil"};
}

}  // namespace test
