// Sets of colours to start from: the same that the settings pane offers.
#pragma once

#include <string>
#include <vector>

#include "settings/file.h"

namespace varnix::cli {

std::vector<std::string> presetNames();

/// A line for each: its name, the dye, and the elements that do not follow it.
void listPresets();

/// The settings of the preset of that name, in any case. Throws UsageError if there is none.
std::vector<Entry> entriesOfPreset(const std::string& name);

}  // namespace varnix::cli
