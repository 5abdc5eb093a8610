#include "rules/constants.h"

#include "macho/error.h"
#include "macho/type.h"

namespace varnix::device {

namespace {

constexpr uint32_t kHelpersOfBlock = 0x02000000;

void readString(ClassData& data, ClassReader& reader, uint64_t address) {
  const uint64_t size = reader.pointerSize();
  StringConstant it;
  it.address = address;
  it.flags = reader.word(address + size);
  it.text = reader.text(address + 2 * size, "string");
  it.length = reader.word(address + 3 * size);
  it.isNumberFixed = reader.isFixed(address + size) || reader.isFixed(address + 3 * size);
  data.strings.push_back(std::move(it));
}

void readBlock(ClassData& data, ClassReader& reader, uint64_t address) {
  const uint64_t size = reader.pointerSize();
  BlockConstant it;
  it.address = address;
  it.flags = reader.u32(address + size);
  it.reserved = reader.u32(address + size + 4);
  it.function = reader.pointer(address + size + 8, "block");
  it.descriptor = reader.pointer(address + 2 * size + 8, "block");
  if (it.descriptor.isOurs() && it.descriptor.target % size == 0) {
    const uint64_t descriptor = it.descriptor.target;
    it.descriptorReserved = reader.word(descriptor);
    it.descriptorSize = reader.word(descriptor + size);
    const uint64_t helpers = (it.flags & kHelpersOfBlock) != 0 ? 2 : 0;
    it.signature = reader.text(descriptor + (2 + helpers) * size, "block");
  }
  data.blocks.push_back(std::move(it));
}

/// False for pointers through which code takes the class's address.
bool isObject(const Image& image, uint64_t address) {
  const SectionHeader* section = image.sectionAt(address);
  return section != nullptr && section->name != "__got" && section->name != "__nl_symbol_ptr" &&
         section->name != "__la_symbol_ptr";
}

void readObjects(ClassData& data, ClassReader& reader) {
  for (const auto& [address, word] : data.fixups->boundAt) {
    if (!isObject(data.image(), address)) continue;
    if (word->symbol == "___CFConstantStringClassReference") readString(data, reader, address);
    if (word->symbol == "__NSConcreteGlobalBlock") readBlock(data, reader, address);
  }
}

/// Whether five words are a block's descriptor: zero, a size, two functions, and types.
std::optional<BlockDescriptor> descriptorAt(const ClassReader& reader, const Fixups& fixups,
                                            uint64_t at) {
  const uint64_t size = reader.pointerSize();
  if (reader.isFixed(at) || reader.isFixed(at + size)) return std::nullopt;
  for (uint64_t i = 2; i < 5; ++i)
    if (!fixups.isRebased(at + i * size) || fixups.bound(at + i * size) != nullptr)
      return std::nullopt;
  const uint64_t blockSize = reader.word(at + size);
  if (reader.word(at) != 0 || blockSize <= 3 * size + 8 || blockSize >= 512) return std::nullopt;
  const auto place = reader.image().place(reader.word(at + 4 * size));
  if (!place) return std::nullopt;
  const std::string_view types = reader.image().bytes.text(*place);
  const auto each = splitTypes(types, size);
  if (!each || each->size() < 2 || (*each)[1] != "@?") return std::nullopt;
  const auto helper = [&](uint64_t word) {
    ClassPointer it;
    it.at = word;
    it.target = reader.word(word);
    it.isRebased = true;
    return it;
  };
  return BlockDescriptor{at, helper(at + 2 * size), helper(at + 3 * size), types};
}

void readDescriptors(ClassData& data, const ClassReader& reader) {
  const uint64_t size = reader.pointerSize();
  for (const SectionHeader& section : data.image().sections) {
    if (section.segmentName != "__DATA" || section.isZeros()) continue;
    for (uint64_t at = section.address; at + 5 * size <= section.address + section.size; at += size)
      if (const auto found = descriptorAt(reader, *data.fixups, at))
        data.descriptors.push_back(*found);
  }
}

}  // namespace

void readConstants(ClassData& data, ClassReader& reader) {
  readObjects(data, reader);
  readDescriptors(data, reader);
}

std::optional<std::vector<std::string_view>> splitTypes(std::string_view encoding,
                                                        uint64_t pointerSize) {
  std::vector<std::string_view> types;
  try {
    Encoding rest(encoding, static_cast<uint32_t>(pointerSize));
    while (!rest.atEnd()) {
      const size_t start = rest.position();
      rest.next();
      std::string_view type = encoding.substr(start, rest.position() - start);
      // The argument's offset follows its type.
      type.remove_suffix(type.size() - 1 - type.find_last_not_of("0123456789-+"));
      types.push_back(type);
    }
  } catch (const Error&) {
    return std::nullopt;
  }
  return types;
}

}  // namespace varnix::device
