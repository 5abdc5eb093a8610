// Compares two pictures in files, pixel by pixel.
#pragma once

#include <string>
#include <string_view>

namespace varnix::drawing {

struct Difference {
  std::string what;    ///< "3 of 250125 pixels differ"; empty if none does
  std::string marked;  ///< the drawn one, pale, with those pixels in magenta, as a PNG file; empty
                       ///< where the sizes differ, or nothing does
};

/// Both are the bytes of a PNG or JPEG file. The kept one may be anything: what is wrong with it is
/// a difference. Throws std::runtime_error for a damaged drawn one.
Difference differenceOf(std::string_view drawn, std::string_view kept);

}  // namespace varnix::drawing
