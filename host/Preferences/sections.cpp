#include "Preferences/sections.h"

namespace host {

std::vector<Section> sectionsOf(NSArray* specifiers) {
  std::vector<Section> sections;
  const NSUInteger count = send(specifiers, NSArray::count);
  for (NSUInteger i = 0; i < count; ++i) {
    auto* row = static_cast<PSSpecifier*>(send(specifiers, NSArray::objectAtIndex, i));
    const bool isGroup = send(row, PSSpecifier::cellType) == PSGroupCell;
    if (isGroup || sections.empty()) sections.emplace_back();
    if (isGroup) sections.back().group = row;
    else sections.back().rows.push_back(row);
  }
  return sections;
}

}  // namespace host
