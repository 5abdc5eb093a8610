#include "warning.h"

#include <iostream>

#include "escaped.h"

namespace varnix::cli {

void warn(const std::string& text) {
  std::cout.flush();
  std::cerr << "varnix: " + escaped(text) + '\n';
}

}  // namespace varnix::cli
