// The drawing of screens is a module of its own, loaded only by those who draw: other commands do
// without the libraries behind it.
#pragma once

#include <span>

#include "gallery/screens/screen.h"

namespace varnix::screens {

struct Module {
  std::span<const Screen* const> screens;  ///< in the order in which they are shown
  /// PNG or JPEG, shrunk as far as it still covers so many pixels. Says in problem what is wrong
  /// with a picture of which a part is there. Throws std::runtime_error.
  Surface (*readPicture)(const std::string& file, const Pixels& covered, std::string& problem);
  Color (*meanColor)(const Surface& picture);
  /// The finished picture as a PNG file. From any thread.
  std::string (*draw)(std::span<const Layer> layers, const Scene& scene, double scale);
};

inline constexpr char kModuleFile[] = "libvarnix-screens.so";
inline constexpr char kModuleEntry[] = "varnix_screens";
using ModuleEntry = const Module* (*)();

}  // namespace varnix::screens
