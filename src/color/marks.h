// The marks on colours: which are ours, and which of those come from an album. The library adds
// them to UIColor.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

inline constexpr objc::Message<UIColor, "isVarnixColor", bool()> isVarnixColor{};
inline constexpr objc::Message<UIColor, "setIsVarnixColor:", void(bool)> setIsVarnixColor{};
inline constexpr objc::Message<UIColor, "isVarnixAlbumColor", bool()> isVarnixAlbumColor{};
inline constexpr objc::Message<UIColor, "setIsVarnixAlbumColor:", void(bool)>
    setIsVarnixAlbumColor{};

}  // namespace varnix::Color
