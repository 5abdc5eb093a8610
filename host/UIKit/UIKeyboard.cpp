// The keyboard and how it is rendered.
#include "UIKit/UIView.h"

namespace {

struct RenderConfig : UIKBRenderConfig {
  RenderConfig* init() {
    light = true;
    return this;
  }
  bool isLight() { return light; }
  void storeLight(bool value) { light = value; }

  bool light;
};

}  // namespace

PLAIN_VIEW_CLASS(UIKeyboard, UIView)

OBJC_CLASS_NAMED(UIKBRenderConfig, NSObject, RenderConfig, NSObject,
                 objc::Ivar<"_lightKeyboard", &RenderConfig::light>,
                 objc::Method<"init", &RenderConfig::init>,
                 objc::Method<"lightKeyboard", &RenderConfig::isLight>,
                 objc::Method<"setLightKeyboard:", &RenderConfig::storeLight>)
