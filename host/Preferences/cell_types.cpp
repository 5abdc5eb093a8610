#include "Preferences/cell_types.h"

#include <iterator>

#include "Foundation/text.h"

namespace host {
namespace {

/// In the order of their numbers.
constexpr CellType kCellTypes[] = {
    {"PSGroupCell", "PSTableCell", false, false},
    {"PSLinkCell", "PSTableCell", true, true},
    {"PSLinkListCell", "PSTableCell", true, true},
    {"PSListItemCell", "PSTableCell", false, false},
    {"PSTitleValueCell", "PSTableCell", true, false},
    {"PSSliderCell", "PSControlTableCell", false, false},
    {"PSSwitchCell", "PSSwitchTableCell", false, false},
    {"PSStaticTextCell", "PSTableCell", false, false},
    {"PSEditTextCell", "PSEditableTableCell", false, false},
    {"PSSegmentCell", "PSControlTableCell", false, false},
    {"PSGiantIconCell", "PSTableCell", false, false},
    {"PSGiantCell", "PSTableCell", false, false},
    {"PSSecureEditTextCell", "PSEditableTableCell", false, false},
    {"PSButtonCell", "PSTableCell", false, false},
    {"PSEditTextViewCell", "PSTableCell", false, false},
};

}  // namespace

const CellType* cellType(PSCellType type) {
  if (type < 0 || type >= static_cast<PSCellType>(std::size(kCellTypes))) return nullptr;
  return &kCellTypes[type];
}

PSCellType cellTypeNamed(NSString* name) {
  for (const CellType& type : kCellTypes) {
    if (host::text(name) == type.name) return &type - kCellTypes;
  }
  return -1;
}

}  // namespace host
