// What the studio's page hands on of the theme, besides its file.
#pragma once

#include <optional>
#include <string>

#include "studio/painter.h"
#include "studio/session.h"

namespace varnix::cli {

/// The text that the settings pane takes. Throws Failure if nothing is set, or if text cannot hold
/// a value.
std::string exportedText(Session& session);

/// A page that needs nothing else, and one picture of all screens. They show the theme's own
/// wallpapers and icons. `file` is the theme's, if it has one. Throw Failure as above.
std::string exportedPage(Session& session, Painter& painter,
                         const std::optional<std::string>& file);
std::string exportedSheet(Session& session, Painter& painter,
                          const std::optional<std::string>& file);

}  // namespace varnix::cli
