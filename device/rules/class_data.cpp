#include "rules/class_data.h"

#include <algorithm>

#include "rules/class_reader.h"
#include "rules/constants.h"
#include "rules/rule.h"

namespace varnix::device {

namespace {

ClassHalf readHalf(ClassReader& reader, uint64_t address, std::string label, bool isMeta) {
  const uint64_t size = reader.pointerSize();
  ClassHalf it;
  it.address = address;
  it.label = std::move(label);
  it.isMeta = isMeta;
  reader.writable(it.label, address, 5 * size);
  it.isa = reader.pointer(address, it.label + " isa");
  it.superclass = reader.pointer(address + size, it.label + " superclass");
  it.cache = reader.pointer(address + 2 * size, it.label + " cache");
  it.hasTable = reader.word(address + 3 * size) != 0 || reader.isFixed(address + 3 * size);
  it.data = reader.pointer(address + 4 * size, it.label + " data");
  if (!it.data.isOurs() || it.data.target % size != 0) return it;
  const uint64_t data = it.data.target;
  it.flags = reader.u32(data);
  it.start = reader.u32(data + 4);
  it.size = reader.u32(data + 8);
  if (size == 8) it.reserved = reader.u32(data + 12);
  const uint64_t fields = data + (size == 8 ? 16 : 12);
  it.layout = reader.pointer(fields, it.label + " layout");
  it.name = reader.text(fields + size, it.label + " name");
  // A class whose name can be read is called by it.
  if (!isMeta && it.name.wrong.empty()) it.label = it.name.text;
  it.methods = reader.methods(reader.pointer(fields + 2 * size, it.label + (isMeta ? " +" : " -")));
  it.protocols = reader.pointer(fields + 3 * size, it.label + " protocols");
  it.variables = reader.variables(reader.pointer(fields + 4 * size, it.label + " variables"));
  it.weakLayout = reader.pointer(fields + 5 * size, it.label + " weak layout");
  it.properties = reader.properties(reader.pointer(fields + 6 * size, it.label + " properties"));
  it.hasData = true;
  return it;
}

/// The words of every section with that name.
std::vector<uint64_t> wordsOf(const Image& image, std::string_view name) {
  std::vector<uint64_t> result;
  for (const SectionHeader& section : image.sections) {
    if (section.name != name) continue;
    for (uint64_t at = 0;
         at + image.pointerSize() <= std::min<uint64_t>(section.size, image.bytes.size());
         at += image.pointerSize())
      result.push_back(section.address + at);
  }
  return result;
}

void readClasses(ClassData& data, ClassReader& reader) {
  std::set<uint64_t> seen;
  for (const uint64_t at : wordsOf(data.image(), "__objc_classlist")) {
    ClassEntry entry;
    entry.listed = reader.pointer(at, "class list");
    const uint64_t address = entry.listed.target;
    if (entry.listed.isOurs()) {
      entry.isListedTwice = !seen.insert(address).second;
      if (!entry.isListedTwice) {
        entry.half = readHalf(reader, address, "class at " + hex(address), false);
        const ClassPointer& isa = entry.half->isa;
        if (isa.isOurs() && entry.half->hasData)
          entry.meta = readHalf(reader, isa.target, entry.half->label + " (meta)", true);
      }
    }
    data.classes.push_back(std::move(entry));
  }
}

void readCategories(ClassData& data, ClassReader& reader) {
  const uint64_t size = reader.pointerSize();
  for (const SectionHeader& section : data.image().sections)
    if (section.name == "__objc_catlist")
      reader.writable("category list", section.address, section.size);
  for (const uint64_t at : wordsOf(data.image(), "__objc_catlist")) {
    CategoryEntry it;
    it.listed = reader.pointer(at, "category list");
    if (it.listed.isOurs() && it.listed.target % size == 0) {
      const uint64_t address = it.listed.target;
      it.name = reader.text(address, "category");
      const std::string what = "category " + std::string(it.name.text);
      it.target = reader.pointer(address + size, what);
      it.methods = reader.methods(reader.pointer(address + 2 * size, what + " -"));
      it.classMethods = reader.methods(reader.pointer(address + 3 * size, what + " +"));
      it.protocols = reader.pointer(address + 4 * size, what);
      it.properties = reader.pointer(address + 5 * size, what);
    }
    data.categories.push_back(std::move(it));
  }
}

}  // namespace

ClassData readClassData(const Fixups& fixups) {
  ClassData data;
  data.fixups = &fixups;
  ClassReader reader(data);
  readClasses(data, reader);
  readCategories(data, reader);
  for (const std::string_view list : {"__objc_nlclslist", "__objc_nlcatlist"})
    for (const uint64_t at : wordsOf(data.image(), list))
      data.loadedEarly.insert(reader.pointer(at, "list of +load").target);
  readConstants(data, reader);
  return data;
}

bool ClassPointer::isBoundTo(std::string_view symbol) const {
  return bound != nullptr && bound->symbol == symbol;
}

bool ClassHalf::has(std::string_view method) const {
  return std::ranges::any_of(methods,
                             [&](const MethodEntry& each) { return each.name.text == method; });
}

uint64_t VariableEntry::alignment(uint64_t pointerSize) const {
  return alignmentBits == ~0u ? pointerSize : uint64_t{1} << std::min(alignmentBits, 31u);
}

bool isFunction(const Image& image, const ClassPointer& pointer) {
  return pointer.isOurs() && image.holdsFunctions(pointer.target) &&
         (image.is64 ? pointer.target % 4 == 0 : (pointer.target & 1) == 1);
}

std::string labelOf(const ClassPointer& it) { return it.what + " at " + hex(it.at); }
std::string labelOf(const ClassHalf& it) { return it.label; }
std::string labelOf(const ClassEntry& it) { return it.half ? it.half->label : labelOf(it.listed); }
std::string labelOf(const CategoryEntry& it) { return "category " + std::string(it.name.text); }
std::string labelOf(const EntryList& it) { return it.pointer.what; }
std::string labelOf(const MethodEntry& it) { return it.owner + " " + std::string(it.name.text); }
std::string labelOf(const VariableEntry& it) { return it.owner + " " + std::string(it.name.text); }
std::string labelOf(const PropertyEntry& it) { return it.owner + " " + std::string(it.name.text); }
std::string labelOf(const StringConstant& it) { return "string at " + hex(it.address); }
std::string labelOf(const BlockConstant& it) { return "block at " + hex(it.address); }
std::string labelOf(const BlockDescriptor& it) { return "descriptor at " + hex(it.address); }
std::string labelOf(const Writable& it) { return it.what; }

}  // namespace varnix::device
