// What the two formats share.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ImageIO/decode.h"

namespace host::imageio {

inline constexpr char kDamaged[] = "the image is truncated or damaged";
inline constexpr char kUnsupported[] = "the image is of a kind that is not supported";

/// The bytes begin with the format's signature. A reason is written where nothing comes back.
std::optional<Picture> decodePng(std::string_view bytes, std::string& why);
std::optional<Picture> decodeJpeg(std::string_view bytes, std::string& why);

/// Why a picture of that size is refused; empty where it is not.
std::string sizeProblem(std::uint64_t width, std::uint64_t height);

/// Whether the size is allowed and agrees with the bytes.
bool isConsistent(const Picture& picture);

inline constexpr std::size_t kBytesPerPixel = 4;
inline std::size_t bytesPerRow(const Picture& picture) { return picture.width * kBytesPerPixel; }

}  // namespace host::imageio
