// What is wrong with an input, in words for the person who runs the build.
#pragma once

#include <stdexcept>

namespace varnix::device {

class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace varnix::device
