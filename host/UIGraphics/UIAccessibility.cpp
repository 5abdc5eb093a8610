#include "UIGraphics/UIAccessibility.h"

#include <atomic>

#include "platform/UIKit.h"

namespace host {

namespace {

std::atomic<bool> enhancedContrast = false;

}  // namespace

void setEnhancedBackgroundContrast(bool enhanced) { enhancedContrast = enhanced; }

}  // namespace host

extern "C" HOST_EXPORT unsigned char _UIAccessibilityEnhanceBackgroundContrast() {
  return host::enhancedContrast ? 1 : 0;
}
