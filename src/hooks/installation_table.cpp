#include "hooks/installation_table.h"

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
#include "hooks/backdrop.h"
#include "hooks/track_observer.h"

namespace varnix {

using objc::added;
using objc::kNeedsFunction;
using objc::kNeedsMethod;
using objc::kNeedsVariable;
using objc::needs;
using objc::replaced;
using objc::Replacement;

namespace {

constexpr Replacement kInterface[] = {
    replaced<status_bar::init, status_bar::dyedInit>(),
    replaced<view::tintColor, view::dyedTintColor>(),
    replaced<view::setTintColor, view::dyedSetTintColor>(),
    replaced<switches::layoutSubviews, switches::dyedLayoutSubviews>(),
    replaced<switches::setOnTintColor, switches::dyedSetOnTintColor>(),
    replaced<switches::setTintColor, switches::dyedSetTintColor>(),
    replaced<keyboard::initWithFrame, keyboard::dyedInitWithFrame>(),
    replaced<keyboard::lightKeyboard, keyboard::dyedLightKeyboard>(),
};

constexpr Replacement kInstagram[] = {
    replaced<instagram::linkColor, instagram::dyedLinkColor>(),
    replaced<instagram::setLinkColor, instagram::dyedSetLinkColor>(),
};

constexpr Replacement kMessages[] = {
    replaced<balloons::colors, balloons::dyedColors>(),
};

template <objc::FixedString Name>
constexpr Replacement twitterRow = replaced<twitter::color<Name>, twitter::dyedColor>();

constexpr Replacement kTwitter[] = {
    twitterRow<"twitterColorTextLink">,
    twitterRow<"twitterColorTextUsername">,
    twitterRow<"twitterColorTextTimestamp">,
    twitterRow<"twitterColorTextSocial">,
    twitterRow<"twitterColorTextLinkSubtle">,
    twitterRow<"twitterColorActivityTitle">,
    twitterRow<"twitterColorChangeTrendsLocationText">,
};

namespace cc = control_center;
namespace nc = notification_center;
namespace ib = icon_background;

// What the replacements need besides the methods that they replace. Without it they would do harm.
constexpr auto kControlCenter = needs(kBackdropNeeds, kNeedsMethod<cc::View::backdropView>);
// Methods of ours that are sent: they are not added if the class has others of the same names.
constexpr auto kControlCenterTint = needs(kControlCenter, kNeedsMethod<cc::colorBackdrop>);
constexpr auto kControlCenterContrast =
    needs(kControlCenterTint,
          kNeedsFunction<_UIAccessibilityEnhanceBackgroundContrast,
                         "_UIAccessibilityEnhanceBackgroundContrast">,
          kNeedsVariable<cc::View, cc::View::accessibilityBackgroundView>);
constexpr auto kNotificationCenter =
    needs(kBackdropNeeds, kNeedsMethod<nc::Controller::backdropView>);
constexpr auto kNotificationCenterTint =
    needs(kNotificationCenter, kNeedsMethod<nc::colorBackdrop>);
constexpr auto kBadge = needs(kNeedsMethod<SBIconAccessoryImage::initWithImage>,
                              kNeedsMethod<SBIconAccessoryImage::countedMapKey>,
                              kNeedsMethod<SBIconAccessoryImage::setCountedMapKey>);
constexpr auto kHud = needs(kBackdropNeeds, kNeedsVariable<SBHUDView, SBHUDView::backdropView>);

constexpr Replacement kSpringBoard[] = {
    added<cc::colorBackdrop, cc::tint>(kControlCenter),
    replaced<cc::contrastDidChange, cc::dyedContrastDidChange>(kControlCenterContrast),
    replaced<cc::willPresent, cc::dyedWillPresent>(kControlCenterTint),
    replaced<cc::updateBackground, cc::dyedUpdateBackground>(kControlCenterTint),
    replaced<cc::initWithFrame, cc::dyedInitWithFrame>(kControlCenterTint),
    added<dyeTrackChanged<cc::View>, trackDidChange<cc::View, cc::colorBackdrop>>(
        kControlCenterTint),
    replaced<cc::dealloc, cc::dyedDealloc>(kControlCenterTint),
    added<nc::colorBackdrop, nc::tint>(kNotificationCenter),
    replaced<nc::hostWillPresent, nc::dyedHostWillPresent>(kNotificationCenterTint),
    replaced<nc::initWithNibName, nc::dyedInitWithNibName>(kNotificationCenterTint),
    added<dyeTrackChanged<nc::Controller>, trackDidChange<nc::Controller, nc::colorBackdrop>>(
        kNotificationCenterTint),
    replaced<nc::dealloc, nc::dyedDealloc>(kNotificationCenterTint),
    replaced<nc::contrastDidChange, nc::dyedContrastDidChange>(kNotificationCenterTint),
    replaced<ib::setWallpaperColor<SBFolderIconBackgroundView>,
             ib::dyedSetWallpaperColor<SBFolderIconBackgroundView>>(),
    replaced<ib::setWallpaperColor<SBIconBlurryBackgroundView>,
             ib::dyedSetWallpaperColor<SBIconBlurryBackgroundView>>(),
    replaced<ib::setWallpaperBackgroundRect, ib::dyedSetWallpaperBackgroundRect>(),
    replaced<badge::checkoutBackgroundImage, badge::dyedCheckoutBackgroundImage>(kBadge),
    replaced<hud::layoutSubviews, hud::dyedLayoutSubviews>(kHud),
};

}  // namespace

constinit const Group kInterfaceGroup{910, kInterface};
constinit const Group kInstagramGroup{913, kInstagram};
constinit const Group kMessagesGroup{916, kMessages};
constinit const Group kTwitterGroup{919, kTwitter};
constinit const Group kSpringBoardGroup{938, kSpringBoard};

}  // namespace varnix
