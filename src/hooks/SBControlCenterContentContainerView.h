// Control Centre's backdrop.
#pragma once

#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::control_center {

using View = SBControlCenterContentContainerView;

/// Tints the backdrop.
inline constexpr objc::Message<View, "colorBackdrop", void()> colorBackdrop{};
void tint(View* self, SEL cmd);

extern objc::Hook<View::contrastDidChange> contrastDidChange;
void dyedContrastDidChange(View* self, SEL cmd, NSObject* notification);

extern objc::Hook<View::willPresent> willPresent;
void dyedWillPresent(View* self, SEL cmd);

extern objc::Hook<View::updateBackground> updateBackground;
void dyedUpdateBackground(View* self, SEL cmd);

extern objc::Hook<UIView::initWithFrame, View> initWithFrame;
UIView* dyedInitWithFrame(View* self, SEL cmd, CGRect frame);

extern objc::Hook<NSObject::dealloc, View> dealloc;
void dyedDealloc(View* self, SEL cmd);

}  // namespace varnix::control_center
