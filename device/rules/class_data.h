// What the Objective-C run-time finds in an image: classes, categories, constant strings and
// blocks.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "rules/fixups.h"

namespace varnix::device {

/// A word that holds an address, before the image is loaded.
struct ClassPointer {
  std::string what;     ///< Whose it is.
  uint64_t at = 0;      ///< Where it stands.
  uint64_t target = 0;  ///< In this image, or zero.
  const BoundWord* bound = nullptr;
  bool isRebased = false;

  bool isNil() const { return bound == nullptr && target == 0; }
  bool isOurs() const { return bound == nullptr && target != 0; }
  bool isBoundTo(std::string_view symbol) const;
};

/// A string that a pointer leads to.
struct ClassText {
  ClassPointer pointer;
  std::string_view text;
  std::string wrong;  ///< Why it is not a constant string, or nothing.
};

/// A list of methods, variables or properties.
struct EntryList {
  enum class Kind : uint8_t { methods, variables, properties };
  Kind kind = Kind::methods;
  ClassPointer pointer;
  uint32_t entrySize = 0, wantedSize = 0, count = 0;
  bool isAligned = true, fits = true;
  uint64_t end = 0;
  std::vector<uint64_t> entries;  ///< Where each is. None if the list is unsound.
};

struct MethodEntry {
  std::string owner;
  ClassText name, types;
  ClassPointer function;
};

struct VariableEntry {
  std::string owner;
  ClassPointer offset;
  std::optional<uint32_t> value;  ///< The value of the offset's word.
  ClassText name, type;
  uint32_t alignmentBits = 0, size = 0;

  /// In bytes; if none is given, a pointer's.
  uint64_t alignment(uint64_t pointerSize) const;
};

struct PropertyEntry {
  std::string owner;
  ClassText name, attributes;
};

/// A class or its metaclass.
struct ClassHalf {
  uint64_t address = 0;
  std::string label;
  bool isMeta = false;
  ClassPointer isa, superclass, cache, data;
  bool hasTable = false;  ///< Whether words that the run-time fills in are not zero.
  bool hasData = false;   ///< Whether the following could be read.
  uint32_t flags = 0, start = 0, size = 0, reserved = 0;
  ClassPointer layout, weakLayout, protocols;
  ClassText name;
  std::vector<MethodEntry> methods;
  std::vector<VariableEntry> variables;
  std::vector<PropertyEntry> properties;

  bool has(std::string_view method) const;
};

struct ClassEntry {
  ClassPointer listed;
  bool isListedTwice = false;
  std::optional<ClassHalf> half, meta;
};

struct CategoryEntry {
  ClassPointer listed;
  ClassText name;
  ClassPointer target, protocols, properties;
  std::vector<MethodEntry> methods, classMethods;
};

struct StringConstant {
  uint64_t address = 0, flags = 0, length = 0;
  bool isNumberFixed = false;  ///< Whether the loader would change flags or length.
  ClassText text;
};

struct BlockConstant {
  uint64_t address = 0;
  uint32_t flags = 0, reserved = 0;
  ClassPointer function, descriptor;
  uint64_t descriptorReserved = 0, descriptorSize = 0;
  ClassText signature;
};

/// The descriptor of a block that is made when code runs.
struct BlockDescriptor {
  uint64_t address = 0;
  ClassPointer copy, dispose;
  std::string_view signature;
};

/// Something that the run-time writes to.
struct Writable {
  std::string what;
  uint64_t address = 0, size = 0;
};

struct ClassData {
  const Fixups* fixups = nullptr;
  std::vector<ClassEntry> classes;
  std::vector<CategoryEntry> categories;
  std::set<uint64_t> loadedEarly;  ///< Classes and categories whose +load is called.
  std::vector<StringConstant> strings;
  std::vector<BlockConstant> blocks;
  std::vector<BlockDescriptor> descriptors;
  // Of all of them.
  std::vector<ClassPointer> pointers;
  std::vector<EntryList> lists;
  std::vector<Writable> writables;

  const Image& image() const { return *fixups->image; }
  uint64_t pointerSize() const { return image().pointerSize(); }
};

/// Throws Error if something points outside the file.
ClassData readClassData(const Fixups& fixups);

/// Whether a pointer leads to a function of the image, with the entry that the processor requires.
bool isFunction(const Image& image, const ClassPointer& pointer);

/// The types of an encoding; nothing if it is not one.
std::optional<std::vector<std::string_view>> splitTypes(std::string_view encoding,
                                                        uint64_t pointerSize);

std::string labelOf(const ClassPointer& pointer);
std::string labelOf(const ClassHalf& half);
std::string labelOf(const ClassEntry& entry);
std::string labelOf(const CategoryEntry& category);
std::string labelOf(const EntryList& list);
std::string labelOf(const MethodEntry& method);
std::string labelOf(const VariableEntry& variable);
std::string labelOf(const PropertyEntry& property);
std::string labelOf(const StringConstant& constant);
std::string labelOf(const BlockConstant& block);
std::string labelOf(const BlockDescriptor& descriptor);
std::string labelOf(const Writable& writable);

}  // namespace varnix::device
