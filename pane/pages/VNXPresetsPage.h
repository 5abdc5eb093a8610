// Sets of colours to start from.
#pragma once

#include "pages/VNXPage.h"

struct VNXPresetsPage : objc::View<VNXPresetsPage, VNXPage> {
  /// Asks whether the row's preset shall replace the present colours.
  static constexpr Message<"varnixChoose:", void(PSSpecifier*)> choose{};
  static constexpr Message<"varnixApply:", void(PSSpecifier*)> chosen{};
};
