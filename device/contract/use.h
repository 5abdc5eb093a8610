// What the library uses of the platform, as a build that lists it says (src/objc/uses.h), and what
// its finished binary says: imports and classes of its own.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace varnix::device {

enum class UseKind { message, hook, addition, super, lookUp, variable, symbol };

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
  std::string superclass;                      ///< Empty where the list does not say.
  std::map<std::string, std::string> methods;  ///< Encodings by "-init".
};

struct Uses {
  std::vector<Use> all;
  std::map<std::string, OwnClass> own;
};

/// Reads the lines of one architecture. Besides those of the build there are "symbol LIBRARY NAME",
/// "own class NAME", "own class NAME -SELECTOR TYPES" and "own superclass NAME SUPERCLASS". Throws
/// Error, with the line, for any other.
Uses readUses(const std::string& text);

}  // namespace varnix::device
