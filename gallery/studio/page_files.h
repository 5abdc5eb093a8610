// The files of the studio's page, stored in the program.
#pragma once

#include <string>
#include <string_view>

namespace varnix::cli::studio {

struct PageFile {
  const char* name;  ///< empty for the page itself
  const char* type;
  std::string_view bytes;
};

/// Nil if there is none of that name.
const PageFile* pageFile(std::string_view name);

}  // namespace varnix::cli::studio
