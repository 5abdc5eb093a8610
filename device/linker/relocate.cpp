#include "linker/relocate.h"

#include <algorithm>
#include <set>

#include "linker/thumb.h"
#include "macho/error.h"
#include "macho/format.h"

namespace varnix::device {
namespace {

class Relocator {
 public:
  Relocator(const Object& object, const Imports& imports, Layout& layout)
      : object_(object), imports_(imports), layout_(layout) {
    for (const Symbol& symbol : object.symbols)
      if (symbol.isDefined() && symbol.isThumb()) functions_.insert(symbol.value);
  }

  Fixups run() {
    for (size_t i = 0; i < object_.sections.size(); ++i) relocateSection(i);
    writeStubs();
    std::sort(fixups_.rebases.begin(), fixups_.rebases.end());
    checkForOverlaps();
    return std::move(fixups_);
  }

 private:
  /// What a relocation applies to: its section, its bytes and its address before and after.
  struct Place {
    size_t section;
    std::span<uint8_t> bytes;
    uint32_t before, after;
  };

  void relocateSection(size_t index) {
    const Section& section = object_.sections[index];
    OutputSection& output = layout_.sections[layout_.ofObject[index]];
    for (const Relocation& relocation : section.relocations) {
      Place place{index, std::span(output.content).subspan(relocation.offset, 4),
                  section.address + relocation.offset, output.address + relocation.offset};
      try {
        apply(relocation, place);
      } catch (const Error& error) {
        throw Error("section " + section.title() + ": " + nameOf(relocation.kind) + " at offset " +
                    std::to_string(relocation.offset) + ": " + error.what());
      }
    }
    if (section.type() == macho::kNonLazySymbolPointers) fillPointers(section, output);
  }

  void apply(const Relocation& relocation, Place place) {
    switch (relocation.kind) {
      case macho::kVanilla:
        return pointer(relocation, place);
      case macho::kThumbBranch22:
        return branch(relocation, place);
      case macho::kHalfSectionDifference:
        return half(relocation, place);
      default:
        return difference(relocation, place);
    }
  }

  void pointer(const Relocation& relocation, Place place) {
    if (object_.sections[place.section].segment != "__DATA")
      throw Error("the loader would have to write into the code");
    const uint32_t content = Reader(place.bytes).u32(0);
    if (relocation.isExternal) {
      const auto import = imports_.ofSymbol.find(relocation.target);
      if (import != imports_.ofSymbol.end()) {
        put32(place.bytes, 0, 0);
        fixups_.binds.push_back({place.after, import->second, static_cast<int32_t>(content)});
        return;
      }
      const uint32_t address = addressOf(object_, layout_, object_.symbols[relocation.target]);
      put32(place.bytes, 0, address + (content & ~(address & 1)));
    } else {
      // The content is an address in the object. A function's may have the Thumb bit.
      const bool isScattered = relocation.isScattered;
      const uint32_t symbol = isScattered ? relocation.target : content & ~1u;
      const size_t section = isScattered ? object_.sectionAt(symbol) : relocation.target - 1;
      put32(place.bytes, 0, layout_.moved(object_, section, content) | thumbBit(section, symbol));
    }
    fixups_.rebases.push_back(place.after);
  }

  void branch(const Relocation& relocation, Place place) {
    const uint32_t target = readBranch(place.bytes, place.before);
    if (!relocation.isExternal) {
      const size_t section = relocation.target - 1;
      if (!object_.sections[section].hasCode()) throw Error("a branch into data");
      return writeBranch(place.bytes, place.after, layout_.moved(object_, section, target));
    }
    // An undefined symbol has address zero, so what remains is the addend.
    const auto import = imports_.ofSymbol.find(relocation.target);
    if (target != 0) throw Error("a branch past its symbol");
    const Symbol& symbol = object_.symbols[relocation.target];
    if (import == imports_.ofSymbol.end() && !symbol.isThumb()) throw Error("a branch into data");
    writeBranch(place.bytes, place.after,
                import != imports_.ofSymbol.end() ? stubAddress(*imports_.all[import->second].stub)
                                                  : addressOf(object_, layout_, symbol) & ~1u);
  }

  /// How a difference changes: both ends move with their sections.
  uint32_t changed(const Relocation& relocation, uint32_t content) const {
    const uint32_t plus = relocation.target, minus = relocation.subtrahend;
    const size_t plusSection = object_.sectionAt(plus), minusSection = object_.sectionAt(minus);
    const uint32_t moved = content + (layout_.moved(object_, plusSection, plus) - plus) -
                           (layout_.moved(object_, minusSection, minus) - minus);
    // Difference from an even address to a function: odd if the content already has the Thumb bit.
    const bool hasBit = ((content - plus + minus) & 1) != 0;
    return hasBit ? moved : moved + thumbBit(plusSection, plus);
  }

  void difference(const Relocation& relocation, Place place) {
    put32(place.bytes, 0, changed(relocation, Reader(place.bytes).u32(0)));
  }

  void half(const Relocation& relocation, Place place) {
    const bool isHigh = (relocation.length & 1) != 0;
    const uint32_t here = readMove(place.bytes), other = relocation.otherHalf;
    const uint32_t whole = changed(relocation, isHigh ? here << 16 | other : other << 16 | here);
    writeMove(place.bytes, static_cast<uint16_t>(isHigh ? whole >> 16 : whole));
  }

  /// Pointers that the compiler made, one for each indirect symbol.
  void fillPointers(const Section& section, OutputSection& output) {
    for (uint32_t offset = 0; offset < section.size; offset += 4) {
      const uint32_t index = object_.indirect[section.firstIndirect + offset / 4];
      // A pointer to a local symbol has a relocation of its own.
      if (index == macho::kIndirectLocal) continue;
      const auto import = imports_.ofSymbol.find(index);
      uint32_t content = 0;
      if (import != imports_.ofSymbol.end()) {
        fixups_.binds.push_back({output.address + offset, import->second, 0});
      } else {
        content = addressOf(object_, layout_, object_.symbols[index]);
        fixups_.rebases.push_back(output.address + offset);
      }
      put32(output.content, offset, content);
    }
  }

  void writeStubs() {
    OutputSection& stubs = layout_.sections[layout_.stubs];
    const OutputSection& pointers = layout_.sections[layout_.stubPointers];
    for (size_t i = 0; i < imports_.all.size(); ++i) {
      if (!imports_.all[i].stub) continue;
      const uint32_t number = *imports_.all[i].stub;
      const uint32_t slot = pointers.address + number * 4;
      writeStub(std::span(stubs.content).subspan(size_t{number} * kStubSize, kStubSize),
                stubAddress(number), slot);
      fixups_.binds.push_back({slot, i, 0});
    }
  }

  /// If two overlapped, the loader would set a word twice, and the last one would win.
  void checkForOverlaps() const {
    std::vector<uint32_t> words = fixups_.rebases;
    for (const Bind& bind : fixups_.binds) words.push_back(bind.address);
    std::sort(words.begin(), words.end());
    for (size_t i = 1; i < words.size(); ++i)
      if (words[i] - words[i - 1] < 4) throw Error("two pointers at the same place");
  }

  uint32_t stubAddress(uint32_t number) const {
    return layout_.sections[layout_.stubs].address + number * kStubSize;
  }

  uint32_t thumbBit(size_t section, uint32_t address) const {
    return object_.sections[section].hasCode() && functions_.contains(address) ? 1 : 0;
  }

  const Object& object_;
  const Imports& imports_;
  Layout& layout_;
  std::set<uint32_t> functions_;
  Fixups fixups_;
};

}  // namespace

uint32_t addressOf(const Object& object, const Layout& layout, const Symbol& symbol) {
  const size_t section = symbol.section - 1u;
  return layout.moved(object, section, symbol.value) | (symbol.isThumb() ? 1 : 0);
}

Fixups relocate(const Object& object, const Imports& imports, Layout& layout) {
  return Relocator(object, imports, layout).run();
}

}  // namespace varnix::device
