// What the page asks and orders.
#pragma once

#include <optional>
#include <string>

#include "studio/material_store.h"
#include "studio/other_theme.h"
#include "studio/painter.h"
#include "studio/reader.h"
#include "studio/session.h"
#include "studio/web/web.h"

namespace varnix::cli {

/// What the page works on.
struct Workplace {
  Session& session;
  Painter& painter;
  MaterialStore& materials;
  Reader& reader;
  OtherTheme& other;
  std::string dropped;              ///< a folder for pictures that are only looked at
  std::optional<std::string> file;  ///< the theme's
};

/// Answers a request of the page. Status 400 has the reason as {"failure": TEXT}.
web::Response answerPage(const web::Request& request, const Workplace& workplace);

}  // namespace varnix::cli
