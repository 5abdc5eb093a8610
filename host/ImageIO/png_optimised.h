// PNG in the form that device applications carry: a chunk CgBI comes first, the pixels are blue,
// green, red, premultiplied by alpha, and the compressed data has neither zlib's header nor its
// checksum.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace host::imageio {

/// Whether CgBI follows the signature.
bool isOptimised(std::string_view bytes);

/// The offset of the header chunk, which the format requires to be first.
std::size_t headerAt(std::string_view bytes);

/// Gives the file piece by piece in the form of an ordinary PNG, up to a truncated chunk. The zlib
/// checksum at the end of the data is missing; a chunk's wrong checksum stays wrong. Nothing here
/// owns memory, since the receiver of a piece may leave by a jump.
void handOutAsOrdinary(std::string_view bytes, void (*take)(void* taker, std::string_view piece),
                       void* taker);

/// Converts premultiplied RGBA to straight alpha.
void divideByAlpha(std::uint8_t* rgba, std::size_t width);

}  // namespace host::imageio
