// Sections of class data, and categories.
#include <algorithm>
#include <cctype>

#include "rules/class_data.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

/// Where the run-time looks for class data.
constexpr std::string_view kClassSections[] = {
    "__objc_classlist", "__objc_catlist",   "__objc_selrefs",   "__objc_classrefs",
    "__objc_superrefs", "__objc_protolist", "__objc_nlclslist", "__objc_nlcatlist"};
/// Categories are optional here; lists/classes.txt says whether they exist.
constexpr std::string_view kNeeded = "__objc_classlist";
/// Bits of the image info that iOS 9.3 reads as garbage collection, signed data or other platforms.
constexpr uint32_t kForeignInfo = 0xffffff2f;

const std::vector<CategoryEntry>& categoriesOf(const ClassData& data) { return data.categories; }

bool isInData(const SectionHeader& section) {
  return section.segmentName == "__DATA" || section.segmentName == "__DATA_CONST" ||
         section.segmentName == "__DATA_DIRTY";
}

std::vector<SectionHeader> named(const ClassData& data, std::string_view name) {
  std::vector<SectionHeader> result;
  for (const SectionHeader& section : data.image().sections)
    if (section.name == name) result.push_back(section);
  return result;
}

void sectionsFit(const ClassData& data, const Say& say) {
  const uint64_t size = data.pointerSize();
  for (const std::string_view name : kClassSections) {
    const auto found = named(data, name);
    if (found.empty()) continue;
    if (found.size() != 1 || !isInData(found[0]) || found[0].size == 0 ||
        found[0].size % size != 0 || found[0].address % size != 0)
      say(std::string(name) + ": twice, elsewhere, or not whole words");
  }
}

std::string imageInfoFits(const ClassData& data) {
  const auto found = named(data, "__objc_imageinfo");
  const auto& sections = data.image().sections;
  const bool hasClassData = std::ranges::any_of(
      sections, [](const SectionHeader& section) { return section.name.starts_with("__objc_"); });
  if (found.empty() && !hasClassData) return {};
  if (found.size() != 1 || !isInData(found[0]) || found[0].size != 8)
    return "missing, twice, elsewhere, or of another size";
  const auto place = data.image().place(found[0].address);
  if (!place) return "not in the file";
  const uint32_t version = data.image().bytes.u32(*place);
  const uint32_t flags = data.image().bytes.u32(*place + 4);
  return unless(version == 0 && (flags & kForeignInfo) == 0,
                "version " + std::to_string(version) + ", flags " + hex(flags));
}

bool isIdentifier(std::string_view name) {
  return !name.empty() && std::isdigit(static_cast<unsigned char>(name[0])) == 0 &&
         std::ranges::all_of(name,
                             [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
}

std::string targetFits(const ClassData& data, const CategoryEntry& it) {
  if (!it.listed.isOurs() || it.listed.target % data.pointerSize() != 0) return "not here";
  if (it.target.bound == nullptr) return "not a class of another library";
  const std::string_view name = it.target.bound->symbol;
  return unless(name.starts_with("_OBJC_CLASS_$_") &&
                    (it.target.bound->mayBeMissing() || name == "_OBJC_CLASS_$_NSObject"),
                printable(name) + " must be there");
}

constexpr ClassRule kCategories[] = {
    {"classes.present", "A library has classes.", whole<[](const ClassData& data) {
       return unless(!data.image().isDylib() || !named(data, kNeeded).empty(),
                     std::string(kNeeded) + " is missing");
     }>,
     Asker::project},
    {"classes.image-info", "Image info exists, has version 0, and has no flags of other platforms.",
     whole<imageInfoFits>},
    {"classes.sections", "Each of the run-time's lists is one section of whole words in data.",
     sectionsFit},
    {"categories.class",
     "A category extends the root class or a class that may be missing, in another library.",
     each<categoriesOf, targetFits>, Asker::project},
    {"categories.name", "A category has a name.",
     each<categoriesOf,
          [](const ClassData&, const CategoryEntry& it) {
            if (!it.name.wrong.empty()) return it.name.wrong;
            return unless(isIdentifier(it.name.text), printable(it.name.text) + " is not a name");
          }>},
    {"categories.methods", "A category adds only methods.",
     each<categoriesOf,
          [](const ClassData&, const CategoryEntry& it) {
            return unless((!it.methods.empty() || !it.classMethods.empty()) &&
                              it.protocols.isNil() && it.properties.isNil(),
                          "no methods, or something else");
          }>,
     Asker::project},
    {"categories.load",
     "A category with +load is in the list of those to which the run-time sends it.",
     each<categoriesOf,
          [](const ClassData& data, const CategoryEntry& it) {
            const bool loads = std::ranges::any_of(
                it.classMethods, [](const MethodEntry& each) { return each.name.text == "load"; });
            return unless(!loads || data.loadedEarly.contains(it.listed.target), "not listed");
          }>},
};

}  // namespace

std::span<const ClassRule> categoryRules() { return kCategories; }

}  // namespace varnix::device
