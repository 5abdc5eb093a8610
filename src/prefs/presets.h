// Sets of colours to start from. Data only: the settings pane and the command line offer them.
#pragma once

#include "prefs/elements.h"

namespace varnix::settings {

/// For an element of a preset: not dyed.
inline constexpr const char* kUndyed = "";

struct Preset {
  const char* name;  ///< in English, and what the command line calls it
  const char* dye;
  /// The elements' own colours in the order of kElements; null for one that follows the dye.
  const char* own[kElementCount];
};

inline constexpr Preset kPresets[] = {
    {"Ember", "#de3027", {}},
    {"Coral", "#ff6b57", {nullptr, nullptr, nullptr, nullptr, "#ff9478"}},
    {"Sunflower", "#e8a200", {"#ffffff", nullptr, nullptr, nullptr, "#f2b700", "#4a3a12"}},
    {"Meadow", "#2f9e44", {nullptr, nullptr, nullptr, nullptr, "#37b24d", "#1f3d28"}},
    {"Mint", "#12a594", {nullptr, nullptr, "#0f766e", "#0f766e"}},
    {"Ocean", "#1971c2", {nullptr, nullptr, "#0b3c6f", "#0b3c6f", "#228be6"}},
    {"Lavender", "#7b61d1", {nullptr, nullptr, nullptr, nullptr, "#9775fa", "#2f2350"}},
    {"Candy", "#e64980", {nullptr, "#be4bdb", "#be4bdb", "#be4bdb", "#f06595"}},
    {"Graphite", "#546270", {"#ffffff", nullptr, "#2b3138", "#2b3138", nullptr, "#2b3138"}},
    {"Quiet", "#0b7285", {kUndyed, kUndyed, kUndyed, kUndyed, nullptr, kUndyed, kUndyed}},
};

/// Calls the function with each setting of the preset: two parts of its name, a colour, or null and
/// a number.
template <class F>
void eachSetting(const Preset& preset, F function) {
  function("global_color_type", "", nullptr, 0);
  function("global_color", "", preset.dye, 0);
  for (std::size_t i = 0; i < kElementCount; ++i) {
    const char* own = preset.own[i];
    const bool isUndyed = own != nullptr && *own == '\0';
    function(kElements[i].key, "_color_type", nullptr, own == nullptr ? 0 : isUndyed ? 1 : 2);
    if (own != nullptr && !isUndyed) function(kElements[i].key, "_color", own, 0);
  }
}

}  // namespace varnix::settings
