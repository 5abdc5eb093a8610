// A small gallery for tests: two tabs of two screens, light and dark, and surfaces of every kind.
#pragma once

#include <filesystem>

#include "common/json_forward.h"

/// Draws its pictures into the folder. `stroke`, 0xrrggbb, is the colour of a stroke across the
/// dyed picture of Messages in the first tab.
varnix::cli::Json drawSampleGallery(const std::filesystem::path& folder,
                                    unsigned stroke = 0xffffff);
