// One picture of all screens.
#pragma once

#include <span>
#include <string>

#include "gallery/screens/screen.h"

namespace varnix::screens {

struct SheetPicture {
  std::string title;
  std::string png;  ///< the file's bytes; drawn as large as a screen
};

/// The pictures in rows below the heading, each with its title, as a PNG file of one pixel a point.
/// Throws std::runtime_error for bytes that are no PNG file.
std::string contactSheet(const std::string& heading, std::span<const SheetPicture> pictures);

}  // namespace varnix::screens
