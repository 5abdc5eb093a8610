#include "UIKit/_UIBackdropView.h"

using host::BackdropSettings;
using host::BackdropView;
using objc::Atomicity;
using objc::Storage;

template <objc::FixedString Name, auto Member>
using Assigned = objc::Property<Name, Member, Storage::assign>;

OBJC_CLASS_NAMED(_UIBackdropViewSettings, NSObject, BackdropSettings, NSObject,
                 objc::Property<"colorTint", &BackdropSettings::colorTint>,
                 Assigned<"colorTintAlpha", &BackdropSettings::colorTintAlpha>,
                 Assigned<"colorTintMaskAlpha", &BackdropSettings::colorTintMaskAlpha>,
                 Assigned<"requiresColorStatistics", &BackdropSettings::requiresColorStatistics>,
                 Assigned<"usesColorTintView", &BackdropSettings::usesColorTintView>)

OBJC_CLASS_NAMED(_UIBackdropView, UIView, BackdropView, host::View,
                 objc::Readable<"inputSettings", &BackdropView::settings>,
                 objc::Method<"initWithFrame:", &BackdropView::initWithFrame>)

namespace host {

BackdropView* BackdropView::initWithFrame(CGRect rect) {
  View::initWithFrame(rect);
  replaceSettings();
  return this;
}

void BackdropView::replaceSettings() {
  settings = Strong<BackdropSettings>::adopt(
      static_cast<BackdropSettings*>(class_createInstance(&objc_class__UIBackdropViewSettings, 0)));
}

BackdropView* BackdropView::make(CGRect frame) {
  auto* view = static_cast<BackdropView*>(class_createInstance(&objc_class__UIBackdropView, 0));
  return view->initWithFrame(frame);
}

}  // namespace host
