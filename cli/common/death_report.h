// A hosted process that dies says where.
#pragma once

#include <string>

namespace varnix::cli {

enum class Telling {
  place,     ///< " in FILE", for whoever waits for the process and knows the signal
  sentence,  ///< "varnix: the process died in FILE: Segmentation fault" and a line end
};

/// From now on, a signal that this process brings upon itself writes to the descriptor in which
/// library it was, and ends the process all the same. Signals that something else handles, such as
/// a sanitizer, are left to that. A stack that overflows is told of on this thread alone.
void tellOfDeath(int descriptor, Telling telling);

/// The folder goes with the process, which takes its temporary one along otherwise.
void removeOnDeath(const std::string& folder);

/// Loads a library, which from then on is what is named where the process dies in it, or in what it
/// called. Throws as host::loadLibrary.
void loadNamed(const std::string& file);

}  // namespace varnix::cli
