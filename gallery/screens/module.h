// The drawing of screens is a module of its own, loaded only by code that draws: other commands do
// without the libraries that it needs.
#pragma once

#include <span>

#include "drawing/difference.h"
#include "drawing/ink.h"
#include "gallery/screens/contact_sheet.h"
#include "gallery/screens/data_address.h"
#include "gallery/screens/screen.h"

namespace varnix::screens {

struct Module {
  std::span<const Screen* const> screens;  ///< in the order of display
  /// PNG or JPEG, shrunk as far as it still covers that many pixels. If only part of a picture is
  /// there, `problem` says what is wrong. Throws std::runtime_error.
  Surface (*readPicture)(const std::string& file, const Pixels& covered, std::string& problem);
  /// Of a finished picture and one that was kept.
  drawing::Difference (*differenceOf)(std::string_view drawn, std::string_view kept);
  Color (*meanColor)(const Surface& picture);
  /// The finished picture as a PNG file. May be called on any thread.
  std::string (*draw)(std::span<const Layer> layers, const Scene& scene, double scale,
                      Effort effort);
  /// The worst place of each dyed surface on the uppermost layer; on any thread.
  std::vector<drawing::Reading> (*read)(std::span<const Layer> layers, const Scene& scene);
  /// The surface, "CLASS PROPERTY", that gave a screen that answer; null if that is unknown.
  const char* (*surfaceOf)(const Screen& screen, std::string_view answer);
  /// For what is handed on. As in contact_sheet.h and data_address.h.
  std::string (*contactSheet)(const std::string& heading, std::span<const SheetPicture> pictures);
  std::string (*dataAddress)(const std::string& png);
};

inline constexpr char kModuleFile[] = "libvarnix-screens.so";
inline constexpr char kModuleEntry[] = "varnix_screens";
using ModuleEntry = const Module* (*)();

}  // namespace varnix::screens
