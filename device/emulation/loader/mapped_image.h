// An image in memory, with its words fixed up.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "loader/image_file.h"

namespace varnix::device {

/// A symbol's address, by the name in the file with its underscore; nil if there is none.
using Resolve = std::function<void*(std::string_view symbol)>;

/// Stays mapped for ever, as is necessary once a run-time has seen the image.
class MappedImage {
 public:
  /// Copies the segments into writable memory and fixes them up. Throws Error if a fixup fails,
  /// with the names of all missing symbols.
  MappedImage(const ImageFile& file, const Resolve& resolve);

  /// Gives each segment the protection that its file requests. Runs nothing.
  void protect() const;
  /// Runs the initialisers in the file's order.
  void initialise() const;

  /// The words of a section such as "__objc_classlist"; empty if there is none.
  std::span<uintptr_t> words(std::string_view section) const;
  /// Nil if the image does not export the name.
  void* exported(std::string_view symbol) const;
  bool contains(const void* address) const;
  const void* start() const { return start_; }

 private:
  std::span<uintptr_t> words(const ImageSection& section) const;
  std::byte* at(uint64_t offset) const { return start_ + offset; }
  void rebase() const;
  void bind(const Resolve& resolve) const;

  const ImageFile& file_;
  std::byte* start_ = nullptr;
  std::map<std::string, uint64_t, std::less<>> exports_;
};

}  // namespace varnix::device
