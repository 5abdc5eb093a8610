// Libraries that are no files of this system's: who else can load one.
#pragma once

#include <string>

#include "export.h"

namespace host {

struct ImageLoader {
  /// Throws std::runtime_error with the reason.
  void (*load)(const std::string& path);
  /// A symbol of a loaded library; nil where it has none of that name.
  void* (*symbol)(const std::string& path, const char* name);
  /// The library that the address lies in; empty where it is none of the loader's.
  std::string (*pathOf)(const void* address);
};

/// Takes over the libraries whose files end in ".dylib". The loader has to stay.
HOST_EXPORT void setImageLoader(const ImageLoader* loader);
HOST_EXPORT const ImageLoader* imageLoader();

}  // namespace host
