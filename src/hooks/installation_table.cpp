#include "hooks/installation_table.h"

#include <cstring>

#include "hooks/CKGradientView.h"
#include "hooks/IGStringStyle.h"
#include "hooks/SBControlCenterContentContainerView.h"
#include "hooks/SBHUDView.h"
#include "hooks/SBIconBackgroundViews.h"
#include "hooks/SBIconBadgeView.h"
#include "hooks/SBNotificationCenterViewController.h"
#include "hooks/UIColor_twitter.h"
#include "hooks/UIKeyboard.h"
#include "hooks/UIStatusBarNewUIStyleAttributes.h"
#include "hooks/UISwitch.h"
#include "hooks/UIView.h"
#include "hooks/track_observer.h"
#include "platform/CoreFoundation.h"

namespace varnix {

using objc::addRow;
using objc::installHook;
using objc::MethodKind;
using objc::Replacement;

namespace {

constexpr Replacement kInterface[] = {
    {"UIStatusBarNewUIStyleAttributes", "initWithRequest:backgroundColor:foregroundColor:",
     MethodKind::instance, installHook<status_bar::init, status_bar::dyedInit>},
    {"UIView", "tintColor", MethodKind::instance,
     installHook<view::tintColor, view::dyedTintColor>},
    {"UIView", "setTintColor:", MethodKind::instance,
     installHook<view::setTintColor, view::dyedSetTintColor>},
    {"UISwitch", "layoutSubviews", MethodKind::instance,
     installHook<switches::layoutSubviews, switches::dyedLayoutSubviews>},
    {"UISwitch", "setOnTintColor:", MethodKind::instance,
     installHook<switches::setOnTintColor, switches::dyedSetOnTintColor>},
    {"UISwitch", "setTintColor:", MethodKind::instance,
     installHook<switches::setTintColor, switches::dyedSetTintColor>},
    {"UIKeyboard", "initWithFrame:", MethodKind::instance,
     installHook<keyboard::initWithFrame, keyboard::dyedInitWithFrame>},
    {"UIKBRenderConfig", "lightKeyboard", MethodKind::instance,
     installHook<keyboard::lightKeyboard, keyboard::dyedLightKeyboard>},
};

constexpr Replacement kInstagram[] = {
    {"IGStringStyle", "linkColor", MethodKind::instance,
     installHook<instagram::linkColor, instagram::dyedLinkColor>},
    {"IGStringStyle", "setLinkColor:", MethodKind::instance,
     installHook<instagram::setLinkColor, instagram::dyedSetLinkColor>},
};

constexpr Replacement kMessages[] = {
    {"CKGradientView", "colors", MethodKind::instance,
     installHook<balloons::colors, balloons::dyedColors>},
};

template <objc::FixedString Name>
constexpr Replacement twitterRow{"UIColor", objc::kStored<Name>.text, MethodKind::classMethod,
                                 installHook<twitter::color<Name>, twitter::dyedColor>};

constexpr Replacement kTwitter[] = {
    twitterRow<"twitterColorTextLink">,
    twitterRow<"twitterColorTextUsername">,
    twitterRow<"twitterColorTextTimestamp">,
    twitterRow<"twitterColorTextSocial">,
    twitterRow<"twitterColorTextLinkSubtle">,
    twitterRow<"twitterColorActivityTitle">,
    twitterRow<"twitterColorChangeTrendsLocationText">,
};

constexpr Replacement kSpringBoard[] = {
    {"SBControlCenterContentContainerView", "colorBackdrop", MethodKind::addition,
     addRow<control_center::colorBackdrop, "v@:">},
    {"SBControlCenterContentContainerView",
     "_accessibilityBackgroundContrastDidChange:", MethodKind::instance,
     installHook<control_center::contrastDidChange, control_center::dyedContrastDidChange>},
    {"SBControlCenterContentContainerView", "controlCenterWillPresent", MethodKind::instance,
     installHook<control_center::willPresent, control_center::dyedWillPresent>},
    {"SBControlCenterContentContainerView", "_updateBackground", MethodKind::instance,
     installHook<control_center::updateBackground, control_center::dyedUpdateBackground>},
    {"SBControlCenterContentContainerView", "initWithFrame:", MethodKind::instance,
     installHook<control_center::initWithFrame, control_center::dyedInitWithFrame>},
    {"SBControlCenterContentContainerView", "dyeTrackChanged:", MethodKind::addition,
     addRow<dyeTrackChanged, "v@:@">},
    {"SBControlCenterContentContainerView", "dealloc", MethodKind::instance,
     installHook<control_center::dealloc, control_center::dyedDealloc>},
    {"SBNotificationCenterViewController", "colorBackdrop", MethodKind::addition,
     addRow<notification_center::colorBackdrop, "v@:">},
    {"SBNotificationCenterViewController", "hostWillPresent", MethodKind::instance,
     installHook<notification_center::hostWillPresent, notification_center::dyedHostWillPresent>},
    {"SBNotificationCenterViewController", "initWithNibName:bundle:", MethodKind::instance,
     installHook<notification_center::initWithNibName, notification_center::dyedInitWithNibName>},
    {"SBNotificationCenterViewController", "dyeTrackChanged:", MethodKind::addition,
     addRow<dyeTrackChanged, "v@:@">},
    {"SBNotificationCenterViewController", "dealloc", MethodKind::instance,
     installHook<notification_center::dealloc, notification_center::dyedDealloc>},
    {"SBNotificationCenterViewController", "_backgroundContrastDidChange:", MethodKind::instance,
     installHook<notification_center::contrastDidChange,
                 notification_center::dyedContrastDidChange>},
    {"SBFolderIconBackgroundView", "setWallpaperColor:phase:", MethodKind::instance,
     installHook<icon_background::setWallpaperColor<SBFolderIconBackgroundView>,
                 icon_background::dyedSetWallpaperColor<SBFolderIconBackgroundView>>},
    {"SBIconBlurryBackgroundView", "setWallpaperColor:phase:", MethodKind::instance,
     installHook<icon_background::setWallpaperColor<SBIconBlurryBackgroundView>,
                 icon_background::dyedSetWallpaperColor<SBIconBlurryBackgroundView>>},
    {"SBIconBlurryBackgroundView",
     "setWallpaperBackgroundRect:forContents:withFallbackColor:", MethodKind::instance,
     installHook<icon_background::setWallpaperBackgroundRect,
                 icon_background::dyedSetWallpaperBackgroundRect>},
    {"SBIconBadgeView", "_checkoutBackgroundImage", MethodKind::classMethod,
     installHook<badge::checkoutBackgroundImage, badge::dyedCheckoutBackgroundImage>},
    {"SBHUDView", "layoutSubviews", MethodKind::instance,
     installHook<hud::layoutSubviews, hud::dyedLayoutSubviews>},
};

constexpr std::int32_t kErrorLevel = 3;

void reportMissing(const char* className, int line) {
  NSString* message = NSString::stringWithFormat("logos: nil class %s"_ns, className);
  CFLog(kErrorLevel, "[%s: %s:%d] %s: %@"_ns, "Varnix2", "Tweak", line, "ERROR", message);
}

Class target(const Replacement& row) {
  return row.kind == MethodKind::classMethod ? objc_getMetaClass(row.className)
                                             : objc_getClass(row.className);
}

}  // namespace

constinit const Group kInterfaceGroup{910, kInterface};
constinit const Group kInstagramGroup{913, kInstagram};
constinit const Group kMessagesGroup{916, kMessages};
constinit const Group kTwitterGroup{919, kTwitter};
constinit const Group kSpringBoardGroup{938, kSpringBoard};

void install(const Group& group) {
  const Replacement* previous = nullptr;
  Class cls = nullptr;
  for (const Replacement& row : group.rows) {
    if (previous == nullptr || std::strcmp(previous->className, row.className) != 0)
      cls = target(row);
    previous = &row;
    if (cls != nullptr) {
      row.install(cls, sel_registerName(row.selector));
    } else if (row.kind != MethodKind::addition) {
      reportMissing(row.className, group.logLine);
    }
  }
}

}  // namespace varnix
