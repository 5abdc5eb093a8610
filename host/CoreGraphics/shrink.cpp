#include "CoreGraphics/shrink.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace host {

namespace {

const std::uint8_t* bytesOf(const PixelRows& rows, std::size_t y) {
  return reinterpret_cast<const std::uint8_t*>(rows.pixels + y * rows.stride);
}
std::uint8_t* bytesOf(const PixelRows& rows, std::size_t x, std::size_t y) {
  return reinterpret_cast<std::uint8_t*>(rows.pixels + y * rows.stride + x);
}

// --- whole ratios: integers ----------------------------------------------------------------------

/// Rows whose sum of bytes still fits 16 bits.
constexpr std::size_t kRowsAtOnce = 257;

void addRow(std::uint16_t* sums, const std::uint8_t* row, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i) sums[i] = static_cast<std::uint16_t>(sums[i] + row[i]);
}

void shrinkWhole(const PixelRows& from, const PixelRows& to) {
  const std::size_t across = from.width / to.width;
  const std::size_t down = from.height / to.height;
  const std::uint64_t count = std::uint64_t{across} * down;
  std::vector<std::uint16_t> sums(from.width * 4);
  std::vector<std::uint64_t> totals(to.width * 4);
  for (std::size_t y = 0; y < to.height; ++y) {
    std::fill(totals.begin(), totals.end(), 0);
    for (std::size_t done = 0; done < down; done += kRowsAtOnce) {
      std::fill(sums.begin(), sums.end(), 0);
      const std::size_t rows = std::min(kRowsAtOnce, down - done);
      for (std::size_t row = 0; row < rows; ++row)
        addRow(sums.data(), bytesOf(from, y * down + done + row), sums.size());
      for (std::size_t x = 0; x < from.width; ++x) {
        for (std::size_t c = 0; c < 4; ++c) totals[x / across * 4 + c] += sums[x * 4 + c];
      }
    }
    std::uint8_t* out = bytesOf(to, 0, y);
    for (std::size_t i = 0; i < totals.size(); ++i)
      out[i] = static_cast<std::uint8_t>((totals[i] + count / 2) / count);
  }
}

// --- any ratio: weights --------------------------------------------------------------------------

/// The part of a pixel that a span from `begin` to `end` covers.
float covered(std::size_t pixel, double begin, double end) {
  const auto at = static_cast<double>(pixel);
  return static_cast<float>(std::min(at + 1, end) - std::max(at, begin));
}

struct Span {
  double begin, end;
  std::size_t first, last;  ///< the pixels touched, last excluded
};

Span spanOf(std::size_t index, std::size_t from, std::size_t to) {
  const double ratio = static_cast<double>(from) / static_cast<double>(to);
  const double begin = ratio * static_cast<double>(index);
  const double end = std::min(ratio * static_cast<double>(index + 1), static_cast<double>(from));
  const auto last = static_cast<std::size_t>(std::ceil(end));
  return {begin, end, static_cast<std::size_t>(begin), std::min(last, from)};
}

void addRow(float* sums, const std::uint8_t* row, std::size_t bytes, float weight) {
  for (std::size_t i = 0; i < bytes; ++i) sums[i] += weight * static_cast<float>(row[i]);
}

void shrinkWeighted(const PixelRows& from, const PixelRows& to) {
  std::vector<float> sums(from.width * 4);
  for (std::size_t y = 0; y < to.height; ++y) {
    const Span rows = spanOf(y, from.height, to.height);
    std::fill(sums.begin(), sums.end(), 0.0F);
    for (std::size_t row = rows.first; row < rows.last; ++row)
      addRow(sums.data(), bytesOf(from, row), sums.size(), covered(row, rows.begin, rows.end));
    for (std::size_t x = 0; x < to.width; ++x) {
      const Span columns = spanOf(x, from.width, to.width);
      double total[4] = {};
      for (std::size_t column = columns.first; column < columns.last; ++column) {
        const float weight = covered(column, columns.begin, columns.end);
        for (std::size_t c = 0; c < 4; ++c)
          total[c] += static_cast<double>(weight) * static_cast<double>(sums[column * 4 + c]);
      }
      const double area = (rows.end - rows.begin) * (columns.end - columns.begin);
      std::uint8_t* out = bytesOf(to, x, y);
      for (std::size_t c = 0; c < 4; ++c)
        out[c] = static_cast<std::uint8_t>(std::min(total[c] / area + 0.5, 255.0));
    }
  }
}

}  // namespace

void shrink(const PixelRows& from, const PixelRows& to) {
  const bool isWhole = from.width % to.width == 0 && from.height % to.height == 0;
  return isWhole ? shrinkWhole(from, to) : shrinkWeighted(from, to);
}

}  // namespace host
