// Which system the stand-in is.
#pragma once

namespace host {

/// What kCFCoreFoundationVersionNumber is on devices with 9.3.
inline constexpr double kSystemVersion = 1280.38;

}  // namespace host
