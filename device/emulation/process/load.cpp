// Loads the device's libraries into a hosted process.
#include <dlfcn.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <stdexcept>

#include "abi/boundary.h"
#include "abi/jumping.h"
#include "loader/mapped_image.h"
#include "loader/needed.h"
#include "loader/unwind_info.h"
#include "macho/files.h"
#include "objc/metadata.h"
#include "process/absence.h"
#include "process/image_loader.h"
#include "process/process.h"
#include "process/unwinding.h"
#include "rules/slice.h"
#include "runtime/image.h"

namespace varnix::device {

namespace {

constexpr Architecture kArchitecture =
    sizeof(void*) == 8 ? Architecture::arm64 : Architecture::armv7;

struct Loaded {
  std::vector<uint8_t> bytes;
  ImageFile file;
  std::unique_ptr<MappedImage> image;
};

std::map<std::string, Loaded>& loadedImages() {
  static auto* images = new std::map<std::string, Loaded>;
  return *images;
}

void load(const std::string& path);

/// The library for the device that another one of those needs, which lies at `path`: the one that
/// is loaded under that name, else a neighbour, else, for a bundle in a folder of its own, one
/// beside the stand-in. Empty if there is none, as for the platform's libraries.
std::filesystem::path fileOf(const std::string& path, std::string_view name) {
  for (const auto& [loadedPath, loaded] : loadedImages())
    if (loaded.image != nullptr && loaded.file.installName == name) return loadedPath;
  const std::filesystem::path file = std::filesystem::path(name).filename();
  if (file.extension() != ".dylib") return {};
  for (const auto& folder : {std::filesystem::path(path).parent_path(), host::ownFolder()})
    if (std::filesystem::exists(folder / file)) return folder / file;
  return {};
}

/// The version of a library for the device that the one at `path` needs, else of the platform's,
/// all of which every process has but those that it was started without.
std::optional<uint32_t> versionOf(const std::string& path, std::string_view name) {
  if (const std::filesystem::path needed = fileOf(path, name); !needed.empty()) {
    const std::vector<uint8_t> bytes = readFile(needed);
    return readImageFile(kArchitecture, sliceFor(kArchitecture, Reader(bytes))).version;
  }
  static const LibraryVersions platform =
      readLibraryVersions(readTextFile(VARNIX_PLATFORM_LIBRARIES));
  const auto& without = host::processOptions().withoutLibraries;
  const auto found = platform.find(name);
  if (found == platform.end() ||
      std::ranges::find(without, std::filesystem::path(name).stem().string()) != without.end())
    return {};
  return found->second;
}

/// Loads what a library needs beside what every process has: one of the stand-in's own in place of
/// the device's, or others for the device. The paths of the latter.
std::vector<std::string> loadNeeded(const std::string& path, ImageFile& file) {
  findNeeded(file, [&path](std::string_view name) { return versionOf(path, name); });
  std::vector<std::string> others;
  for (const ImageLibrary& library : file.libraries) {
    if (library.isMissing) continue;
    if (const std::filesystem::path needed = fileOf(path, library.name); !needed.empty()) {
      load(needed);
      others.push_back(needed);
    } else if (library.name.find("/CoreGraphics.framework/") != std::string_view::npos) {
      const std::string graphics = host::ownFolder() / "libvarnix-graphics.so";
      if (dlopen(graphics.c_str(), RTLD_NOW | RTLD_GLOBAL) == nullptr)
        throw std::runtime_error(dlerror());
    }
  }
  return others;
}

/// Nil where no such library is loaded, or not yet because it waits for one that it needs.
void* exportedBy(const std::string& path, std::string_view symbol) {
  const auto found = loadedImages().find(path);
  if (found == loadedImages().end() || found->second.image == nullptr) return nullptr;
  return found->second.image->exported(symbol);
}

/// That of another library for the device, else this process's.
void* resolve(const std::vector<std::string>& others, std::string_view symbol) {
  for (const std::string& path : others) {
    if (void* found = exportedBy(path, symbol)) return found;
  }
  if (symbol.starts_with('_') && host::isAbsentFunction(symbol.substr(1))) return nullptr;
  return importedSymbol(symbol);
}

/// Whoever runs the suite counts in this file which processes had the library.
void noteLoaded(const std::string& path) {
  const char* log = std::getenv("VARNIX_EMULATION_LOG");
  std::FILE* file = log == nullptr ? nullptr : std::fopen(log, "a");
  if (file == nullptr) return;
  std::fprintf(file, "%s\n", path.c_str());
  std::fclose(file);
}

/// The platform would refuse such a slice, or its run-time trip over it. Throws with the rule's
/// name.
void refuseUnsound(Reader file, Reader slice) {
  const auto offset = static_cast<uint64_t>(slice.at(0, 0).data() - file.at(0, 0).data());
  if (const auto broken = firstBroken(slice, offset))
    throw std::runtime_error(std::string(broken->rule) + ": " + broken->what);
}

template <class Pointer>
std::span<Pointer> list(const MappedImage& image, std::string_view section) {
  const auto words = image.words(section);
  return {reinterpret_cast<Pointer*>(words.data()), words.size()};
}

/// What compilers write for the run-time.
host::runtime::ImageSections sectionsOf(const MappedImage& image, const std::string& path) {
  host::runtime::ImageSections sections;
  sections.path = path;
  // Two words of 32 bits.
  if (const auto info = image.words("__objc_imageinfo"); !info.empty())
    sections.flags = reinterpret_cast<const uint32_t*>(info.data())[1];
  sections.selectorReferences = list<SEL>(image, "__objc_selrefs");
  sections.classReferences = list<Class>(image, "__objc_classrefs");
  sections.superclassReferences = list<Class>(image, "__objc_superrefs");
  sections.classes = list<Class>(image, "__objc_classlist");
  sections.nonLazyClasses = list<Class>(image, "__objc_nlclslist");
  sections.categories = list<objc::CategoryData*>(image, "__objc_catlist");
  sections.nonLazyCategories = list<objc::CategoryData*>(image, "__objc_nlcatlist");
  sections.protocols = list<objc_protocol*>(image, "__objc_protolist");
  sections.protocolReferences = list<objc_protocol*>(image, "__objc_protorefs");
  return sections;
}

void load(const std::string& path) {
  if (loadedImages().contains(path)) return;
  Loaded& loaded = loadedImages()[path];
  try {
    loaded.bytes = readFile(path);
    const Reader slice = sliceFor(kArchitecture, Reader(loaded.bytes));
    refuseUnsound(Reader(loaded.bytes), slice);
    loaded.file = readImageFile(kArchitecture, slice);
    // A bundle has no name: messages call it by its path.
    if (loaded.file.installName.empty()) loaded.file.installName = loadedImages().find(path)->first;
    const auto others = loadNeeded(path, loaded.file);
    loaded.image = std::make_unique<MappedImage>(
        loaded.file, [&others](std::string_view symbol) { return resolve(others, symbol); });
    adaptMethods(loaded.image->words("__objc_classlist"), loaded.image->words("__objc_catlist"));
    loaded.image->protect();
    describeFrames(readUnwindInfo(loaded.file), loaded.image->start());
    offerHandlers();
  } catch (const std::exception& error) {
    loadedImages().erase(path);
    throw std::runtime_error(path + ": " + error.what());
  }
  noteLoaded(path);
  // What the image runs when it is loaded may load others.
  const MappedImage& image = *loaded.image;
  host::runtime::mapImage(sectionsOf(image, path));
  image.initialise();
}

void* symbol(const std::string& path, const char* name) {
  return exportedBy(path, "_" + std::string(name));
}

std::string pathOf(const void* address) {
  for (const auto& [path, loaded] : loadedImages())
    if (loaded.image != nullptr && loaded.image->contains(address)) return path;
  return {};
}

constexpr host::ImageLoader kLoader{&load, &symbol, &pathOf};

[[gnu::constructor]] void offer() { host::setImageLoader(&kLoader); }

}  // namespace

bool isOfLibrary(const void* address) { return !pathOf(address).empty(); }

}  // namespace varnix::device
