// The elements: parts of the interface that may have a colour of their own. Data only: the
// manager's operations, the settings' keys and the command's reports come from this table.
#pragma once

#include <cstddef>

#include "objc/fixed_string.h"

namespace varnix::settings {

struct Element {
  const char* operation;  ///< the manager has OPERATIONEnabled and OPERATIONDye
  const char* key;        ///< its name for people; KEY_color_type and KEY_color are stored
  const char* ownColor;   ///< its own colour if none is stored
  /// Whether it appears over applications. If so, its type is that for the application in front.
  bool followsOpenApp;
  const char* typeMeaning;
  const char* colorMeaning;
};

inline constexpr Element kElements[] = {
    {"statusBar", "statusbar", "#FFFFFF", false,  //
     "status bar", "status bar's own colour"},
    {"folder", "folder", "#FFFFFF", false,  //
     "backgrounds of folders and icons", "own colour of folder and icon backgrounds"},
    {"cc", "cc", "#FFFFFF", true,  //
     "Control Centre", "Control Centre's own colour"},
    {"nc", "nc", "#FFFFFF", true,  //
     "Notification Centre", "Notification Centre's own colour"},
    {"sms", "sms", "#FFFFFF", false,  //
     "Messages balloons; dyed for 0 and 2 only", "Messages balloons' own colour"},
    {"keyboard", "keyboard", "#FFFFFF", false,  //
     "keyboard", "keyboard's own colour"},
    {"vol", "volume", "#FFFFFF", true,  //
     "volume HUD", "volume HUD's own colour"},
};

inline constexpr std::size_t kElementCount = sizeof kElements / sizeof *kElements;

/// A text of an element, as a template argument.
template <std::size_t Index, const char* Element::* Member>
inline constexpr auto kElementText = [] {
  constexpr const char* text = kElements[Index].*Member;
  objc::FixedString<__builtin_strlen(text) + 1> copy;
  for (std::size_t i = 0; i < copy.size(); ++i) copy.text[i] = text[i];
  return copy;
}();

/// Whether the manager has operations of that name.
template <objc::FixedString Operation>
inline constexpr bool kIsElement = [] {
  for (const Element& element : kElements) {
    if (__builtin_strcmp(element.operation, Operation.text) == 0) return true;
  }
  return false;
}();

}  // namespace varnix::settings
