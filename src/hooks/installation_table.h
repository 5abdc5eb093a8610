// What is replaced, in order: one row per method, one group per condition.
#pragma once

#include <span>

#include "objc/hook.h"

namespace varnix {

struct Group {
  /// The line number in the report of a missing class of this group.
  int logLine;
  std::span<const objc::Replacement> rows;
};

/// Status bar, tint, switches, keyboard: in processes with a UIView.
extern const Group kInterfaceGroup;
/// Links, in the Instagram application.
extern const Group kInstagramGroup;
/// Balloons, in processes with a CKColoredBalloonView.
extern const Group kMessagesGroup;
/// Text colours, in the Twitter client.
extern const Group kTwitterGroup;
/// Control Centre, Notification Centre, folders, badges, volume HUD.
extern const Group kSpringBoardGroup;

/// Replaces and adds the group's methods in order. A class is looked up just before its methods. If
/// it is missing, each method to be replaced gives one error line in the system log. A row that
/// would do harm is skipped silently, and recorded for those who ask (skipped.h).
void install(const Group& group);

}  // namespace varnix
