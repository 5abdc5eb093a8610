// The module that draws the screens.
#pragma once

#include <string>
#include <vector>

#include "gallery/screens/module.h"

namespace varnix::cli {

/// Loads the module at the first call; it stays loaded. Throws Failure.
const varnix::screens::Module& screensModule();

/// The screens with these identifiers, in the module's order; all if none is given. Throws
/// UsageError for an unknown one.
std::vector<const varnix::screens::Screen*> screensNamed(
    const std::vector<std::string>& identifiers);

/// A picture that the user gave. Throws Failure.
varnix::screens::Surface pictureFrom(const std::string& file,
                                     const varnix::screens::Pixels& covered);

}  // namespace varnix::cli
