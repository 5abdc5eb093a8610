// The row that takes back what was replaced last.
#pragma once

#include "rows/rows.h"

namespace varnix::pane {

/// Nothing if there is nothing to take back.
void addUndo(Rows& rows);

}  // namespace varnix::pane
