// What rows are, by number and by name.
#pragma once

#include "platform/Preferences.h"

namespace host {

struct CellType {
  const char* name;       ///< as property lists write it
  const char* cellClass;  ///< the cell of such a row, unless the row names another
  bool showsValue;        ///< at the right, as a text
  bool opens;             ///< marked as leading to a page
};

/// Nil for a number that is no type.
const CellType* cellType(PSCellType type);
/// -1 for a name that is none.
PSCellType cellTypeNamed(NSString* name);

}  // namespace host
