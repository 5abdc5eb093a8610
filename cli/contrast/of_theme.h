// The legibility of a theme, asked of processes that this one forks.
#pragma once

#include <string>

#include "common/json_forward.h"
#include "gallery/materials/materials.h"
#include "preview/sheet.h"
#include "preview/tabs.h"

namespace varnix::cli {

/// Legibility's rows for a tab. This process must have a single thread. Throws Failure and
/// Interrupted.
Json legibilityOf(const Tab& tab, const AskedTab& asked, const Materials& materials, bool advises);

}  // namespace varnix::cli
