// A row's place in a table, for the code that hands it on.
#pragma once

#include "platform/Foundation.h"

struct NSIndexPath : objc::View<NSIndexPath, NSObject> {
  static constexpr ClassMessage<"indexPathForRow:inSection:", NSIndexPath*(NSInteger, NSInteger)>
      indexPathForRow{};
  static constexpr Message<"row", NSInteger()> row{};
  static constexpr Message<"section", NSInteger()> section{};
};
