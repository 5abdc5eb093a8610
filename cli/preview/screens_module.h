// The module that draws.
#pragma once

#include <string>
#include <vector>

#include "gallery/screens/module.h"

namespace varnix::cli {

/// Loads it at the first call; it stays. Throws Failure.
const varnix::screens::Module& screensModule();

/// The screens with these identifiers in the module's order, all where none is given. Throws
/// UsageError for an unknown one.
std::vector<const varnix::screens::Screen*> screensNamed(
    const std::vector<std::string>& identifiers);

/// A picture of the user's. Throws Failure.
varnix::screens::Surface pictureFrom(const std::string& file,
                                     const varnix::screens::Pixels& covered);

}  // namespace varnix::cli
