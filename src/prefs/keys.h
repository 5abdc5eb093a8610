// The settings that people may store: names, kinds, defaults. Data only.
#pragma once

#include <cstddef>

namespace varnix::settings {

enum class Kind : unsigned char {
  boolean,
  integer,
  colorType,  ///< 1: not dyed; 2: the element's own colour; anything else follows the dye
  color,      ///< "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha" behind it
  data,       ///< written by the library alone
};

struct Key {
  const char* name;
  Kind kind;
  const char* fallback;  ///< what counts where nothing is stored, as text
  const char* meaning;
};

inline constexpr Key kKeys[] = {
    {"enabled", Kind::boolean, "true", "the whole system; read when a process starts"},
    {"global_color_type", Kind::integer, "0", "1: the dye is the application icon's colour"},
    {"global_color", Kind::color, "#de3027", "the dye"},
    {"use_album_art", Kind::boolean, "false", "SpringBoard follows the playing track's artwork"},
    {"statusbar_color_type", Kind::colorType, "0", "status bar"},
    {"statusbar_color", Kind::color, "#FFFFFF", "status bar's own colour"},
    {"folder_color_type", Kind::colorType, "0", "backgrounds of folders and icons"},
    {"folder_color", Kind::color, "#FFFFFF", "own colour of folder and icon backgrounds"},
    {"cc_color_type", Kind::colorType, "0", "Control Centre"},
    {"cc_color", Kind::color, "#FFFFFF", "Control Centre's own colour"},
    {"nc_color_type", Kind::colorType, "0", "Notification Centre"},
    {"nc_color", Kind::color, "#FFFFFF", "Notification Centre's own colour"},
    {"sms_color_type", Kind::colorType, "0", "Messages balloons; dyed for 0 and 2 only"},
    {"sms_color", Kind::color, "#FFFFFF", "Messages balloons' own colour"},
    {"keyboard_color_type", Kind::colorType, "0", "keyboard"},
    {"keyboard_color", Kind::color, "#FFFFFF", "keyboard's own colour"},
    {"volume_color_type", Kind::colorType, "0", "volume HUD"},
    {"volume_color", Kind::color, "#FFFFFF", "volume HUD's own colour"},
};

/// A key that carries an application's identifier, in front of the suffix or behind the prefix.
/// Besides these, IDENTIFIER_KEY is that application's own value of any key above.
struct ApplicationForm {
  const char* prefix;
  const char* suffix;
  Kind kind;
  const char* meaning;
};

inline constexpr ApplicationForm kApplicationForms[] = {
    {"", "_enabled", Kind::boolean, "false keeps the application out"},
    {"", "_scope_enabled", Kind::boolean, "true lets the application's own values count"},
    {"cached_icon_color_", "", Kind::data, "the icon's colour, kept by the library"},
};

}  // namespace varnix::settings
