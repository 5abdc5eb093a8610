#include "rules/class_reader.h"

#include "macho/error.h"
#include "macho/format.h"
#include "rules/rule.h"

namespace varnix::device {

namespace {

constexpr uint32_t kMostEntries = 1000, kListHeader = 8;

}  // namespace

uint32_t ClassReader::u32(uint64_t address) const {
  const auto place = image_.place(address);
  if (!place) throw Error("the file has nothing at " + hex(address));
  return image_.bytes.u32(*place);
}

uint64_t ClassReader::word(uint64_t address) const {
  const auto value = image_.word(address);
  if (!value) throw Error("the file has nothing at " + hex(address));
  return *value;
}

bool ClassReader::isFixed(uint64_t address) const {
  const Fixups& fixups = *data_.fixups;
  return fixups.isRebased(address) || fixups.bound(address) != nullptr ||
         fixups.lazilyBoundAt.contains(address);
}

ClassPointer ClassReader::pointer(uint64_t address, const std::string& what) {
  ClassPointer it;
  it.what = what;
  it.at = address;
  it.bound = data_.fixups->bound(address);
  it.isRebased = data_.fixups->isRebased(address);
  if (it.bound == nullptr) it.target = word(address);
  data_.pointers.push_back(it);
  return it;
}

ClassText ClassReader::text(uint64_t address, const std::string& what) {
  ClassText it;
  it.pointer = pointer(address, what);
  if (!it.pointer.isOurs()) {
    it.wrong = "not a string";
    return it;
  }
  const auto place = image_.place(it.pointer.target);
  if (!place) {
    it.wrong = "its string is outside of the file";
    return it;
  }
  it.text = image_.bytes.text(*place);
  if ((image_.segmentAt(it.pointer.target)->protection & macho::kWrite) != 0)
    it.wrong = "its string can be written to";
  return it;
}

EntryList ClassReader::list(const ClassPointer& pointer, EntryList::Kind kind, uint64_t entrySize) {
  EntryList it;
  it.kind = kind;
  it.pointer = pointer;
  it.wantedSize = static_cast<uint32_t>(entrySize);
  if (pointer.isNil()) return it;
  if (pointer.bound != nullptr) {
    it.fits = false;
  } else if (it.isAligned = pointer.target % pointerSize() == 0; it.isAligned) {
    it.entrySize = u32(pointer.target);
    it.count = u32(pointer.target + 4);
    it.end = pointer.target + kListHeader + it.count * entrySize;
    const SectionHeader* section = image_.sectionAt(pointer.target);
    it.fits = it.count > 0 && it.count < kMostEntries && section != nullptr &&
              it.end <= section->address + section->size;
    if (it.fits && it.entrySize == it.wantedSize)
      for (uint32_t i = 0; i < it.count; ++i)
        it.entries.push_back(pointer.target + kListHeader + i * entrySize);
  }
  data_.lists.push_back(it);
  return it;
}

std::vector<MethodEntry> ClassReader::methods(const ClassPointer& pointer) {
  const uint64_t size = pointerSize();
  std::vector<MethodEntry> result;
  for (const uint64_t at : list(pointer, EntryList::Kind::methods, 3 * size).entries) {
    // The run-time sorts the list, and makes its selectors unique.
    if (result.empty()) writable(pointer.what, pointer.target, kListHeader + 3 * size);
    MethodEntry method;
    method.owner = pointer.what;
    method.name = text(at, pointer.what);
    const std::string what = pointer.what + " " + std::string(method.name.text);
    method.types = text(at + size, what);
    method.function = this->pointer(at + 2 * size, what);
    result.push_back(std::move(method));
  }
  return result;
}

std::vector<VariableEntry> ClassReader::variables(const ClassPointer& pointer) {
  const uint64_t size = pointerSize();
  std::vector<VariableEntry> result;
  for (const uint64_t at : list(pointer, EntryList::Kind::variables, 3 * size + 8).entries) {
    VariableEntry it;
    it.owner = pointer.what;
    it.offset = this->pointer(at, pointer.what);
    it.name = text(at + size, pointer.what);
    it.type = text(at + 2 * size, pointer.what + " " + std::string(it.name.text));
    it.alignmentBits = u32(at + 3 * size);
    it.size = u32(at + 3 * size + 4);
    if (it.offset.isOurs() && it.offset.target % 4 == 0) {
      it.value = u32(it.offset.target);
      writable(it.type.pointer.what, it.offset.target, 4);
    }
    result.push_back(std::move(it));
  }
  return result;
}

std::vector<PropertyEntry> ClassReader::properties(const ClassPointer& pointer) {
  const uint64_t size = pointerSize();
  std::vector<PropertyEntry> result;
  for (const uint64_t at : list(pointer, EntryList::Kind::properties, 2 * size).entries) {
    PropertyEntry it;
    it.owner = pointer.what;
    it.name = text(at, pointer.what);
    it.attributes = text(at + size, pointer.what + " " + std::string(it.name.text));
    result.push_back(std::move(it));
  }
  return result;
}

void ClassReader::writable(std::string what, uint64_t address, uint64_t size) {
  data_.writables.push_back({std::move(what), address, size});
}

}  // namespace varnix::device
