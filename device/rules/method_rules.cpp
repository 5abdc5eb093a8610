// Lists in class data, and methods.
#include <algorithm>

#include "rules/class_data.h"
#include "rules/subjects.h"

namespace varnix::device {

namespace {

const std::vector<EntryList>& listsOf(const ClassData& data) { return data.lists; }

/// The methods of classes, metaclasses and categories, one list after another.
std::vector<std::vector<MethodEntry>> methodLists(const ClassData& data) {
  std::vector<std::vector<MethodEntry>> lists;
  for (const ClassEntry& entry : data.classes)
    for (const auto& half : {entry.half, entry.meta})
      if (half) lists.push_back(half->methods);
  for (const CategoryEntry& category : data.categories) {
    lists.push_back(category.methods);
    lists.push_back(category.classMethods);
  }
  return lists;
}

std::vector<MethodEntry> methodsOf(const ClassData& data) {
  std::vector<MethodEntry> result;
  for (auto& list : methodLists(data)) result.insert(result.end(), list.begin(), list.end());
  return result;
}

void listsApart(const ClassData& data, const Say& say) {
  for (size_t i = 0; i < data.lists.size(); ++i)
    for (size_t j = 0; j < i; ++j) {
      const EntryList &a = data.lists[j], &b = data.lists[i];
      if (!a.entries.empty() && !b.entries.empty() && a.pointer.target < b.end &&
          b.pointer.target < a.end)
        say(labelOf(b) + ": shares entries with " + labelOf(a));
    }
}

void namesDiffer(const ClassData& data, const Say& say) {
  for (const auto& list : methodLists(data)) {
    std::set<std::string_view> seen;
    for (const MethodEntry& method : list)
      if (!seen.insert(method.name.text).second) say(labelOf(method) + ": twice");
  }
}

bool isSelector(std::string_view name) {
  return !name.empty() && std::ranges::all_of(name, [](char c) { return c > ' ' && c <= '~'; });
}

std::string selectorFits(const ClassData&, const MethodEntry& it) {
  if (!it.name.wrong.empty()) return it.name.wrong;
  return unless(isSelector(it.name.text), printable(it.name.text) + " is not a selector");
}

std::string typesFit(const ClassData& data, const MethodEntry& it) {
  if (!it.types.wrong.empty()) return it.types.wrong;
  const auto types = splitTypes(it.types.text, data.pointerSize());
  const auto arguments = static_cast<size_t>(std::ranges::count(it.name.text, ':'));
  return unless(types && types->size() == 3 + arguments &&
                    ((*types)[1] == "@" || (*types)[1] == "#") && (*types)[2] == ":",
                printable(it.types.text));
}

constexpr ClassRule kMethods[] = {
    {"lists.aligned", "A list of entries begins at a multiple of a pointer's size.",
     each<listsOf,
          [](const ClassData&, const EntryList& it) {
            return unless(it.isAligned, "at " + hex(it.pointer.target));
          }>},
    {"lists.entry-size", "The entries of a list have the size for their kind, and no flags.",
     each<listsOf,
          [](const ClassData&, const EntryList& it) {
            return unless(!it.pointer.isOurs() || !it.isAligned || it.entrySize == it.wantedSize,
                          hex(it.entrySize) + ", not " + hex(it.wantedSize));
          }>},
    {"lists.count", "A list is in this image, is not empty, and ends within its section.",
     each<listsOf,
          [](const ClassData&, const EntryList& it) {
            return unless(it.fits, std::to_string(it.count) + " entries");
          }>},
    {"lists.own", "Each list has only one owner, since the run-time sorts it.", listsApart},
    {"methods.name", "A method's name is a constant string and a valid selector.",
     each<methodsOf, selectorFits>},
    {"methods.once", "No two methods in a list have the same name.", namesDiffer},
    {"methods.types",
     "A method's types are a result, self, _cmd and one for each colon of its name.",
     each<methodsOf, typesFit>},
    {"methods.function", "A method's function is code in this image.",
     each<methodsOf,
          [](const ClassData& data, const MethodEntry& it) {
            return unless(isFunction(data.image(), it.function), hex(it.function.target));
          }>},
};

}  // namespace

std::span<const ClassRule> methodRules() { return kMethods; }

}  // namespace varnix::device
