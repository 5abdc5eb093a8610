// An additional loader, for libraries that are not files of this system.
#pragma once

#include <string>

#include "export.h"

namespace host {

struct ImageLoader {
  /// Throws std::runtime_error with the reason.
  void (*load)(const std::string& path);
  /// A symbol of a loaded library; nil if it has none of that name.
  void* (*symbol)(const std::string& path, const char* name);
  /// The library that contains the address; empty if that is not one of the loader's.
  std::string (*pathOf)(const void* address);
};

/// From now on the loader loads the files that end in ".dylib". It must stay alive.
HOST_EXPORT void setImageLoader(const ImageLoader* loader);
HOST_EXPORT const ImageLoader* imageLoader();

}  // namespace host
