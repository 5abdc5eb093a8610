// The surfaces whose colours the screens show, as "CLASS PROPERTY".
#pragma once

#include <string_view>

namespace varnix::screens {

// On these something is written.
inline constexpr char kBadgeSurface[] = "SBIconBadgeView _checkoutBackgroundImage";
inline constexpr char kBalloonSurface[] = "CKGradientView colors";
inline constexpr char kControlCenterSurface[] = "SBControlCenterContentContainerView colorTint";
inline constexpr char kKeyboardSurface[] = "UIKeyboard backgroundColor";
inline constexpr char kNotificationCenterSurface[] = "SBNotificationCenterViewController colorTint";
inline constexpr char kSegmentedSurface[] = "UISegmentedControl tintColor";
inline constexpr char kVolumeSurface[] = "SBHUDView colorTint";

struct Screen;

/// The surface that answers that colour of text and symbols; null for other answers.
const char* surfaceOfAnswer(std::string_view answer);
/// The same, and the surface below what is written, for a screen's answer.
const char* surfaceOf(const Screen& screen, std::string_view answer);

}  // namespace varnix::screens
