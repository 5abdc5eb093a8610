#include "cells/VNXPictureCell.h"

#include "objc/implementation.h"
#include "pictures/elements.h"
#include "rows/rows.h"
#include "settings/scope.h"

namespace varnix::pane {

namespace {

struct PictureCell : objc::Implementation<VNXPictureCell, PSTableCell> {
  void refresh(PSSpecifier* row) {
    objc::sendSuper<VNXPictureCell>(self(), PSTableCell::refreshCellContents, row);
    const NSInteger index = indexOf(row);
    if (index < 0 || index >= static_cast<NSInteger>(settings::kElementCount)) return;
    auto* color = objc::as<UIColor>(send(row, PSSpecifier::propertyForKey, kColor()));
    send(send(self(), UITableViewCell::imageView), UIImageView::setImage,
         pictureOf(settings::kElements[index], color));
    // The picture alone: its name is what VoiceOver says.
    send(send(self(), UITableViewCell::textLabel), UILabel::setText, nullptr);
    send(self(), UIAccessibility::setAccessibilityLabel, send(row, PSSpecifier::name));
    send(self(), UIAccessibility::setAccessibilityValue, digitsOf(color));
  }

  /// In the middle; the platform puts pictures at the left edge.
  void layout() {
    objc::sendSuper<VNXPictureCell>(self(), UIView::layoutSubviews);
    const CGRect whole = send(self(), UIView::bounds);
    const CGRect middle{{(whole.size.width - kPictureSize.width) / 2,
                         (whole.size.height - kPictureSize.height) / 2},
                        kPictureSize};
    send(send(self(), UITableViewCell::imageView), UIView::setFrame, middle);
  }
};

}  // namespace
}  // namespace varnix::pane

OBJC_PRIVATE_CLASS_NAMED(
    VNXPictureCell, PSTableCell, varnix::pane::PictureCell, PSTableCell,
    objc::Implements<PSTableCell::refreshCellContents, &varnix::pane::PictureCell::refresh>,
    objc::Implements<UIView::layoutSubviews, &varnix::pane::PictureCell::layout>)
