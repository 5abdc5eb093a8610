// The stand-in's own: what a person chooses under Accessibility, for those who act by messages.
#include "UIGraphics/UIAccessibility.h"
#include "objc/define.h"
#include "platform/UIKit.h"

namespace {

void setEnhancedBackgroundContrast(bool enhanced) { host::setEnhancedBackgroundContrast(enhanced); }

}  // namespace

OBJC_CATEGORY_OF_OWN(
    UIApplication, Accessibility,
    objc::ClassMethod<"_setEnhancedBackgroundContrast:", &setEnhancedBackgroundContrast>)
