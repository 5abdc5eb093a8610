// The size of the picture that the shader works on.
#pragma once

/// Pixels on each side of the squeezed image and of the frame.
inline constexpr int kTotalWidth = 32;
/// Pixels on each side of the quarter that counts.
inline constexpr int kProccesedWidth = 16;
