// A hosted process that dies says where.
#pragma once

#include <string>

namespace varnix::cli {

enum class Telling {
  place,     ///< " in FILE", for a parent that waits for the process and knows the signal
  sentence,  ///< "varnix: the process died in FILE: Segmentation fault" and a line end
};

/// From now on, a signal that this process causes itself writes to the descriptor in which library
/// it happened, and still ends the process. A signal that has a handler already, such as a
/// sanitizer's, keeps it. The library of a stack overflow is told for this thread only.
void tellOfDeath(int descriptor, Telling telling);

/// Also removes the process's temporary folder when it dies like that.
void removeOnDeath(const std::string& folder);

/// Loads a library, and names it if the process dies in it or in what it called. Throws like
/// host::loadLibrary.
void loadNamed(const std::string& file);

}  // namespace varnix::cli
