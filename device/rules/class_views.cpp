#include "rules/class_views.h"

namespace varnix::device {

std::vector<ClassHalf> halves(const ClassData& data) {
  std::vector<ClassHalf> result;
  for (const ClassEntry& entry : data.classes)
    for (const auto& half : {entry.half, entry.meta})
      if (half) result.push_back(*half);
  return result;
}

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

}  // namespace varnix::device
