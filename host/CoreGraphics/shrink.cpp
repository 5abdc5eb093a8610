#include "CoreGraphics/shrink.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace host {

namespace {

/// How the pixels along one axis are divided: in whole numbers, so that every mean is exact.
class Axis {
 public:
  Axis(std::size_t from, std::size_t to) {
    const std::size_t common = std::gcd(from, to);
    pixel_ = static_cast<std::uint32_t>(to / common);
    span_ = static_cast<std::uint32_t>(from / common);
  }

  /// The weight of a whole pixel of the source.
  std::uint32_t pixel() const { return pixel_; }
  /// The total weight of the source's pixels behind one pixel of the result.
  std::uint32_t span() const { return span_; }

  /// The source's pixels behind pixel `index` of the result: one in part, whole ones, one in part.
  struct Share {
    std::size_t first;
    std::uint32_t before;  ///< weight of the pixel before `first`
    std::size_t last;      ///< excluded
    std::uint32_t after;   ///< weight of pixel `last`
  };
  Share share(std::size_t index) const {
    const std::uint64_t begin = std::uint64_t{index} * span_;
    const std::uint64_t end = begin + span_;
    const std::uint64_t first = (begin + pixel_ - 1) / pixel_;
    const std::uint64_t last = end / pixel_;
    return {first, static_cast<std::uint32_t>(first * pixel_ - begin), last,
            static_cast<std::uint32_t>(end - last * pixel_)};
  }

 private:
  std::uint32_t pixel_, span_;
};

const std::uint8_t* rowOf(const PixelRows& rows, std::size_t y) {
  return reinterpret_cast<const std::uint8_t*>(rows.pixels + y * rows.stride);
}

// --- rows, summed column by column ---------------------------------------------------------------

/// The number of rows whose byte sums still fit 16 bits.
constexpr std::size_t kRowsAtOnce = 256;

/// The sums of each column, by channel.
struct Columns {
  explicit Columns(std::size_t width) : sums(width * 4), whole(width * 4) {}

  std::vector<std::uint32_t> sums;
  std::vector<std::uint16_t> whole;  ///< sums of whole rows: 16 bits, for speed
};

/// For at most kRowsAtOnce rows.
void addWholeRows(Columns& columns, const PixelRows& from, std::size_t first, std::size_t count,
                  std::uint32_t weight) {
  const std::size_t bytes = columns.sums.size();
  std::uint16_t* whole = columns.whole.data();
  std::fill_n(whole, bytes, std::uint16_t{0});
  std::size_t row = first;
  // Four at a time, so that each sum is loaded and stored a quarter as often.
  for (; row + 4 <= first + count; row += 4) {
    const std::uint8_t* a = rowOf(from, row);
    const std::uint8_t* b = rowOf(from, row + 1);
    const std::uint8_t* c = rowOf(from, row + 2);
    const std::uint8_t* d = rowOf(from, row + 3);
    for (std::size_t i = 0; i < bytes; ++i)
      whole[i] = static_cast<std::uint16_t>(whole[i] + a[i] + b[i] + c[i] + d[i]);
  }
  for (; row < first + count; ++row) {
    const std::uint8_t* bytesOfRow = rowOf(from, row);
    for (std::size_t i = 0; i < bytes; ++i)
      whole[i] = static_cast<std::uint16_t>(whole[i] + bytesOfRow[i]);
  }
  for (std::size_t i = 0; i < bytes; ++i) columns.sums[i] += weight * whole[i];
}

/// The weights of a span add up to at most the source's height, so 32 bits hold a column's sum.
void addPartOfRow(Columns& columns, const PixelRows& from, std::size_t y, std::uint32_t weight) {
  const std::uint8_t* row = rowOf(from, y);
  for (std::size_t i = 0; i < columns.sums.size(); ++i) columns.sums[i] += weight * row[i];
}

// --- columns, summed pixel by pixel --------------------------------------------------------------

/// `Sum` must hold 255 times the weight of a whole pixel of the result.
template <class Sum>
void sumPixels(std::uint8_t* to, std::size_t width, const std::uint32_t* sums, const Axis& axis,
               double weight) {
  for (std::size_t x = 0; x < width; ++x, to += 4) {
    const Axis::Share share = axis.share(x);
    Sum total[4] = {};
    for (std::size_t column = share.first; column < share.last; ++column) {
      for (std::size_t c = 0; c < 4; ++c) total[c] += sums[column * 4 + c];
    }
    for (Sum& sum : total) sum *= axis.pixel();
    auto add = [&](std::size_t column, Sum part) {
      for (std::size_t c = 0; c < 4; ++c) total[c] += part * sums[column * 4 + c];
    };
    if (share.before != 0) add(share.first - 1, share.before);
    if (share.after != 0) add(share.last, share.after);
    // Division in double is exact enough: the weight has fewer than 31 bits, the result eight.
    for (std::size_t c = 0; c < 4; ++c)
      to[c] = static_cast<std::uint8_t>((static_cast<double>(total[c]) + weight / 2) / weight);
  }
}

}  // namespace

struct Shrinking::State {
  State(std::size_t width, std::size_t height, const PixelRows& target)
      : across(width, target.width), down(height, target.height), columns(width), to(target) {}

  /// One row of the result is complete.
  void finish() {
    const std::uint64_t weight = std::uint64_t{across.span()} * down.span();
    auto* row = reinterpret_cast<std::uint8_t*>(to.pixels + done * to.stride);
    const auto whole = static_cast<double>(weight);
    const bool fits32 = weight * 255 <= UINT32_MAX;
    if (fits32) sumPixels<std::uint32_t>(row, to.width, columns.sums.data(), across, whole);
    else sumPixels<std::uint64_t>(row, to.width, columns.sums.data(), across, whole);
    std::fill(columns.sums.begin(), columns.sums.end(), 0);
    ++done;
  }

  Axis across, down;
  Columns columns;
  PixelRows to;
  std::size_t added = 0;  ///< rows of the source
  std::size_t done = 0;   ///< rows of the result
};

Shrinking::Shrinking(std::size_t width, std::size_t height, const PixelRows& to)
    : state_(std::make_unique<State>(width, height, to)) {}
Shrinking::~Shrinking() = default;

void Shrinking::add(const PixelRows& rows) {
  State& state = *state_;
  const std::size_t end = state.added + rows.height;
  while (state.added < end && state.done < state.to.height) {
    // A span never lies inside one pixel, since the result is not larger than the source.
    const Axis::Share share = state.down.share(state.done);
    const std::size_t row = rows.height - (end - state.added);
    if (state.added < share.first) {
      addPartOfRow(state.columns, rows, row, share.before);
      ++state.added;
    } else if (state.added < share.last) {
      const std::size_t count =
          std::min({kRowsAtOnce, share.last - state.added, end - state.added});
      addWholeRows(state.columns, rows, row, count, state.down.pixel());
      state.added += count;
    } else {
      // The rest of it belongs to the next span.
      addPartOfRow(state.columns, rows, row, share.after);
      state.finish();
      continue;
    }
    if (state.added == share.last && share.after == 0) state.finish();
  }
}

void shrink(const PixelRows& from, const PixelRows& to) {
  Shrinking(from.width, from.height, to).add(from);
}

}  // namespace host
