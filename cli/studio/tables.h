// What can be set, for the page's controls.
#pragma once

#include "common/json_forward.h"

namespace varnix::cli {

/// {"general": [SETTING], "elements": [{"key", "title", "type": SETTING, "color": SETTING}],
/// "forms": [{"prefix", "suffix", "kind", "meaning"}], "presets": [{"name", "dye", "settings"}],
/// "screens": [{"id", "title", "bundle"}], "applications": [{"id", "title"}]}, with a SETTING as
/// {"key", "kind", "fallback", "meaning"}.
Json tablesJson();

}  // namespace varnix::cli
