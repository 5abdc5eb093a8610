// A valid library and its spoiled copies, for the tests of the platform's rules.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "device/toolbox.h"
#include "macho/opcodes.h"
#include "rules/class_data.h"
#include "rules/signature.h"

namespace device_test {

namespace device = varnix::device;

/// tests/device/ruled.m, built for one processor.
struct Sound {
  Bytes bytes;
  device::Image image;
  device::Fixups fixups;
  device::ClassData classes;
  device::Signature signature;

  /// Each fails the test and returns null if there is none.
  const device::ClassHalf& classNamed(std::string_view name) const;
  const device::ClassHalf& metaclassNamed(std::string_view name) const;
  const device::CategoryEntry& categoryNamed(std::string_view name) const;
};

/// The architecture is "armv7" or "arm64". Each is built only once.
const Sound& soundLibrary(const std::string& architecture);
/// The same as a bundle.
Bytes soundBundle(const std::string& architecture);
/// Both slices in one file.
Bytes soundUniversalFile();
/// Options that name the stubs of the libraries it links.
const std::string& stubOptions();

/// Fields of load commands, whose offsets differ between the widths.
enum class SegmentField : uint8_t {
  address,
  size,
  fileOffset,
  fileSize,
  maxProtection,
  protection
};
enum class SectionField : uint8_t {
  address,
  size,
  offset,
  alignment,
  relocationCount,
  flags,
  firstIndirect,
  stubSize
};
/// Offsets in the command with the loader's instructions.
enum class Info : uint8_t { rebases = 0, binds = 2, weakBinds = 4, lazyBinds = 6, exports = 8 };

/// A copy to spoil. Places are those of the valid file.
class Spoiled {
 public:
  explicit Spoiled(const Sound& of) : sound(of), bytes(of.bytes) {}

  const Sound& sound;
  Bytes bytes;

  bool is64() const { return sound.image.is64; }
  uint64_t word() const { return sound.image.pointerSize(); }

  void put8(uint64_t place, uint8_t value) { bytes.at(place) = value; }
  void put32(uint64_t place, uint32_t value);
  void putBig32(uint64_t place, uint32_t value);
  void putText(uint64_t place, std::string_view text);
  /// With the library's word size.
  void putWord(uint64_t place, uint64_t value);
  uint32_t u32(uint64_t place) const;

  /// The place of an address in the file.
  uint64_t at(uint64_t address) const;
  void put32At(uint64_t address, uint32_t value) { put32(at(address), value); }
  void putWordAt(uint64_t address, uint64_t value) { putWord(at(address), value); }
  uint64_t wordAt(uint64_t address) const;
  uint32_t u32At(uint64_t address) const { return u32(at(address)); }

  /// The place of a load command.
  uint64_t command(uint32_t kind, size_t index = 0) const;
  /// A command for a table; the loader looks only at where the table is.
  uint64_t tableCommand() const;
  uint64_t segment(std::string_view name) const;
  void segment(std::string_view name, SegmentField field, uint64_t value);
  uint64_t section(std::string_view name) const;
  /// The section's header in the valid library.
  const device::SectionHeader& header(std::string_view name) const;
  void section(std::string_view name, SectionField field, uint64_t value);

  uint64_t info(Info table) const;
  uint64_t infoSize(Info table) const;
  void info(Info table, uint32_t offset, uint32_t size);
  /// The place of an opcode with that step.
  uint64_t step(Info table, device::FixupStep::Kind kind, size_t index = 0) const;
  /// Replaces a table by these opcodes, with nothing after them.
  void replace(Info table, std::span<const uint8_t> opcodes);

  uint64_t signature() const { return sound.signature.table->offset; }
  /// The first or second directory of digests.
  uint64_t directory(size_t index) const;
  /// The place of a name's terminal in the tree of exports, after its size.
  uint64_t terminal(std::string_view name) const;
  /// The place of a symbol's entry.
  uint64_t symbol(std::string_view name) const;

  /// Changes whether an import may be missing.
  void toggleWeak(std::string_view symbol);
  /// Renames an import, wherever its name is stored. Both names have the same length.
  void renameSymbol(std::string_view old, std::string_view name);

  /// Computes the digests of all pages again.
  void seal();
};

/// One way to break a rule.
struct Spoiler {
  const char* rule;
  const char* how;
  void (*spoil)(Spoiled& it);
  /// Rules that it breaks inevitably.
  std::vector<std::string> also = {};
  const char* only = nullptr;  ///< The rule's only architecture.
  bool isSealed = true;        ///< Whether the digests are computed again.
  /// Rules that only a 64-bit library breaks as well.
  std::vector<std::string> also64 = {};
};

std::span<const Spoiler> commandSpoilers();
std::span<const Spoiler> segmentSpoilers();
std::span<const Spoiler> fixupSpoilers();
std::span<const Spoiler> codeSpoilers();
std::span<const Spoiler> classSpoilers();
std::span<const Spoiler> constantSpoilers();
std::span<const Spoiler> memberSpoilers();
std::span<const Spoiler> signatureSpoilers();

/// One way to break a rule of universal files.
struct UniversalSpoiler {
  const char* rule;
  const char* how;
  void (*spoil)(Bytes& bytes);
  std::vector<std::string> also = {};
};
std::span<const UniversalSpoiler> universalSpoilers();

}  // namespace device_test
