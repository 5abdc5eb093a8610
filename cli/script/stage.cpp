#include "script/stage.h"

#include <algorithm>

#include "common/answer_json.h"
#include "common/class_names.h"
#include "common/errors.h"
#include "common/json.h"
#include "objc/autorelease_pool.h"
#include "probe/situations.h"
#include "runtime/instance_variable.h"
#include "runtime/send.h"
#include "script/recorder.h"

namespace varnix::cli {

using probe::Given;
using probe::Situation;

namespace {

enum class Prints { writes, answer };

struct StagedSurface {
  const char* name;
  const Situation& situation;
  Prints prints;
};

constexpr char kControlCenter[] = "control-centre";
constexpr char kNotificationCenter[] = "notification-centre";

/// In the order of printing.
constexpr StagedSurface kSurfaces[] = {
    {kControlCenter, probe::kControlCenter, Prints::writes},
    {kNotificationCenter, probe::kNotificationCenter, Prints::writes},
    {"volume", probe::kVolume, Prints::writes},
    {"folder", probe::kFolder, Prints::writes},
    {"icon", probe::kIcon, Prints::writes},
    {"badge", probe::kBadge, Prints::answer},
    {"keyboard", probe::kKeyboard, Prints::answer},
    {"balloon", probe::kBalloon, Prints::answer},
};

/// Icons at the edge of the screen have one of their own.
constexpr Given kPlace{.phase = {27, 88}, .hasPicture = true};

const Situation& situationOf(std::string_view surface) {
  return std::ranges::find(kSurfaces, surface, &StagedSurface::name)->situation;
}

/// Throws Failure if the process does not have the class.
Strong<NSObject> made(const Situation& situation) {
  static_cast<void>(classNamed(situation.className));
  return probe::make(situation);
}

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
  if (kept.get() == nullptr) kept = made(situationOf(surface));
  return kept;
}

void Stage::happen(const char* surface) {
  probe::happen(situationOf(surface), object(surface), kPlace);
}

std::string Stage::surfaceOf(NSObject* receiver) {
  for (const auto& [surface, object] : objects_) {
    if (object.get() == nullptr) continue;
    if (object.get() == receiver || probe::backdropSettings(object) == receiver) return surface;
  }
  return {};
}

void Stage::presentControlCenter() { happen(kControlCenter); }
void Stage::presentNotificationCenter() { happen(kNotificationCenter); }
void Stage::updateBackground() { send<void>(object(kControlCenter), "_updateBackground"_sel); }
void Stage::layOutVolume() { happen("volume"); }
void Stage::setFolderWallpaper() { happen("folder"); }
void Stage::setIconWallpaper() { happen("icon"); }

/// Badges are numbered from 1, in the order in which they first appear.
int Stage::badgeNumber(NSObject* image) {
  auto known = std::find_if(badges_.begin(), badges_.end(),
                            [&](const auto& badge) { return badge.get() == image; });
  if (known == badges_.end()) known = badges_.insert(known, Strong<NSObject>::retain(image));
  return static_cast<int>(known - badges_.begin()) + 1;
}

void Stage::checkOutBadge() {
  const auto image = made(probe::kBadge);
  if (image.get() == nullptr) throw Failure("no image", "badge");
  noted_->answers["badge"] = {{"image", colorJson(send<NSObject*>(image, "_coveredColor"_sel))},
                              {"object", badgeNumber(image)}};
}

/// A keyboard chooses its colour when it is made.
void Stage::makeKeyboard() {
  const auto keyboard = made(probe::kKeyboard);
  const auto rendering = made(probe::kKeyRendering);
  noted_->answers["keyboard"] = {
      {"backgroundColor", colorJson(send<NSObject*>(keyboard, "backgroundColor"_sel))},
      {"opaque", send<bool>(keyboard, "isOpaque"_sel)},
      {"lightKeyboard", send<bool>(rendering, "lightKeyboard"_sel)}};
}

void Stage::askBalloon() {
  Json colors = Json::array();
  for (const auto& shade : probe::shadeAnswers(object("balloon")))
    colors.push_back(answerJson(shade));
  noted_->answers["balloon"] = {{"colors", colors}};
}

void Stage::changeContrast(bool enhanced) {
  send<void>(classNamed("UIApplication"), "_setEnhancedBackgroundContrast:"_sel, enhanced);
  NSObject* notification = nullptr;
  send<void>(object(kControlCenter), "_accessibilityBackgroundContrastDidChange:"_sel,
             notification);
  send<void>(object(kNotificationCenter), "_backgroundContrastDidChange:"_sel, notification);
}

Json Stage::print() {
  Json surfaces = Json::object();
  for (const StagedSurface& surface : kSurfaces) {
    if (objc_getClass(surface.situation.className) == nullptr) continue;
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
