// Load commands: which ones there are, and what they say about the whole file.
#include <algorithm>

#include "macho/format.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

using Fault = CommandError::Kind;

bool isKnown(uint32_t kind) {
  constexpr uint32_t known[] = {macho::kDyldInfoOnly,    macho::kRunPath,
                                macho::kLoadWeakDylib,   macho::kReexportDylib,
                                macho::kLoadUpwardDylib, macho::kMain};
  return (kind & macho::kRequired) == 0 || std::ranges::find(known, kind) != std::end(known);
}

bool isEncrypted(const LoadCommand& command) {
  return (command.kind == macho::kEncryptionInfo || command.kind == macho::kEncryptionInfo64) &&
         command.bytes.u32(16) != 0;
}

std::string faultOf(const Image& image, Fault kind) {
  return unless(!image.commandFault || image.commandFault->kind != kind,
                image.commandFault ? image.commandFault->what() : "");
}

/// "9.3.0"
std::string versionText(uint32_t version) {
  return std::to_string(version >> 16) + "." + std::to_string(version >> 8 & 0xff) + "." +
         std::to_string(version & 0xff);
}

std::string versionFits(const Image& image, const LibraryCommand& library) {
  constexpr uint32_t any = 0xffffffff;
  const uint32_t wanted = library.compatibilityVersion;
  const auto known = image.offers->find(library.name);
  if (known == image.offers->end() || !known->second.compatibilityVersion) return {};
  const uint32_t there = *known->second.compatibilityVersion;
  return unless(wanted == any || wanted <= there,
                versionText(wanted) + ", but it has " + versionText(there));
}

constexpr uint32_t kNewestMinimum = 0x90300;

constexpr ImageRule kShapes[] = {
    {"commands.size", "A load command has at least the eight bytes that all begin with.",
     whole<[](const Image& image) { return faultOf(image, Fault::tooSmall); }>},
    {"commands.room",
     "Load commands and their sections are in the space that the header gives them.",
     whole<[](const Image& image) { return faultOf(image, Fault::leavesHeader); }>},
};

constexpr ImageRule kCommands[] = {
    {"commands.width", "Segment commands have the width of their file.",
     each<&Image::commands,
          [](const Image& image, const LoadCommand& command) {
            return unless(command.kind != (image.is64 ? macho::kSegment : macho::kSegment64),
                          "a segment of the other width");
          }>},
    {"commands.known", "The loader of iOS 9.3 knows each load command that it must know.",
     each<&Image::commands,
          [](const Image&, const LoadCommand& command) {
            return unless(isKnown(command.kind), hex(command.kind));
          }>},
    {"commands.loader-info", "There are instructions for the loader.",
     whole<[](const Image& image) {
       return unless(image.loaderInfo.has_value(), "LC_DYLD_INFO_ONLY is missing");
     }>},
    {"commands.symbols", "There is a symbol table, and a table of indirect symbols.",
     whole<[](const Image& image) {
       return unless(image.symbolTable && image.indirectSymbols, "one is missing");
     }>},
    {"commands.no-relocations", "There are no relocations of the old kind.",
     whole<[](const Image& image) {
       return unless(image.relocations == 0, std::to_string(image.relocations) + " relocations");
     }>},
    {"commands.install-name", "A library's install name is an absolute path; a bundle has no name.",
     whole<[](const Image& image) {
       if (!image.isDylib()) return unless(!image.installName, "a bundle with a name");
       return unless(image.installName && image.installName->starts_with('/'),
                     image.installName ? printable(*image.installName) : "no name");
     }>},
    {"commands.one-signature", "There is no second signature.", whole<[](const Image& image) {
       return unless(image.signatures.size() <= 1,
                     std::to_string(image.signatures.size()) + " signatures");
     }>},
    {"commands.version", "The file says which version it needs: iOS 9.3 or earlier.",
     whole<[](const Image& image) {
       return unless(image.minimumVersion && *image.minimumVersion <= kNewestMinimum,
                     image.minimumVersion ? versionText(*image.minimumVersion) : "no version");
     }>},
    {"commands.no-routine", "No load command names a function to run first.",
     each<&Image::commands,
          [](const Image&, const LoadCommand& command) {
            return unless(command.kind != macho::kRoutines && command.kind != macho::kRoutines64,
                          hex(command.kind));
          }>},
    {"commands.not-encrypted", "Nothing is encrypted.",
     each<&Image::commands,
          [](const Image&, const LoadCommand& command) {
            return unless(!isEncrypted(command), hex(command.kind));
          }>},
    {"libraries.count", "At least one library is linked, and no more than 4095.",
     whole<[](const Image& image) {
       return unless(!image.libraries.empty() && image.libraries.size() <= 4095,
                     std::to_string(image.libraries.size()) + " libraries");
     }>},
    {"libraries.name", "A linked library's name is an absolute path, or one that begins with @.",
     each<&Image::libraries,
          [](const Image&, const LibraryCommand& library) {
            return unless(library.name.starts_with('/') || library.name.starts_with('@'),
                          "not a path: " + printable(library.name));
          }>},
    {"libraries.compatibility",
     "No linked library is required in a later version than it has, if that is known.",
     each<&Image::libraries, versionFits>},
    {"libraries.system", "The system library, which binds lazy pointers, is linked.",
     whole<[](const Image& image) {
       return unless(std::ranges::any_of(image.libraries,
                                         [](const LibraryCommand& library) {
                                           return library.name == kSystemLibrary;
                                         }),
                     std::string(kSystemLibrary) + " is missing");
     }>},
};

}  // namespace

std::span<const ImageRule> commandShapeRules() { return kShapes; }
std::span<const ImageRule> commandRules() { return kCommands; }

}  // namespace varnix::device
