// SpringBoard's application object, and applications as it knows them.
#include "platform/SpringBoard.h"

#include "Foundation/text.h"
#include "UIKit/UIApplication.h"
#include "process/process.h"

namespace {

struct OpenApplication : SBApplication {
  Strong<NSString> identifier;
};

struct Board : host::Application {
  /// Nil on the home screen.
  SBApplication* frontmost() {
    if (!started) open(host::processOptions().open);
    return openApplication;
  }
  void setFrontmost(NSString* identifier) {
    if (identifier == nullptr) open({});
    else open(std::string(host::text(identifier)));
  }
  void open(const std::optional<std::string>& identifier);

  bool started;
  Strong<SBApplication> openApplication;
};

}  // namespace

OBJC_CLASS_NAMED(SBApplication, NSObject, OpenApplication, NSObject,
                 objc::Readable<"bundleIdentifier", &OpenApplication::identifier>)

OBJC_CLASS_NAMED(SpringBoard, UIApplication, Board, host::Application,
                 objc::Ivar<"_started", &Board::started>,
                 objc::Ivar<"_openApplication", &Board::openApplication>,
                 objc::Method<"_accessibilityFrontMostApplication", &Board::frontmost>,
                 objc::Method<"_setFrontMostApplicationIdentifier:", &Board::setFrontmost>)

void Board::open(const std::optional<std::string>& identifier) {
  started = true;
  openApplication = nullptr;
  if (!identifier) return;
  auto* application =
      static_cast<OpenApplication*>(class_createInstance(&objc_class_SBApplication, 0));
  application->identifier = host::makeOwnedString(*identifier);
  openApplication = Strong<SBApplication>::adopt(application);
}
