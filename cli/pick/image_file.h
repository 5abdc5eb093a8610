// An image read from a file.
#pragma once

#include <stdexcept>
#include <string>

#include "objc/strong.h"
#include "platform/UIKit.h"

namespace varnix::cli::pick {

/// Why a file is not an image, in plain words.
struct Unreadable : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Throws Unreadable.
Strong<UIImage> imageFromFile(const std::string& path);

}  // namespace varnix::cli::pick
