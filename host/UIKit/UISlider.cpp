// Sliders.
#include "UIKit/UIView.h"

namespace {

struct Slider : host::View {
  UIColor* minimumTrack() { return minimumTrackTint; }
  void storeMinimumTrack(UIColor* color) { minimumTrackTint = Strong<UIColor>::retain(color); }
  UIColor* maximumTrack() { return maximumTrackTint; }
  void storeMaximumTrack(UIColor* color) { maximumTrackTint = Strong<UIColor>::retain(color); }

  Strong<UIColor> minimumTrackTint;
  Strong<UIColor> maximumTrackTint;
};

}  // namespace

OBJC_CLASS_NAMED(UISlider, UIControl, Slider, host::View,
                 objc::Ivar<"_minimumTrackTintColor", &Slider::minimumTrackTint>,
                 objc::Ivar<"_maximumTrackTintColor", &Slider::maximumTrackTint>,
                 objc::Method<"minimumTrackTintColor", &Slider::minimumTrack>,
                 objc::Method<"setMinimumTrackTintColor:", &Slider::storeMinimumTrack>,
                 objc::Method<"maximumTrackTintColor", &Slider::maximumTrack>,
                 objc::Method<"setMaximumTrackTintColor:", &Slider::storeMaximumTrack>)
