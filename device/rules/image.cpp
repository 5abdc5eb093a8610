#include "rules/image.h"

#include "macho/format.h"

namespace varnix::device {

bool SectionHeader::isZeros() const {
  return type() == macho::kZeroFill || type() == macho::kGigabyteZeroFill ||
         type() == macho::kThreadLocalZeroFill;
}

bool Image::isDylib() const { return type == macho::kDylib; }

const SegmentCommand* Image::segmentAt(uint64_t address) const {
  for (const SegmentCommand& each : segments)
    if (each.contains(address)) return &each;
  return nullptr;
}

const SegmentCommand* Image::segment(std::string_view name) const {
  for (const SegmentCommand& each : segments)
    if (each.name == name) return &each;
  return nullptr;
}

const SectionHeader* Image::sectionAt(uint64_t address) const {
  for (const SectionHeader& each : sections)
    if (each.contains(address)) return &each;
  return nullptr;
}

const SectionHeader* Image::section(std::string_view name) const {
  for (const SectionHeader& each : sections)
    if (each.name == name) return &each;
  return nullptr;
}

std::optional<uint64_t> Image::place(uint64_t address) const {
  for (const SegmentCommand& each : segments)
    if (each.isFilled(address)) return each.fileOffset + (address - each.address);
  return std::nullopt;
}

std::optional<uint64_t> Image::word(uint64_t address) const {
  const auto at = place(address);
  if (!at) return std::nullopt;
  return is64 ? bytes.u64(*at) : bytes.u32(*at);
}

bool Image::holdsFunctions(uint64_t address) const {
  const SectionHeader* section = sectionAt(code(address));
  return section != nullptr && section->name == "__text" &&
         (section->flags & macho::kPureInstructions) != 0 &&
         (segments[section->segment].protection & macho::kExecute) != 0;
}

}  // namespace varnix::device
