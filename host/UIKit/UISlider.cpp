// Sliders.
#include "UIKit/UIControl.h"

namespace {
struct Slider : host::Control {
  Strong<UIColor> minimumTrackTint;
  Strong<UIColor> maximumTrackTint;
};

}  // namespace

OBJC_CLASS_NAMED(UISlider, UIControl, Slider, host::Control,
                 objc::Property<"minimumTrackTintColor", &Slider::minimumTrackTint>,
                 objc::Property<"maximumTrackTintColor", &Slider::maximumTrackTint>)
