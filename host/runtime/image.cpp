// Binaries: taking over their sections, running their +load, listing them.
#include "image.h"

#include <algorithm>
#include <cstring>
#include <unordered_set>

#include "internal.h"
#include "lists.h"

namespace host::runtime {

namespace {

struct Image {
  std::string path;
  std::vector<Class> classes;
};

/// Every binary with classes or categories, in the order of loading. Guarded by the lock.
std::vector<Image>& images() {
  static auto* all = new std::vector<Image>;
  return *all;
}

/// A +load that is yet to run: the class, and the implementation.
struct Load {
  Class cls;
  IMP implementation;
};

/// The list's own +load: a category's takes the place of the class's in the class, but both run.
IMP loadMethodIn(void* list) {
  IMP found = nullptr;
  forEachEntry<objc::MethodEntry<IMP>>(list, [&](objc::MethodEntry<IMP>& entry) {
    if (std::strcmp(entry.name, "load") == 0) found = entry.implementation;
  });
  return found;
}

class LoadOrder {
 public:
  /// Where classes have their +load, noted before they are taken over.
  void note(std::span<Class> classes) {
    for (Class cls : classes) {
      if (cls == nullptr) continue;
      const auto* ro = static_cast<objc::ClassRo*>(cls->isa->data);
      if (IMP load = loadMethodIn(ro->methods)) waiting_[cls] = load;
    }
  }
  void add(std::span<Class> classes) {
    for (Class cls : classes) add(cls);
  }
  void add(std::span<objc::CategoryData*> categories) {
    for (const objc::CategoryData* category : categories) {
      if (category == nullptr || !isMapped(category->cls)) continue;
      if (IMP load = loadMethodIn(category->classMethods)) order_.push_back({category->cls, load});
    }
  }
  void run() const {
    static SEL load = sel_registerName("load");
    for (const Load& one : order_)
      reinterpret_cast<void (*)(Class, SEL)>(one.implementation)(one.cls, load);
  }

 private:
  void add(Class cls) {
    if (cls == nullptr || !isMapped(cls)) return;
    add(cls->superclass);
    if (const auto found = waiting_.extract(cls); !found.empty())
      order_.push_back({cls, found.mapped()});
  }

  std::unordered_map<Class, IMP> waiting_;
  std::vector<Load> order_;
};

/// A nil class in a code's reference, where the phone lacks the class.
void dropMissing(std::span<Class> references, std::span<Class> classes) {
  const std::unordered_set<Class> own(classes.begin(), classes.end());
  for (Class& reference : references)
    if (own.contains(reference) && !isMapped(reference)) reference = nullptr;
}

std::string pathOf(const ImageSections& image) {
  if (!image.path.empty()) return image.path;
  for (Class cls : image.classes)
    if (cls != nullptr) return binaryOf(cls);
  return {};
}

void mapProtocols(const ImageSections& image) {
  for (objc_protocol*& protocol : image.protocols)
    if (protocol != nullptr) protocol = registerProtocol(protocol);
  for (objc_protocol*& reference : image.protocolReferences)
    if (reference != nullptr) reference = registerProtocol(reference);
}

}  // namespace

void mapImage(const ImageSections& image) {
  LoadOrder loads;
  {
    std::scoped_lock guard(lock());
    for (SEL& reference : image.selectorReferences) {
      if (reference != nullptr)
        reference = sel_registerName(reinterpret_cast<const char*>(reference));
    }
    mapProtocols(image);
    loads.note(image.nonLazyClasses);
    mapClasses(image.classes);
    for (const objc::CategoryData* category : image.categories) {
      if (category == nullptr) continue;
      const bool isWhole = (image.flags & kHasCategoryClassProperties) != 0;
      mapCategory(*category, isWhole
                                 ? static_cast<const CompiledCategory*>(category)->classProperties
                                 : nullptr);
    }
    dropMissing(image.classReferences, image.classes);
    dropMissing(image.superclassReferences, image.classes);
    loads.add(image.nonLazyClasses);
    loads.add(image.nonLazyCategories);
    if (std::string path = pathOf(image); !path.empty())
      images().push_back({std::move(path), {image.classes.begin(), image.classes.end()}});
  }
  loads.run();
}

}  // namespace host::runtime

using namespace host::runtime;

extern "C" {

/// The same for a binary without code of a compiler's: its classes and categories.
HOST_EXPORT void objc_mapImage(Class* classes, Class* classesEnd, objc::CategoryData** categories,
                               objc::CategoryData** categoriesEnd) {
  ImageSections image;
  image.classes = {classes, classesEnd};
  image.categories = {categories, categoriesEnd};
  mapImage(image);
}

/// The caller frees the list, not the names.
HOST_EXPORT const char** objc_copyImageNames(unsigned* count) {
  std::scoped_lock guard(lock());
  std::vector<const char*> names;
  for (const Image& image : images()) names.push_back(keptName(image.path));
  return copyList(names, count);
}

HOST_EXPORT const char** objc_copyClassNamesForImage(const char* path, unsigned* count) {
  std::scoped_lock guard(lock());
  std::vector<const char*> names;
  for (const Image& image : images()) {
    if (path == nullptr || image.path != path) continue;
    for (Class cls : image.classes)
      if (isMapped(cls)) names.push_back(class_getName(cls));
  }
  return copyList(names, count);
}

HOST_EXPORT const char* class_getImageName(Class cls) {
  if (cls == nullptr) return nullptr;
  std::scoped_lock guard(lock());
  for (const Image& image : images())
    if (std::ranges::find(image.classes, cls) != image.classes.end()) return keptName(image.path);
  return nullptr;
}
}
