// What the library uses from the platform: the list from the build (src/objc/uses.h), and what the
// finished binary shows: imports and its own classes.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace varnix::device {

enum class UseKind { message, hook, addition, super, lookUp, variable, symbol, overriding };

/// One line. Fields that a kind does not have are empty.
struct Use {
  UseKind kind{};
  std::string owner;  ///< The class; a symbol's library.
  std::string name;   ///< "-init" or "+new"; a variable's or a symbol's name.
  std::string types;  ///< A method's encoding; the class of what a variable holds.
  bool isWeak = false;

  /// "-[NSArray count]", "NSArray", "SBHUDView._backdropView", "_free".
  std::string subject() const;
  /// With what is done to it: "message -[NSArray count]".
  std::string text() const;
};

/// A class of the library's own.
struct OwnClass {
  std::string superclass;                      ///< Empty if the list does not say.
  std::map<std::string, std::string> methods;  ///< Encodings by "-init".
};

struct Uses {
  std::vector<Use> all;
  std::map<std::string, OwnClass> own;
};

/// Reads the lines of one architecture. Besides the build's lines there are "symbol LIBRARY NAME",
/// "own class NAME", "own class NAME -SELECTOR TYPES" and "own superclass NAME SUPERCLASS". Throws
/// Error, with the line, for any other.
Uses readUses(const std::string& text);

}  // namespace varnix::device
