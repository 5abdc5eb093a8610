// A class's flags, sizes and name.
#include <algorithm>
#include <cctype>

#include "rules/class_views.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

constexpr uint32_t kConstructs = 4, kHidden = 0x10, kException = 0x20, kCountedByCompiler = 0x80,
                   kDestructsAlone = 0x100, kWeakWithoutCounting = 0x200;
constexpr uint32_t kKnownFlags = kClassIsMeta | kClassIsRoot | kConstructs | kHidden | kException |
                                 kCountedByCompiler | kDestructsAlone | kWeakWithoutCounting;

const std::vector<ClassEntry>& everyClass(const ClassData& data) { return data.classes; }

std::string flagsFit(const ClassData&, const ClassHalf& it) {
  if (!it.hasData) return {};
  return unless(((it.flags & kClassIsMeta) != 0) == it.isMeta && (it.flags & ~kKnownFlags) == 0 &&
                    it.reserved == 0,
                hex(it.flags) + ", reserved " + hex(it.reserved));
}

std::string destructionFits(const ClassData&, const ClassEntry& it) {
  const ClassHalf& half = *it.half;
  const bool constructs = half.has(".cxx_construct"), destructs = half.has(".cxx_destruct");
  // Compilers give a metaclass the flags of its class, and nobody reads them there.
  constexpr uint32_t both = kConstructs | kDestructsAlone;
  const uint32_t ofMeta = it.meta->flags & both;
  return unless(((half.flags & kConstructs) != 0) == (constructs || destructs) &&
                    ((half.flags & kDestructsAlone) != 0) == (destructs && !constructs) &&
                    (ofMeta == 0 || ofMeta == (half.flags & both)),
                hex(half.flags) + ", its metaclass " + hex(it.meta->flags));
}

std::string instanceSizeFits(const ClassData& data, const ClassEntry& it) {
  const ClassHalf& half = *it.half;
  const std::string words = std::to_string(half.start) + " to " + std::to_string(half.size);
  if (half.start > half.size || half.size >= 1 << 16) return words;
  if (half.superclass.isNil()) return {};
  if (half.superclass.bound == nullptr) {
    const ClassHalf* listed = listedAt(data, half.superclass.target);
    return unless(listed == nullptr || listed->size == half.start,
                  words + ", after " + std::to_string(listed == nullptr ? 0 : listed->size));
  }
  const bool isExact = half.superclass.isBoundTo("_OBJC_CLASS_$_NSObject");
  return unless(isExact ? half.start == data.pointerSize() : half.start >= data.pointerSize(),
                words);
}

bool isNameOfClass(std::string_view name) {
  return !name.empty() && std::ranges::all_of(name, [](unsigned char c) {
    return std::isalnum(c) != 0 || c == '_' || c == '$' || c == '.';
  });
}

std::string classNameFits(const ClassData&, const ClassEntry& it) {
  for (const auto& half : {it.half, it.meta}) {
    if (!half || !half->hasData) continue;
    if (!half->name.wrong.empty()) return half->name.wrong;
    if (!isNameOfClass(half->name.text)) return printable(half->name.text) + " is not a name";
  }
  return unless(!it.meta || !it.meta->hasData || it.meta->name.text == it.half->name.text,
                "its metaclass has another name");
}

std::string nameIsItsOwn(const ClassData& data, const ClassEntry& it) {
  const auto count = std::ranges::count_if(data.classes, [&](const ClassEntry& other) {
    return other.half && other.half->name.text == it.half->name.text;
  });
  return unless(count == 1, "another class has this name");
}

constexpr ClassRule kClassShapes[] = {
    {"classes.flags",
     "A class's flags say whether it is a metaclass, and are flags that compilers set.",
     each<halves, flagsFit>},
    {"classes.destruction", "A class's flags say if it constructs or destructs its variables.",
     each<wholeClasses, destructionFits>},
    {"classes.instance-size", "An instance's variables begin where the superclass's end.",
     each<wholeClasses, instanceSizeFits>},
    {"classes.meta-size", "A metaclass's instance is a class, which has five words.",
     each<wholeClasses,
          [](const ClassData& data, const ClassEntry& it) {
            const uint64_t size = 5 * data.pointerSize();
            return unless(it.meta->start == size && it.meta->size == size,
                          std::to_string(it.meta->start) + " to " + std::to_string(it.meta->size));
          }>},
    {"classes.no-arc", "No class has its references counted by the compiler.",
     each<halves,
          [](const ClassData&, const ClassHalf& it) {
            return unless((it.flags & (kCountedByCompiler | kWeakWithoutCounting)) == 0,
                          hex(it.flags));
          }>,
     Asker::project},
    {"classes.no-layout", "No class says which variables hold references.",
     each<halves,
          [](const ClassData&, const ClassHalf& it) {
            return unless(it.layout.isNil() && it.weakLayout.isNil(), "it does");
          }>,
     Asker::project},
    {"classes.no-protocols", "No class adopts a protocol, since nothing here would check it.",
     each<halves, [](const ClassData&,
                     const ClassHalf& it) { return unless(it.protocols.isNil(), "it does"); }>,
     Asker::project},
    {"classes.name", "A class has a name, and its metaclass has the same one.",
     each<everyClass, classNameFits>},
    {"classes.name-once", "No two classes have the same name.", each<wholeClasses, nameIsItsOwn>},
    {"classes.load", "A class with +load is in the list of those to which the run-time sends it.",
     each<wholeClasses,
          [](const ClassData& data, const ClassEntry& it) {
            return unless(!it.meta->has("load") || data.loadedEarly.contains(it.half->address),
                          "not listed");
          }>},
};

}  // namespace

std::span<const ClassRule> classShapeRules() { return kClassShapes; }

}  // namespace varnix::device
