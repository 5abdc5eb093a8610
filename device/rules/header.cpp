// The first bytes of a slice.
#include "macho/format.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

constexpr ImageRule kFirst[] = {
    {"header.size", "A slice has the 4096 bytes that the loader reads first.",
     whole<[](const Image& image) {
       return unless(image.bytes.size() >= macho::kFirstRead,
                     std::to_string(image.bytes.size()) + " bytes");
     }>},
    {"header.magic", "A slice begins with the magic number of a 32- or 64-bit file.",
     whole<[](const Image& image) {
       const uint32_t magic = image.bytes.u32(0);
       return unless(magic == macho::kMagic32 || magic == macho::kMagic64, hex(magic));
     }>},
};

constexpr ImageRule kHeader[] = {
    {"header.processor",
     "A 32-bit slice is for armv7, which all 32-bit phones load; a 64-bit one is for arm64.",
     whole<[](const Image& image) {
       const bool fits =
           image.is64 ? image.processor == macho::kCpuArm64 && image.subtype == 0
                      : image.processor == macho::kCpuArm && image.subtype == macho::kSubtypeArmV7;
       return unless(fits, "processor " + hex(image.processor) + ", subtype " + hex(image.subtype));
     }>},
    {"header.type", "The file is a dynamic library or a bundle.", whole<[](const Image& image) {
       return unless(image.type == macho::kDylib || image.type == macho::kBundle,
                     "type " + std::to_string(image.type));
     }>},
    {"header.two-level", "Each import names its library, and the loader binds it.",
     whole<[](const Image& image) {
       constexpr uint32_t wanted = macho::kTwoLevel | macho::kDyldLink;
       return unless((image.flags & (wanted | macho::kForceFlat)) == wanted, hex(image.flags));
     }>},
    {"header.not-prebound", "No addresses were assigned in advance, and segments move together.",
     whole<[](const Image& image) {
       return unless((image.flags & (macho::kHasPreboundAddresses | macho::kSplitSegments)) == 0,
                     hex(image.flags));
     }>},
    {"header.not-weak", "The file neither defines nor uses symbols that another image may replace.",
     whole<[](const Image& image) {
       return unless((image.flags & (macho::kWeakDefines | macho::kBindsToWeak)) == 0,
                     hex(image.flags));
     }>,
     Asker::project},
};

}  // namespace

std::span<const ImageRule> firstRules() { return kFirst; }
std::span<const ImageRule> headerRules() { return kHeader; }

}  // namespace varnix::device
