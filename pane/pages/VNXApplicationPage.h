// The settings of one application.
#pragma once

#include "pages/VNXPage.h"

struct VNXApplicationPage : objc::View<VNXApplicationPage, VNXPage> {
  /// Makes the library compute the icon's colour anew.
  static constexpr Message<"varnixForgetIconColor:", void(PSSpecifier*)> forgetIconColor{};
};
