// Sliders.
#include "UIKit/UIView.h"

namespace {
struct Slider : host::View {
  Strong<UIColor> minimumTrackTint;
  Strong<UIColor> maximumTrackTint;
};

}  // namespace

OBJC_CLASS_NAMED(UISlider, UIControl, Slider, host::View,
                 objc::Property<"minimumTrackTintColor", &Slider::minimumTrackTint>,
                 objc::Property<"maximumTrackTintColor", &Slider::maximumTrackTint>)
