#include "script/commands.h"

#include "Foundation/file_contents.h"
#include "Foundation/text.h"
#include "common/class_names.h"
#include "common/errors.h"
#include "common/icon_check.h"
#include "common/input_limits.h"
#include "common/json.h"
#include "common/line_commands.h"
#include "common/main_loop.h"
#include "platform/UIKit.h"
#include "probe/situations.h"
#include "settings/file.h"

namespace varnix::cli {

namespace {

constexpr NSInteger kActive = 0;

NSObject* imageOf(const std::string& file) {
  const auto contents = host::fileContents(file, kLargestFile);
  if (!contents) throw Failure("no such image file", file);
  Class imageClass = classNamed("UIImage");
  NSData* data = NSData::dataWithBytes(contents->data(), contents->size());
  auto* image = send<NSObject*>(imageClass, "imageWithData:"_sel, data);
  if (image == nullptr) throw Failure("not a PNG or JPEG image", file);
  warnOfMissingRows(image, file);
  return image;
}

UIApplication* application() {
  auto* shared = UIApplication::sharedApplication();
  if (shared == nullptr) throw Failure("this process has no such class", "UIApplication");
  return shared;
}

void enterState(NSInteger state) { send<void>(application(), "setApplicationState:"_sel, state); }

void openApplication(const std::string& identifier) {
  auto* board = application();
  SEL open = sel_registerName("_setFrontMostApplicationIdentifier:");
  if (!send(board, NSObject::respondsToSelector, open))
    throw Failure("only SpringBoard opens applications", identifier);
  NSString* name = identifier == "none" ? nullptr : host::makeString(identifier);
  if (name == nullptr && identifier != "none") throw Failure("not UTF-8", identifier);
  objc::sendDynamic<void>(board, open, name);
}

void set(const std::string& key, const std::string& value) {
  const auto kind = kindOf(key);
  if (!kind) throw Failure("no such setting", withNearestKey(key));
  store(key, valueFor(*kind, value, false));
}

constexpr ScriptCommand kScriptCommands[] = {
    {"present control-centre",
     [](ScriptContext& c, const Words&) { c.stage.presentControlCenter(); }},
    {"present notification-centre",
     [](ScriptContext& c, const Words&) { c.stage.presentNotificationCenter(); }},
    {"update-background", [](ScriptContext& c, const Words&) { c.stage.updateBackground(); }},
    {"volume", [](ScriptContext& c, const Words&) { c.stage.layOutVolume(); }},
    {"folder", [](ScriptContext& c, const Words&) { c.stage.setFolderWallpaper(); }},
    {"icon", [](ScriptContext& c, const Words&) { c.stage.setIconWallpaper(); }},
    {"badge", [](ScriptContext& c, const Words&) { c.stage.checkOutBadge(); }},
    {"keyboard", [](ScriptContext& c, const Words&) { c.stage.makeKeyboard(); }},
    {"balloon", [](ScriptContext& c, const Words&) { c.stage.askBalloon(); }},
    {"track none",
     [](ScriptContext& c, const Words&) {
       c.artwork = nullptr;
       varnix::probe::playTrack(nullptr, false);
     }},
    {"track IMAGE",
     [](ScriptContext& c, const Words& words) {
       c.artwork = Strong<NSObject>::retain(imageOf(words[0]));
       varnix::probe::playTrack(c.artwork, true);
     }},
    {"play", [](ScriptContext& c, const Words&) { varnix::probe::playTrack(c.artwork, true); }},
    {"pause", [](ScriptContext& c, const Words&) { varnix::probe::playTrack(c.artwork, false); }},
    {"open ID", [](ScriptContext&, const Words& words) { openApplication(words[0]); }},
    {"contrast on", [](ScriptContext& c, const Words&) { c.stage.changeContrast(true); }},
    {"contrast off", [](ScriptContext& c, const Words&) { c.stage.changeContrast(false); }},
    {"background", [](ScriptContext&, const Words&) { enterState(UIApplicationStateBackground); }},
    {"foreground", [](ScriptContext&, const Words&) { enterState(kActive); }},
    {"set KEY VALUE", [](ScriptContext&, const Words& words) { set(words[0], words[1]); }},
    {"unset KEY",
     [](ScriptContext&, const Words& words) {
       if (!remove(words[0])) throw Failure("not set", withNearestKey(words[0]));
     }},
    {"wait", [](ScriptContext&, const Words&) { settleMainLoop(); }},
    {"print", [](ScriptContext& c, const Words&) { c.print(c.stage.print()); }},
};

}  // namespace

std::span<const ScriptCommand> scriptCommands() { return kScriptCommands; }

}  // namespace varnix::cli
