// The stand-in's cell: labels, a picture, a view at the right edge.
#pragma once

#include "UIKit/UIView.h"
#include "platform/UIKitLists.h"

namespace host {

/// What a cell shows at its right edge without a view of its own.
enum class Accessory : NSInteger { none, disclosure, detail, checkmark };

struct TableViewCell : View {
  HOST_EXPORT TableViewCell* initWithStyle(NSInteger style, NSString* reuseIdentifier);

  UILabel* textLabelOf() { return textLabel; }
  UILabel* detailLabelOf() { return detailLabel; }
  UIImageView* imageViewOf() { return imageView; }
  void setAccessoryView(UIView* view);
  NSInteger accessoryTypeOf() { return static_cast<NSInteger>(accessory); }
  void setAccessoryType(NSInteger type) { accessory = static_cast<Accessory>(type); }

  NSInteger style;
  Strong<NSString> reuseIdentifier;
  Strong<UIView> contentView;
  Strong<UILabel> textLabel;
  Strong<UILabel> detailLabel;
  Strong<UIImageView> imageView;
  Strong<UIView> accessoryView;
  Accessory accessory;
  NSInteger selectionStyle;
};

}  // namespace host
