// The parts of the measurement; each reports rows of the table.
#pragma once

#include <string>

namespace bench {

/// One pass on a 32 x 32 image against the bare work, against one that makes everything anew, and
/// what 2,000 of them leave in memory. No, and nothing, without OpenGL ES
/// or where the bare pass draws something else.
bool measurePass();

/// The important colour of 512 x 512 pixels, and its parts.
void measureImportantColor();

/// Pictures of 64 million pixels, from file to squeeze.
void measureLargeImages();

/// A recoloured image of 120 x 120.
void measureRecolor();

/// Ours beside other pickers, over a few pictures; nothing but a line where these are not
/// installed. They lie in that folder, and photographs in the other.
void measurePickers(const std::string& pickers, const std::string& pictures);

}  // namespace bench
