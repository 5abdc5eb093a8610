// Classes as a whole.
#include <algorithm>
#include <cctype>

#include "macho/format.h"
#include "rules/class_data.h"
#include "rules/format.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

constexpr uint32_t kMeta = 1, kRoot = 2, kConstructs = 4, kDestructsAlone = 0x100;
/// Besides these: hidden, and one that stands for an exception.
constexpr uint32_t kKnownFlags = kMeta | kRoot | kConstructs | 0x10 | kDestructsAlone;
/// What the run-time takes for an address in a class's last word.
constexpr uint64_t kDataMask = 0x00007ffffffffff8;

constexpr std::string_view kClass = "_OBJC_CLASS_$_", kMetaclass = "_OBJC_METACLASS_$_";
constexpr std::string_view kRootClass = "_OBJC_CLASS_$_NSObject",
                           kRootMetaclass = "_OBJC_METACLASS_$_NSObject";

const std::vector<ClassEntry>& classesOf(const ClassData& data) { return data.classes; }
const std::vector<ClassPointer>& pointersOf(const ClassData& data) { return data.pointers; }
const std::vector<Writable>& writablesOf(const ClassData& data) { return data.writables; }

/// Classes and metaclasses.
std::vector<ClassHalf> halves(const ClassData& data) {
  std::vector<ClassHalf> result;
  for (const ClassEntry& entry : data.classes)
    for (const auto& half : {entry.half, entry.meta})
      if (half) result.push_back(*half);
  return result;
}

/// Those whose parts could all be read.
std::vector<ClassEntry> wholeClasses(const ClassData& data) {
  std::vector<ClassEntry> result;
  for (const ClassEntry& entry : data.classes)
    if (entry.half && entry.half->hasData && entry.meta && entry.meta->hasData)
      result.push_back(entry);
  return result;
}

const ClassHalf* listedAt(const ClassData& data, uint64_t address) {
  for (const ClassEntry& entry : data.classes)
    if (entry.half && entry.half->address == address) return &*entry.half;
  return nullptr;
}

/// The metaclass of a superclass that is bound.
std::string metaclassName(const ClassEntry& it) {
  const std::string_view name = it.half->superclass.bound->symbol;
  if (!name.starts_with(kClass)) return {};
  return std::string(kMetaclass) + std::string(name.substr(kClass.size()));
}

std::string superclassFits(const ClassData& data, const ClassEntry& it) {
  const ClassPointer &super = it.half->superclass, &metaSuper = it.meta->superclass;
  if (super.isNil() != ((it.half->flags & kRoot) != 0)) return "its flags say otherwise";
  if (super.isNil()) return {};
  if (super.bound != nullptr)
    return unless(metaSuper.isBoundTo(metaclassName(it)),
                  "the metaclass is not of " + std::string(super.bound->symbol));
  const ClassHalf* listed = listedAt(data, super.target);
  if (listed == nullptr) return "its superclass is not listed";
  return unless(
      metaSuper.isOurs() && listed->isa.isOurs() && metaSuper.target == listed->isa.target,
      "its metaclass has another superclass");
}

std::string isaFits(const ClassData& data, const ClassEntry& it) {
  if (!it.half) return {};
  if (!it.half->isa.isOurs()) return "its metaclass is not here";
  const auto isSame = [&](const ClassEntry& other) {
    return other.half && other.half->isa.target == it.half->isa.target;
  };
  if (std::ranges::count_if(data.classes, isSame) != 1) return "its metaclass is another's too";
  if (!it.meta) return {};
  const ClassPointer& isa = it.meta->isa;
  return unless(isa.isBoundTo(kRootMetaclass) && !isa.bound->mayBeMissing(),
                "the metaclass's is not the root's");
}

std::string pairIsEquallyWeak(const ClassData&, const ClassEntry& it) {
  const BoundWord *super = it.half->superclass.bound, *meta = it.meta->superclass.bound;
  if (super == nullptr) return {};
  return unless(meta != nullptr && super->mayBeMissing() == meta->mayBeMissing() &&
                    super->library == meta->library,
                "one of class and metaclass may be missing, or is another library's");
}

std::string instanceSizeFits(const ClassData& data, const ClassEntry& it) {
  const ClassHalf& half = *it.half;
  const std::string words = std::to_string(half.start) + " to " + std::to_string(half.size);
  if (half.start > half.size || half.size >= 1 << 16) return words;
  if (half.superclass.isNil()) return {};
  if (half.superclass.bound == nullptr) {
    const ClassHalf* listed = listedAt(data, half.superclass.target);
    return unless(listed == nullptr || listed->size == half.start,
                  words + ", behind " + std::to_string(listed == nullptr ? 0 : listed->size));
  }
  const bool isExact = half.superclass.isBoundTo(kRootClass);
  return unless(isExact ? half.start == data.pointerSize() : half.start >= data.pointerSize(),
                words);
}

std::string pointerIsFixed(const ClassData&, const ClassPointer& it) {
  if (it.bound != nullptr) return unless(it.bound->addend == 0, "bound with an addend");
  if (it.target == 0) return unless(!it.isRebased, "nil, but rebased");
  return unless(it.isRebased, "holds " + hex(it.target) + ", but nothing fixes it");
}

std::string canBeWritten(const ClassData& data, const Writable& it) {
  const SegmentCommand* segment = data.image().segmentAt(it.address);
  return unless(segment != nullptr && (segment->protection & macho::kWrite) != 0 &&
                    it.address + it.size <= segment->end() && segment->name.starts_with("__DATA"),
                hex(it.address) + " cannot be written to");
}

std::string flagsFit(const ClassData&, const ClassHalf& it) {
  if (!it.hasData) return {};
  return unless(
      ((it.flags & kMeta) != 0) == it.isMeta && (it.flags & ~kKnownFlags) == 0 && it.reserved == 0,
      hex(it.flags) + ", reserved " + hex(it.reserved));
}

std::string destructionFits(const ClassData&, const ClassHalf& it) {
  if (!it.hasData) return {};
  const bool constructs = it.has(".cxx_construct"), destructs = it.has(".cxx_destruct");
  return unless(((it.flags & kConstructs) != 0) == (constructs || destructs) &&
                    ((it.flags & kDestructsAlone) != 0) == (destructs && !constructs),
                hex(it.flags));
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
    if (!isNameOfClass(half->name.text)) return printable(half->name.text) + " is no name";
  }
  return unless(!it.meta || !it.meta->hasData || it.meta->name.text == it.half->name.text,
                "its metaclass is called otherwise");
}

std::string nameIsItsOwn(const ClassData& data, const ClassEntry& it) {
  const auto count = std::ranges::count_if(data.classes, [&](const ClassEntry& other) {
    return other.half && other.half->name.text == it.half->name.text;
  });
  return unless(count == 1, "another class has this name");
}

constexpr ClassRule kClasses[] = {
    {"classes.pointers", "A pointer of class data is rebased or bound, unless it is nil.",
     each<pointersOf, pointerIsFixed>},
    {"classes.writable", "What the run-time changes lies in a data segment that can be written to.",
     each<writablesOf, canBeWritten>},
    {"classes.listed", "The list of classes has classes of this image, each once.",
     each<classesOf,
          [](const ClassData&, const ClassEntry& it) {
            return unless(it.listed.isOurs() && !it.isListedTwice, "not here, or listed twice");
          }>},
    {"classes.aligned", "A class begins at a multiple of a pointer's size.",
     each<halves,
          [](const ClassData& data, const ClassHalf& it) {
            return unless(it.address % data.pointerSize() == 0, "at " + hex(it.address));
          }>},
    {"classes.isa", "A class has a metaclass of its own, which is one of the root's.",
     each<classesOf, isaFits>},
    {"classes.superclass",
     "A class has a superclass that is known here, and its metaclass that one's metaclass.",
     each<wholeClasses, superclassFits>},
    {"classes.weak-pair", "A superclass and its metaclass may be missing together or not at all.",
     each<wholeClasses, pairIsEquallyWeak>},
    {"classes.cache", "A class begins with the run-time's empty cache.",
     each<halves,
          [](const ClassData&, const ClassHalf& it) {
            return unless(
                it.cache.isBoundTo("__objc_empty_cache") && !it.cache.bound->mayBeMissing(),
                "another one");
          }>},
    {"classes.no-table", "The word behind the cache, which the run-time fills, is zero.",
     each<halves,
          [](const ClassData&, const ClassHalf& it) { return unless(!it.hasTable, "it is not"); }>},
    {"classes.data", "A class's last word is its data's address, with no other bits set.",
     each<halves,
          [](const ClassData& data, const ClassHalf& it) {
            return unless(it.data.isOurs() && it.data.target % data.pointerSize() == 0 &&
                              it.data.target <= kDataMask,
                          "data at " + hex(it.data.target));
          }>},
    {"classes.flags", "A class says whether it is a metaclass, and nothing that compilers do not.",
     each<halves, flagsFit>},
    {"classes.destruction", "A class says so where it constructs or destructs what it holds.",
     each<halves, destructionFits>},
    {"classes.instance-size", "Instances begin where those of the superclass end.",
     each<wholeClasses, instanceSizeFits>},
    {"classes.meta-size", "A metaclass's instance is a class, of five words.",
     each<wholeClasses,
          [](const ClassData& data, const ClassEntry& it) {
            const uint64_t size = 5 * data.pointerSize();
            return unless(it.meta->start == size && it.meta->size == size,
                          std::to_string(it.meta->start) + " to " + std::to_string(it.meta->size));
          }>},
    {"classes.no-layout", "No class says which variables hold references.",
     each<halves,
          [](const ClassData&, const ClassHalf& it) {
            return unless(it.layout.isNil() && it.weakLayout.isNil(), "it does");
          }>},
    {"classes.no-protocols", "No class adopts a protocol, which nothing here would check.",
     each<halves, [](const ClassData&,
                     const ClassHalf& it) { return unless(it.protocols.isNil(), "it does"); }>},
    {"classes.name", "A class has a name, and its metaclass the same.",
     each<classesOf, classNameFits>},
    {"classes.name-once", "No two classes have one name.", each<wholeClasses, nameIsItsOwn>},
    {"classes.load", "A class with +load is listed among those that the run-time sends it to.",
     each<wholeClasses,
          [](const ClassData& data, const ClassEntry& it) {
            return unless(!it.meta->has("load") || data.loadedEarly.contains(it.half->address),
                          "nobody calls it");
          }>},
};

}  // namespace

std::span<const ClassRule> classRules() { return kClasses; }

}  // namespace varnix::device
