// Control Centre's backdrop.
#pragma once

#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::control_center {

using View = SBControlCenterContentContainerView;

void colorBackdrop(View* self, SEL cmd);

extern objc::Hook<void(View*, NSObject*)> contrastDidChange;
void dyedContrastDidChange(View* self, SEL cmd, NSObject* notification);

extern objc::Hook<void(View*)> willPresent;
void dyedWillPresent(View* self, SEL cmd);

extern objc::Hook<void(View*)> updateBackground;
void dyedUpdateBackground(View* self, SEL cmd);

extern objc::Hook<View*(View*, CGRect)> initWithFrame;
View* dyedInitWithFrame(View* self, SEL cmd, CGRect frame);

extern objc::Hook<void(View*)> dealloc;
void dyedDealloc(View* self, SEL cmd);

}  // namespace varnix::control_center
