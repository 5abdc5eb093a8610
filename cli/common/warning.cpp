#include "common/warning.h"

#include <iostream>

#include "common/escaped.h"

namespace varnix::cli {

void warn(const std::string& text) {
  std::cout.flush();
  std::cerr << "varnix: " + escaped(text) + '\n';
}

}  // namespace varnix::cli
