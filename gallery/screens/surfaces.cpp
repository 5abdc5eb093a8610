#include "gallery/screens/surfaces.h"

#include "gallery/screens/screen.h"

namespace varnix::screens {

namespace {

struct Row {
  std::string_view answer;  ///< or its end, if it begins with a blank
  const char* surface;
};

constexpr char kNavigationBar[] = "UINavigationBar tintColor";
/// Cells and sliders take a plain view's.
constexpr char kView[] = "UIView tintColor";
constexpr char kSwitch[] = "UISwitch onTintColor";

constexpr Row kRows[] = {
    {"status bar", "UIStatusBarNewUIStyleAttributes foregroundColor"},
    {"navigation bar", kNavigationBar},
    {"bar", kNavigationBar},
    {"segmented control", kSegmentedSurface},
    {"button", "UIButton tintColor"},
    {"cell", kView},
    {"slider", kView},
    {"tab bar", "UITabBar tintColor"},
    {"switch on", kSwitch},
    {"switch outline", "UISwitch tintColor"},
    {"link", "IGStringStyle linkColor"},
    {"twitterColorTextLink", "UIColor twitterColorTextLink"},
    {"twitterColorTextUsername", "UIColor twitterColorTextUsername"},
    {"twitterColorTextTimestamp", "UIColor twitterColorTextTimestamp"},
    {"twitterColorTextSocial", "UIColor twitterColorTextSocial"},
    {"twitterColorTextLinkSubtle", "UIColor twitterColorTextLinkSubtle"},
    {"twitterColorActivityTitle", "UIColor twitterColorActivityTitle"},
    {"twitterColorChangeTrendsLocationText", "UIColor twitterColorChangeTrendsLocationText"},
    // Of a row of settings.
    {" title colour", kView},
    {" tick", kView},
    {" switch", kSwitch},
};

}  // namespace

const char* surfaceOfAnswer(std::string_view answer) {
  for (const Row& row : kRows) {
    const bool isEnd = row.answer.front() == ' ';
    if (isEnd ? answer.ends_with(row.answer) : answer == row.answer) return row.surface;
  }
  return nullptr;
}

const char* surfaceOf(const Screen& screen, std::string_view answer) {
  if (const char* surface = surfaceOfAnswer(answer)) return surface;
  if (answer == "badge") return kBadgeSurface;
  if (answer.starts_with("balloon ")) return kBalloonSurface;
  if (answer.starts_with("keyboard")) return kKeyboardSurface;
  if (!answer.starts_with("tint")) return nullptr;
  if (&screen == &kControlCenter) return kControlCenterSurface;
  if (&screen == &kNotificationCenter) return kNotificationCenterSurface;
  return &screen == &kVolume ? kVolumeSurface : nullptr;
}

}  // namespace varnix::screens
