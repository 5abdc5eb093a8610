#include "cells/VNXSubtitleCell.h"

#include "objc/implementation.h"
#include "rows/rows.h"

namespace varnix::pane {

namespace {

struct SubtitleCell : objc::Implementation<VNXSubtitleCell, PSTableCell> {
  PSTableCell* initWithSpecifier(NSInteger, NSString* reuse, PSSpecifier* row) {
    return objc::sendSuper<VNXSubtitleCell>(self(), PSTableCell::initWithSpecifier,
                                            UITableViewCellStyleSubtitle, reuse, row);
  }

  void refresh(PSSpecifier* row) {
    objc::sendSuper<VNXSubtitleCell>(self(), PSTableCell::refreshCellContents, row);
    auto* subtitle = objc::as<NSString>(send(row, PSSpecifier::propertyForKey, kSubtitle()));
    send(send(self(), UITableViewCell::detailTextLabel), UILabel::setText, subtitle);
    // The disc of colours says nothing to those who do not see it.
    send(self(), UIAccessibility::setAccessibilityLabel, send(row, PSSpecifier::name));
    send(self(), UIAccessibility::setAccessibilityValue, subtitle);
  }
};

}  // namespace
}  // namespace varnix::pane

OBJC_PRIVATE_CLASS_NAMED(
    VNXSubtitleCell, PSTableCell, varnix::pane::SubtitleCell, PSTableCell,
    objc::Implements<PSTableCell::initWithSpecifier,
                     &varnix::pane::SubtitleCell::initWithSpecifier>,
    objc::Implements<PSTableCell::refreshCellContents, &varnix::pane::SubtitleCell::refresh>)
