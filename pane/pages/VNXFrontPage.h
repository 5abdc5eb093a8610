// The first page of the settings.
#pragma once

#include "pages/VNXPage.h"

struct VNXFrontPage : objc::View<VNXFrontPage, VNXPage> {
  // What its buttons do. Each is given its row.
  static constexpr Message<"varnixCopy:", void(PSSpecifier*)> copySettings{};
  static constexpr Message<"varnixPaste:", void(PSSpecifier*)> pasteSettings{};
  static constexpr Message<"varnixRestart:", void(PSSpecifier*)> restart{};
  static constexpr Message<"varnixMail:", void(PSSpecifier*)> mail{};
  static constexpr Message<"varnixProfile:", void(PSSpecifier*)> profile{};
  // What happens once the user has confirmed it.
  static constexpr Message<"varnixImport:", void(NSDictionary*)> importConfirmed{};
  static constexpr Message<"varnixRestartNow:", void(NSObject*)> restartConfirmed{};
};
