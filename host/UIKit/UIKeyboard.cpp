// The keyboard and how it is rendered.
#include "UIKit/UIView.h"

namespace {
struct RenderConfig : UIKBRenderConfig {
  RenderConfig* init() {
    light = true;
    return this;
  }

  bool light;
};

}  // namespace

PLAIN_VIEW_CLASS(UIKeyboard, UIView)

OBJC_CLASS_NAMED(UIKBRenderConfig, NSObject, RenderConfig, NSObject,
                 objc::Property<"lightKeyboard", &RenderConfig::light, objc::Storage::assign>,
                 objc::Method<"init", &RenderConfig::init>)
