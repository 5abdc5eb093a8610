// The parts of the platform that a process lacks, by name: an older or newer phone, or another
// device.
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

/// Nothing for any other text: "-[Class]", "Class.", "".
HOST_EXPORT std::optional<Absence> readAbsence(const std::string& text);

/// Leaves it out of this process; if it is not loaded yet, as soon as it is. Throws
/// std::runtime_error without a name, if a loaded class lacks the method or the variable, and for
/// names that every process needs: the root class with its methods, and a few others.
void leaveOut(const std::string& text);

/// The names to leave out that were not here at the start of the process.
HOST_EXPORT const std::vector<std::string>& notHereYet();

/// The functions that a library must not find, by their C names.
HOST_EXPORT const std::vector<std::string>& absentFunctions();
HOST_EXPORT bool isAbsentFunction(std::string_view name);

}  // namespace host
