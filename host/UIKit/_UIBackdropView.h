// A view that blurs what is behind it, and the settings of its tint.
#pragma once

#include "UIKit/UIView.h"

namespace host {

/// Plain storage: the renderer would use it.
struct BackdropSettings : NSObject {
  Strong<UIColor> colorTint;
  CGFloat colorTintAlpha;
  CGFloat colorTintMaskAlpha;
  bool requiresColorStatistics;
  bool usesColorTintView;
};

struct BackdropView : View {
  BackdropView* initWithFrame(CGRect rect);
  /// The platform does so whenever it rebuilds the background: do not keep the old object.
  HOST_EXPORT void replaceSettings();

  HOST_EXPORT static BackdropView* make(CGRect frame);

  Strong<BackdropSettings> settings;
};

}  // namespace host
