// Colours in YUV space.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// Brightness 0 to 1 by BT.601, from the components that rgb() gives: a grey and nil measure 0.
float yComponent(UIColor* color);
float uComponent(UIColor* color);
float vComponent(UIColor* color);

/// Of the three.
float yuvSquareDistance(UIColor* to, UIColor* from);
float yuvDistance(UIColor* to, UIColor* from);

// What the library adds to UIColor, unless it already has methods of these names.
inline constexpr objc::ClassMessage<UIColor, "yComponentFromColor:", float(UIColor*)>
    yComponentFromColor{};
inline constexpr objc::ClassMessage<UIColor, "uComponentFromColor:", float(UIColor*)>
    uComponentFromColor{};
inline constexpr objc::ClassMessage<UIColor, "vComponentFromColor:", float(UIColor*)>
    vComponentFromColor{};
inline constexpr objc::ClassMessage<UIColor,
                                    "YUVSpaceDistanceToColor:fromColor:", float(UIColor*, UIColor*)>
    YUVSpaceDistance{};
inline constexpr objc::ClassMessage<UIColor, "YUVSpaceSquareDistanceToColor:fromColor:",
                                    float(UIColor*, UIColor*)>
    YUVSpaceSquareDistance{};

}  // namespace varnix::Color
