// The data for the gallery's page.
#pragma once

#include "common/json_forward.h"
#include "preview/sheet.h"

namespace varnix::cli {

/// In writeGallery's form.
Json galleryJson(const std::vector<Tab>& tabs, const std::vector<AskedTab>& asked,
                 const Materials& materials, bool follows);

}  // namespace varnix::cli
