// Constant strings and blocks.
#include <algorithm>
#include <iterator>

#include "rules/class_data.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

/// Constant, never freed: with 8-bit characters and a NUL at the end, and with 16-bit ones.
constexpr uint64_t kNarrowString = 0x7c8, kWideString = 0x7d0;
constexpr uint32_t kGlobal = 0x10000000, kReturnsStructure = 0x20000000, kSigned = 0x40000000;
/// The reference count, and flags of blocks that captured something.
constexpr uint32_t kForeignFlags = 0x8300ffff;

const std::vector<StringConstant>& stringsOf(const ClassData& data) { return data.strings; }
std::vector<StringConstant> narrowStringsOf(const ClassData& data) {
  std::vector<StringConstant> result;
  std::ranges::copy_if(data.strings, std::back_inserter(result),
                       [](const StringConstant& it) { return it.flags != kWideString; });
  return result;
}
const std::vector<BlockConstant>& blocksOf(const ClassData& data) { return data.blocks; }
const std::vector<BlockDescriptor>& descriptorsOf(const ClassData& data) {
  return data.descriptors;
}

bool isStructure(std::string_view type) { return type.starts_with('{') || type.starts_with('('); }

std::string signatureFits(const ClassData& data, const BlockConstant& it) {
  if (!it.descriptor.isOurs()) return {};
  if (!it.signature.wrong.empty()) return it.signature.wrong;
  const auto types = splitTypes(it.signature.text, data.pointerSize());
  const bool returnsStructure = (it.flags & kReturnsStructure) != 0;
  return unless(types && types->size() >= 2 && (*types)[1] == "@?" &&
                    (!returnsStructure || isStructure((*types)[0])),
                printable(it.signature.text));
}

std::string returnsNoStructure(const ClassData& data, const BlockDescriptor& it) {
  const auto types = splitTypes(it.signature, data.pointerSize());
  return unless(types && !isStructure((*types)[0]), printable(it.signature));
}

constexpr ClassRule kConstants[] = {
    {"strings.aligned", "A constant string begins at a multiple of a pointer's size.",
     each<stringsOf,
          [](const ClassData& data, const StringConstant& it) {
            return unless(it.address % data.pointerSize() == 0, "it does not");
          }>},
    {"strings.flags", "A constant string has the flags for 8-bit or 16-bit characters.",
     each<stringsOf,
          [](const ClassData&, const StringConstant& it) {
            return unless(
                (it.flags == kNarrowString || it.flags == kWideString) && !it.isNumberFixed,
                hex(it.flags));
          }>},
    {"strings.narrow", "A constant string has 8-bit characters.",
     each<stringsOf,
          [](const ClassData&, const StringConstant& it) {
            return unless(it.flags != kWideString, hex(it.flags));
          }>,
     Asker::project},
    {"strings.text", "A constant string's 8-bit characters are ASCII and constant.",
     each<narrowStringsOf,
          [](const ClassData&, const StringConstant& it) {
            if (!it.text.wrong.empty()) return it.text.wrong;
            return unless(std::ranges::all_of(
                              it.text.text, [](char c) { return static_cast<signed char>(c) > 0; }),
                          printable(it.text.text));
          }>},
    {"strings.length", "A constant string has as many 8-bit characters as it says.",
     each<narrowStringsOf,
          [](const ClassData&, const StringConstant& it) {
            return unless(it.length == it.text.text.size(),
                          std::to_string(it.length) + " for " + printable(it.text.text));
          }>},
    {"blocks.flags",
     "A constant block's flags say that it is one and has a signature, and nothing else.",
     each<blocksOf,
          [](const ClassData& data, const BlockConstant& it) {
            constexpr uint32_t wanted = kGlobal | kSigned;
            return unless(it.address % data.pointerSize() == 0 && (it.flags & wanted) == wanted &&
                              (it.flags & kForeignFlags) == 0 && it.reserved == 0,
                          hex(it.flags) + ", reserved " + std::to_string(it.reserved));
          }>},
    {"blocks.function", "A constant block's function is code in this image.",
     each<blocksOf,
          [](const ClassData& data, const BlockConstant& it) {
            return unless(isFunction(data.image(), it.function), hex(it.function.target));
          }>},
    {"blocks.descriptor", "A constant block's descriptor says that it captured nothing.",
     each<blocksOf,
          [](const ClassData& data, const BlockConstant& it) {
            const uint64_t size = data.pointerSize();
            return unless(it.descriptor.isOurs() && it.descriptor.target % size == 0 &&
                              it.descriptorReserved == 0 && it.descriptorSize == 3 * size + 8,
                          hex(it.descriptor.target) + ", of " + std::to_string(it.descriptorSize));
          }>},
    {"blocks.signature", "A block's types begin with a result and the block, and match its flags.",
     each<blocksOf, signatureFits>},
    {"blocks.helpers", "The functions that copy and release a block's captures are in this image.",
     each<descriptorsOf,
          [](const ClassData& data, const BlockDescriptor& it) {
            return unless(isFunction(data.image(), it.copy) && isFunction(data.image(), it.dispose),
                          hex(it.copy.target) + " and " + hex(it.dispose.target));
          }>},
    {"blocks.result", "A block with captures returns no structure.",
     each<descriptorsOf, returnsNoStructure>, Asker::project},
};

}  // namespace

std::span<const ClassRule> constantRules() { return kConstants; }

}  // namespace varnix::device
