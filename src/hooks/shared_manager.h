// The process's one manager, and the questions that replacements ask it. They are messages, so that
// others can replace the manager's methods.
#pragma once

#include "prefs/VNXManager.h"

namespace varnix {

/// Set once, before any replacement is installed.
extern VNXManager* sharedManager;

inline bool inSpringBoard() { return send(sharedManager, VNXManager::isSpringBoard); }
inline UIColor* dye() { return send(sharedManager, VNXManager::dye); }

/// The colour types of an element. Most elements follow the dye for any other type.
inline constexpr NSInteger kFollowsTheDye = 0;
inline constexpr NSInteger kKeepsItsLook = 1;
inline constexpr NSInteger kOwnColor = 2;

}  // namespace varnix
