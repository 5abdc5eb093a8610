// Shared by the two formats.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "ImageIO/decode.h"

namespace host::imageio {

inline constexpr char kDamaged[] = "the image is truncated or damaged";
inline constexpr char kPartial[] = "the image is truncated or damaged: only a part of it is there";
inline constexpr char kUnsupported[] = "the image is of a kind that is not supported";

/// Like readRows, for bytes that begin with the format's signature.
bool readPng(std::string_view bytes, Rows& rows, std::string& problem);
bool readJpeg(std::string_view bytes, Rows& rows, std::string& problem);

/// Why a picture of that size is refused, with the limit; empty if it is not refused.
std::string sizeProblem(std::uint64_t width, std::uint64_t height, std::uint64_t longest);

/// For rows that are missing in a format without alpha, in which no pixel is transparent.
void makeOpaque(std::span<std::uint8_t> rgba);

/// Whether the size is allowed and agrees with the bytes.
bool isConsistent(const Picture& picture);

inline constexpr std::size_t kBytesPerPixel = 4;
inline std::size_t bytesPerRow(const Picture& picture) { return picture.width * kBytesPerPixel; }

}  // namespace host::imageio
