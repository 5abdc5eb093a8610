// What a process lacks of the platform, by name: an older or newer phone, or another device.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "export.h"

namespace host {

/// "-[Class selector]" or "+[Class selector]", a method of the class itself; "Class.variable"; else
/// the name of a class or of a C function.
struct Absence {
  enum class Kind { instanceMethod, classMethod, variable, classOrFunction };
  Kind kind;
  std::string owner;  ///< the class of a method or a variable
  std::string name;
};

/// Nothing for what is none of these: "-[Class]", "Class.", "".
HOST_EXPORT std::optional<Absence> readAbsence(const std::string& text);

/// Leaves it out of this process, where it is not here yet when it comes. Throws std::runtime_error
/// for no name, where a class is here without the method or the variable, and for what no process
/// can do without: the root class with its methods, and a few others.
void leaveOut(const std::string& text);

/// What was to be left out and was not here at the start of the process.
HOST_EXPORT const std::vector<std::string>& notHereYet();

/// The functions that a library must not find, by their C names.
HOST_EXPORT const std::vector<std::string>& absentFunctions();
HOST_EXPORT bool isAbsentFunction(std::string_view name);

}  // namespace host
