// What is known about a large image once it has been read: copies in the sizes that were last asked
// for, and what was wrong. Reading it again takes long.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace host {

class SmallCopies {
 public:
  static bool holds(std::size_t width, std::size_t height) { return width * height <= 1 << 16; }

  /// Cairo's pixels; nothing if there is no copy of that size.
  std::optional<std::vector<std::uint32_t>> find(std::size_t width, std::size_t height) {
    const std::lock_guard lock(guard_);
    for (const Copy& copy : copies_)
      if (copy.width == width && copy.height == height) return copy.pixels;
    return {};
  }
  void keep(std::size_t width, std::size_t height, const std::vector<std::uint32_t>& pixels) {
    if (!holds(width, height) || find(width, height)) return;
    const std::lock_guard lock(guard_);
    if (copies_.size() == kMost) copies_.erase(copies_.begin());
    copies_.push_back({width, height, pixels});
  }

  /// Empty until something is noted.
  std::string problem() {
    const std::lock_guard lock(guard_);
    return problem_;
  }
  void noteProblem(const std::string& problem) {
    const std::lock_guard lock(guard_);
    problem_ = problem;
  }

 private:
  static constexpr std::size_t kMost = 8;

  struct Copy {
    std::size_t width, height;
    std::vector<std::uint32_t> pixels;
  };
  std::mutex guard_;
  std::vector<Copy> copies_;
  std::string problem_;
};

}  // namespace host
