// The rows about colours, which the first page and an application's page share.
#pragma once

#include "rows/rows.h"
#include "settings/scope.h"

namespace varnix::pane {

/// A group with the kind of the dye and its own colour; begun by the caller.
void addDye(Rows& rows, const Scope& scope);

/// A row for each element, which leads to its page.
void addElements(Rows& rows, const Scope& scope);

}  // namespace varnix::pane
