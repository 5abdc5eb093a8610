// Reads the small parts that class data is made of.
#pragma once

#include "rules/class_data.h"

namespace varnix::device {

class ClassReader {
 public:
  explicit ClassReader(ClassData& data) : data_(data), image_(data.image()) {}

  uint64_t pointerSize() const { return image_.pointerSize(); }
  const Image& image() const { return image_; }
  /// Throws Error if the file has no such word.
  uint32_t u32(uint64_t address) const;
  uint64_t word(uint64_t address) const;
  /// Whether the loader writes there.
  bool isFixed(uint64_t address) const;

  ClassPointer pointer(uint64_t address, const std::string& what);
  ClassText text(uint64_t address, const std::string& what);
  std::vector<MethodEntry> methods(const ClassPointer& list);
  std::vector<VariableEntry> variables(const ClassPointer& list);
  std::vector<PropertyEntry> properties(const ClassPointer& list);
  void writable(std::string what, uint64_t address, uint64_t size);

 private:
  EntryList list(const ClassPointer& pointer, EntryList::Kind kind, uint64_t entrySize);

  ClassData& data_;
  const Image& image_;
};

}  // namespace varnix::device
