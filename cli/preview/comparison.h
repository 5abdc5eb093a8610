// Compares a gallery's pictures with ones that were kept.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace varnix::cli {

struct Comparison {
  std::size_t compared = 0;        ///< names that either side has
  std::vector<std::string> lines;  ///< one for each that differs: its name and what is different
};

/// Whether a picture of that name, "TAB/FILE.png", is to be compared.
using IsCompared = std::function<bool(const std::string& name)>;

/// Compares each picture, by the colours of its pixels. Of those that differ it writes the drawn
/// one
/// ("NAME-drawn.png"), the kept one ("NAME-kept.png") and, if they have the same size, one with the
/// differing pixels marked ("NAME-marked.png"). Throws Failure, if the kept folder cannot be read
/// too, and Interrupted.
Comparison comparePictures(const std::filesystem::path& drawn, const std::filesystem::path& kept,
                           const std::filesystem::path& differences, const IsCompared& isCompared);

}  // namespace varnix::cli
