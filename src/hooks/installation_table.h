// What is replaced, in which order: one row a method, one group a condition.
#pragma once

#include <span>

#include "objc/hook.h"

namespace varnix {

struct Group {
  /// The line that a missing class of this group is reported under.
  int logLine;
  std::span<const objc::Replacement> rows;
};

/// Status bar, tint, switches, keyboard: wherever there is a UIView.
extern const Group kInterfaceGroup;
/// Links, in the Instagram application.
extern const Group kInstagramGroup;
/// Balloons, wherever there is a CKColoredBalloonView.
extern const Group kMessagesGroup;
/// Text colours, in the Twitter client.
extern const Group kTwitterGroup;
/// Control Centre, Notification Centre, folders, badges, volume HUD.
extern const Group kSpringBoardGroup;

/// Replaces and adds the group's methods in order. A class is looked up just before its methods;
/// where it is missing, each of those to be replaced is one error line in the system log. What
/// would do harm is passed over without a word, and kept for who asks (skipped.h).
void install(const Group& group);

}  // namespace varnix
