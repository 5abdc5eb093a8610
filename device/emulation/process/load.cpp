// Loads the device's libraries into a hosted process.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <stdexcept>

#include "abi/boundary.h"
#include "loader/mapped_image.h"
#include "macho/files.h"
#include "objc/metadata.h"
#include "process/image_loader.h"
#include "process/process.h"

extern "C" void objc_mapImage(Class* classes, Class* classesEnd, objc::CategoryData** categories,
                              objc::CategoryData** categoriesEnd);

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

/// Which of the stand-in's own libraries stands for a library of the device, where that is not the
/// one which every process has.
void loadStandIns(const ImageFile& file) {
  for (const ImageLibrary& library : file.libraries) {
    if (library.name.find("/CoreGraphics.framework/") == std::string_view::npos) continue;
    const std::string graphics = host::ownFolder() / "libvarnixgraphics.so";
    if (dlopen(graphics.c_str(), RTLD_NOW | RTLD_GLOBAL) == nullptr)
      throw std::runtime_error(dlerror());
  }
}

/// Whoever runs the suite counts in this file which processes had the library.
void noteLoaded(const std::string& path) {
  const char* log = std::getenv("VARNIX_EMULATION_LOG");
  std::FILE* file = log == nullptr ? nullptr : std::fopen(log, "a");
  if (file == nullptr) return;
  std::fprintf(file, "%s\n", path.c_str());
  std::fclose(file);
}

void load(const std::string& path) {
  if (loadedImages().contains(path)) return;
  Loaded& loaded = loadedImages()[path];
  try {
    loaded.bytes = readFile(path);
    loaded.file = readImageFile(kArchitecture, sliceFor(kArchitecture, Reader(loaded.bytes)));
    loadStandIns(loaded.file);
    loaded.image = std::make_unique<MappedImage>(loaded.file, &importedSymbol);
    const auto classes = loaded.image->words("__objc_classlist");
    const auto categories = loaded.image->words("__objc_catlist");
    adaptMethods(classes, categories);
    loaded.image->protect();
    auto* firstClass = reinterpret_cast<Class*>(classes.data());
    auto** firstCategory = reinterpret_cast<objc::CategoryData**>(categories.data());
    objc_mapImage(firstClass, firstClass + classes.size(), firstCategory,
                  firstCategory + categories.size());
  } catch (const std::exception& error) {
    loadedImages().erase(path);
    throw std::runtime_error(path + ": " + error.what());
  }
  noteLoaded(path);
  loaded.image->initialise();
}

void* symbol(const std::string& path, const char* name) {
  const auto found = loadedImages().find(path);
  return found == loadedImages().end() ? nullptr
                                       : found->second.image->exported("_" + std::string(name));
}

constexpr host::ImageLoader kLoader{&load, &symbol};

[[gnu::constructor]] void offer() { host::setImageLoader(&kLoader); }

}  // namespace

bool isOfLibrary(const void* address) {
  for (const auto& [path, loaded] : loadedImages())
    if (loaded.image != nullptr && loaded.image->contains(address)) return true;
  return false;
}

}  // namespace varnix::device
