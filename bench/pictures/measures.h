// The parts of the measurement. Each reports rows of the table.
#pragma once

#include <string>

namespace bench {

/// One pass on a 32 x 32 image, compared with the bare work and with a pass that makes everything
/// again, and the memory left by 2,000 passes. Reports nothing and returns false if there is no
/// OpenGL ES or the bare pass draws something else.
bool measurePass();

/// The important colour of 512 x 512 pixels, and the steps to it.
void measureImportantColor();

/// Pictures of 64 million pixels, from file to squeeze.
void measureLargeImages();

/// A recoloured image of 120 x 120.
void measureRecolor();

/// Our picker beside others, on a few pictures; only prints a line if the others are not installed.
/// The first folder has the other pickers, the second has photographs.
void measurePickers(const std::string& pickers, const std::string& pictures);

}  // namespace bench
