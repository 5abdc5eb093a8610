// The data for the gallery's page.
#pragma once

#include "common/json_forward.h"
#include "preview/sheet.h"

namespace varnix::cli {

struct PageChoice {
  bool follows = false;  ///< whether the page asks for later drawings
  bool advises = false;  ///< whether colours are looked for where something is too faint
};

/// In writeGallery's form.
Json galleryJson(const std::vector<Tab>& tabs, const std::vector<AskedTab>& asked,
                 const Materials& materials, const PageChoice& choice);

}  // namespace varnix::cli
