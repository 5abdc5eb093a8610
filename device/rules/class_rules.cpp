// Classes and what they point to.
#include <algorithm>

#include "macho/format.h"
#include "rules/class_views.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

/// The bits that the run-time takes as the address in a class's last word.
constexpr uint64_t kDataMask = 0x00007ffffffffff8;

constexpr std::string_view kClass = "_OBJC_CLASS_$_", kMetaclass = "_OBJC_METACLASS_$_";
constexpr std::string_view kRootMetaclass = "_OBJC_METACLASS_$_NSObject";

const std::vector<ClassEntry>& classesOf(const ClassData& data) { return data.classes; }
const std::vector<ClassPointer>& pointersOf(const ClassData& data) { return data.pointers; }
const std::vector<Writable>& writablesOf(const ClassData& data) { return data.writables; }

/// The metaclass of an imported superclass.
std::string metaclassName(const ClassEntry& it) {
  const std::string_view name = it.half->superclass.bound->symbol;
  if (!name.starts_with(kClass)) return {};
  return std::string(kMetaclass) + std::string(name.substr(kClass.size()));
}

std::string superclassFits(const ClassData& data, const ClassEntry& it) {
  const ClassPointer &super = it.half->superclass, &metaSuper = it.meta->superclass;
  if (super.isNil() != ((it.half->flags & kClassIsRoot) != 0)) return "its flags say otherwise";
  if (super.isNil()) return {};
  if (super.bound != nullptr)
    return unless(
        metaSuper.isBoundTo(metaclassName(it)),
        "its metaclass does not inherit from that of " + std::string(super.bound->symbol));
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
  if (std::ranges::count_if(data.classes, isSame) != 1)
    return "another class has the same metaclass";
  if (!it.meta) return {};
  const ClassPointer& isa = it.meta->isa;
  return unless(isa.isBoundTo(kRootMetaclass) && !isa.bound->mayBeMissing(),
                "its metaclass's class is not the root metaclass");
}

std::string pairIsEquallyWeak(const ClassData&, const ClassEntry& it) {
  const BoundWord *super = it.half->superclass.bound, *meta = it.meta->superclass.bound;
  if (super == nullptr) return {};
  return unless(meta != nullptr && super->mayBeMissing() == meta->mayBeMissing() &&
                    super->library == meta->library,
                "only one of class and metaclass may be missing, or their libraries differ");
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

constexpr ClassRule kClasses[] = {
    {"classes.pointers", "A pointer in class data is rebased or bound, unless it is nil.",
     each<pointersOf, pointerIsFixed>},
    {"classes.writable", "Data that the run-time changes is in a writable data segment.",
     each<writablesOf, canBeWritten>},
    {"classes.listed", "The list of classes has only classes in this image, each once.",
     each<classesOf,
          [](const ClassData&, const ClassEntry& it) {
            return unless(it.listed.isOurs() && !it.isListedTwice, "not here, or listed twice");
          }>},
    {"classes.aligned", "A class begins at a multiple of a pointer's size.",
     each<halves,
          [](const ClassData& data, const ClassHalf& it) {
            return unless(it.address % data.pointerSize() == 0, "at " + hex(it.address));
          }>},
    {"classes.isa", "A class has its own metaclass, whose class is the root metaclass.",
     each<classesOf, isaFits>},
    {"classes.superclass",
     "A class's superclass is known here, and its metaclass inherits from the superclass's.",
     each<wholeClasses, superclassFits>},
    {"classes.weak-pair", "A superclass and its metaclass may be missing only together.",
     each<wholeClasses, pairIsEquallyWeak>},
    {"classes.cache", "A class begins with the run-time's empty cache.",
     each<halves,
          [](const ClassData&, const ClassHalf& it) {
            return unless(
                it.cache.isBoundTo("__objc_empty_cache") && !it.cache.bound->mayBeMissing(),
                "another one");
          }>},
    {"classes.no-table", "The word after the cache, which the run-time fills, is zero.",
     each<halves,
          [](const ClassData&, const ClassHalf& it) { return unless(!it.hasTable, "it is not"); }>},
    {"classes.data", "A class's last word is the address of its data, with no other bits set.",
     each<halves,
          [](const ClassData& data, const ClassHalf& it) {
            return unless(it.data.isOurs() && it.data.target % data.pointerSize() == 0 &&
                              it.data.target <= kDataMask,
                          "data at " + hex(it.data.target));
          }>},
};

}  // namespace

std::span<const ClassRule> classRules() { return kClasses; }

}  // namespace varnix::device
