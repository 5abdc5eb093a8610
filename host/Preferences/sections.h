// The groups of a page: each row that is a group begins a section.
#pragma once

#include <vector>

#include "platform/Preferences.h"

namespace host {

struct Section {
  PSSpecifier* group = nullptr;  ///< nil for rows before the first group
  std::vector<PSSpecifier*> rows;
};

/// Of a page's rows, in order.
std::vector<Section> sectionsOf(NSArray* specifiers);

}  // namespace host
