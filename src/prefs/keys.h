// The settings that users may store: names, kinds, defaults. Data only.
#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

#include "prefs/elements.h"

namespace varnix::settings {

enum class Kind : unsigned char {
  boolean,
  integer,
  colorType,  ///< 1: not dyed; 2: the element's own colour; anything else follows the dye
  color,      ///< "#RRGGBB", "RRGGBB" or "#RGB", each optionally with ":alpha" after it
  data,       ///< written only by the library
};

struct Key {
  const char* name;
  Kind kind;
  const char* fallback;  ///< the value if nothing is stored, as text
  const char* meaning;
};

/// The dye if none is stored.
inline constexpr objc::FixedString kDefaultDye{"#de3027"};

namespace detail {

inline constexpr Key kGeneralKeys[] = {
    {"enabled", Kind::boolean, "true", "the whole system; read when a process starts"},
    {"global_color_type", Kind::integer, "0", "1: the dye is the application icon's colour"},
    {"global_color", Kind::color, kDefaultDye.text, "the dye"},
    {"use_album_art", Kind::boolean, "false", "SpringBoard follows the playing track's artwork"},
};

/// The general keys, then two for each element.
template <std::size_t... General, std::size_t... I>
constexpr std::array<Key, sizeof...(General) + 2 * sizeof...(I)> allKeys(
    std::index_sequence<General...>, std::index_sequence<I...>) {
  std::array<Key, sizeof...(General) + 2 * sizeof...(I)> keys{kGeneralKeys[General]...};
  std::size_t next = sizeof...(General);
  auto add = [&](const Key& key) { keys[next++] = key; };
  ((add({objc::kStored<kElementText<I, &Element::key> + "_color_type">.text, Kind::colorType, "0",
         kElements[I].typeMeaning}),
    add({objc::kStored<kElementText<I, &Element::key> + "_color">.text, Kind::color,
         kElements[I].ownColor, kElements[I].colorMeaning})),
   ...);
  return keys;
}

}  // namespace detail

inline constexpr auto kKeys =
    detail::allKeys(std::make_index_sequence<std::size(detail::kGeneralKeys)>{},
                    std::make_index_sequence<kElementCount>{});

/// A key that contains an application's identifier, before the suffix or after the prefix. Besides
/// these, IDENTIFIER_KEY is that application's own value of any key above.
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
