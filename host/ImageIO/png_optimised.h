// PNG in the form that device applications carry: a chunk CgBI comes first, the pixels are blue,
// green, red, premultiplied by alpha, and the compressed data has neither zlib's header nor its
// sum.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace host::imageio {

/// Behind the signature comes CgBI.
bool isOptimised(std::string_view bytes);

/// Where the header chunk begins that the format wants first.
std::size_t headerAt(std::string_view bytes);

/// Hands the file out piece by piece as an ordinary PNG reader takes it, until a chunk that is cut
/// short. The zlib sum is missing at the end of the data; a wrong sum of a chunk stays wrong.
/// Nothing here owns memory: the piece's taker may leave by a jump.
void handOutAsOrdinary(std::string_view bytes, void (*take)(void* taker, std::string_view piece),
                       void* taker);

/// Premultiplied colours of RGBA become straight ones.
void divideByAlpha(std::uint8_t* rgba, std::size_t width);

}  // namespace host::imageio
