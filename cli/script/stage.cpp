#include "script/stage.h"

#include <algorithm>

#include "common/answer_json.h"
#include "common/class_names.h"
#include "common/errors.h"
#include "common/json.h"
#include "objc/autorelease_pool.h"
#include "platform/SpringBoard.h"
#include "probe/objects.h"
#include "probe/springboard_situations.h"
#include "runtime/instance_variable.h"
#include "runtime/send.h"
#include "script/recorder.h"

namespace varnix::cli {

using probe::backdropSettings;
using probe::make;
using probe::wallpaperColor;

namespace {

enum class Prints { writes, answer };

struct StagedSurface {
  const char* name;
  const char* className;
  Prints prints;
};

constexpr char kControlCenter[] = "control-centre";
constexpr char kNotificationCenter[] = "notification-centre";

/// In the order of printing.
constexpr StagedSurface kSurfaces[] = {
    {kControlCenter, "SBControlCenterContentContainerView", Prints::writes},
    {kNotificationCenter, "SBNotificationCenterViewController", Prints::writes},
    {"volume", "SBHUDView", Prints::writes},
    {"folder", "SBFolderIconBackgroundView", Prints::writes},
    {"icon", "SBIconBlurryBackgroundView", Prints::writes},
    {"badge", "SBIconBadgeView", Prints::answer},
    {"keyboard", "UIKeyboard", Prints::answer},
    {"balloon", "CKGradientView", Prints::answer},
};

/// An icon's place on the wallpaper, and the piece of it behind the icon.
constexpr CGPoint kPhase{27, 88};
constexpr CGRect kPiece{{27, 88}, {60, 60}};

/// The colour behind Control Centre's content.
Json contrastBackground(NSObject* center) {
  constexpr char kVariable[] = "_accessibilityBackgroundView";
  if (center == nullptr || class_getInstanceVariable(object_getClass(center), kVariable) == nullptr)
    return nullptr;
  auto* background = objc::instanceVariable<NSObject>(center, kVariable);
  return colorJson(send<NSObject*>(background, "backgroundColor"_sel));
}

}  // namespace

/// Indexed by the surface's name.
struct Stage::Noted {
  std::map<std::string, Json> writes, answers;
};

Stage::Stage() : noted_(std::make_unique<Noted>()) {
  recordWrites([this](NSObject* receiver, Json write) {
    const std::string surface = surfaceOf(receiver);
    if (!surface.empty()) noted_->writes[surface].push_back(std::move(write));
  });
}

Stage::~Stage() { recordWrites({}); }

NSObject* Stage::object(const char* surface) {
  Strong<NSObject>& kept = objects_[surface];
  if (kept.get() == nullptr) {
    const auto* found =
        std::find_if(std::begin(kSurfaces), std::end(kSurfaces),
                     [&](const StagedSurface& s) { return std::string_view(surface) == s.name; });
    kept = make(classNamed(found->className));
  }
  return kept;
}

std::string Stage::surfaceOf(NSObject* receiver) {
  for (const auto& [surface, object] : objects_) {
    if (object.get() == nullptr) continue;
    if (object.get() == receiver || backdropSettings(object) == receiver) return surface;
  }
  return {};
}

void Stage::presentControlCenter() {
  send<void>(object(kControlCenter), "controlCenterWillPresent"_sel);
}

void Stage::presentNotificationCenter() {
  send<void>(object(kNotificationCenter), "hostWillPresent"_sel);
}

void Stage::updateBackground() { send<void>(object(kControlCenter), "_updateBackground"_sel); }

void Stage::layOutVolume() { send<void>(object("volume"), "layoutSubviews"_sel); }

void Stage::setFolderWallpaper() {
  send<void>(object("folder"), "setWallpaperColor:phase:"_sel, wallpaperColor(), kPhase);
}

void Stage::setIconWallpaper() {
  NSObject* icon = object("icon");
  send<void>(icon, "setWallpaperColor:phase:"_sel, wallpaperColor(), kPhase);
  const auto contents = make(classNamed("UIImage"));
  send<void>(icon, "setWallpaperBackgroundRect:forContents:withFallbackColor:"_sel, kPiece,
             contents.get(), wallpaperColor());
}

/// Badges are numbered from 1, in the order in which they first appear.
int Stage::badgeNumber(NSObject* image) {
  auto known = std::find_if(badges_.begin(), badges_.end(),
                            [&](const auto& badge) { return badge.get() == image; });
  if (known == badges_.end()) known = badges_.insert(known, Strong<NSObject>::retain(image));
  return static_cast<int>(known - badges_.begin()) + 1;
}

void Stage::checkOutBadge() {
  auto* image = send<NSObject*>(classNamed("SBIconBadgeView"), "_checkoutBackgroundImage"_sel);
  if (image == nullptr) throw Failure("no image", "badge");
  noted_->answers["badge"] = {{"image", colorJson(send<NSObject*>(image, "_coveredColor"_sel))},
                              {"object", badgeNumber(image)}};
}

/// A keyboard chooses its colour when it is made.
void Stage::makeKeyboard() {
  const auto keyboard = make(classNamed("UIKeyboard"));
  const auto rendering = make(classNamed("UIKBRenderConfig"));
  noted_->answers["keyboard"] = {
      {"backgroundColor", colorJson(send<NSObject*>(keyboard, "backgroundColor"_sel))},
      {"opaque", send<bool>(keyboard, "isOpaque"_sel)},
      {"lightKeyboard", send<bool>(rendering, "lightKeyboard"_sel)}};
}

void Stage::askBalloon() {
  auto* shades = send<NSArray*>(object("balloon"), "colors"_sel);
  Json colors = Json::array();
  const auto count = send<NSUInteger>(shades, "count"_sel);
  for (NSUInteger i = 0; i < count; ++i)
    colors.push_back(colorJson(send(shades, NSArray::objectAtIndex, i)));
  noted_->answers["balloon"] = {{"colors", colors}};
}

void Stage::changeContrast(bool enhanced) {
  send<void>(classNamed("UIApplication"), "_setEnhancedBackgroundContrast:"_sel, enhanced);
  NSObject* notification = nullptr;
  send<void>(object(kControlCenter), "_accessibilityBackgroundContrastDidChange:"_sel,
             notification);
  send<void>(object(kNotificationCenter), "_backgroundContrastDidChange:"_sel, notification);
}

void Stage::playTrack(NSObject* artwork, bool plays) {
  send<void>(objc_getClass("MPUNowPlayingController"), "_setArtwork:playing:"_sel, artwork, plays);
}

Json Stage::print() {
  Json surfaces = Json::object();
  for (const StagedSurface& surface : kSurfaces) {
    if (objc_getClass(surface.className) == nullptr) continue;
    Json& printed = surfaces[surface.name];
    if (surface.prints == Prints::answer) {
      const auto answer = noted_->answers.find(surface.name);
      if (answer != noted_->answers.end()) printed = answer->second;
      continue;
    }
    const auto writes = noted_->writes.find(surface.name);
    printed = {{"writes", writes == noted_->writes.end() ? Json::array() : writes->second}};
    if (surface.name == kControlCenter)
      printed["contrastBackground"] = contrastBackground(objects_[kControlCenter]);
  }
  noted_->writes.clear();
  return {{"surfaces", surfaces}};
}

}  // namespace varnix::cli
