// The process's application object: SpringBoard's where that class is there.
#include "UIKit/UIApplication.h"

using host::Application;

OBJC_CLASS_NAMED(UIApplication, NSObject, Application, NSObject,
                 objc::Readable<"applicationState", &Application::state, "_state">,
                 objc::ClassMethod<"sharedApplication", &Application::shared>,
                 objc::Method<"setApplicationState:", &Application::setApplicationState>)

Application* Application::shared() {
  static auto* application = [] {
    Class springBoard = objc_getClass("SpringBoard");
    return static_cast<Application*>(
        class_createInstance(springBoard == nullptr ? &objc_class_UIApplication : springBoard, 0));
  }();
  return application;
}
