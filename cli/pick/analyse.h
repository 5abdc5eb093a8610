// One image's colours.
#pragma once

#include "pick/analysis.h"
#include "picker/CQColorPicker.h"

namespace varnix::cli::pick {

/// What the picker finds in the file's image. If there is none, the error says why. Throws Failure
/// if no pass can be drawn.
Analysis analyse(CQColorPicker* picker, const std::string& file, const Request& request);

}  // namespace varnix::cli::pick
