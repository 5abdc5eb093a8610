// UIKit: tables, labels and other parts of a page of settings.
#pragma once

#include "objc/variable.h"
#include "platform/UIKit.h"

struct UIControl : objc::View<UIControl, UIView> {};

struct UILabel : objc::View<UILabel, UIView> {
  static constexpr Message<"text", NSString*()> text{};
  static constexpr Message<"setText:", void(NSString*)> setText{};
  static constexpr Message<"setTextColor:", void(UIColor*)> setTextColor{};
};

struct UIImageView : objc::View<UIImageView, UIView> {
  static constexpr Message<"initWithImage:", UIImageView*(UIImage*)> initWithImage{};
  static constexpr Message<"image", UIImage*()> image{};
  static constexpr Message<"setImage:", void(UIImage*)> setImage{};
};

inline constexpr NSInteger UITableViewCellStyleDefault = 0;
inline constexpr NSInteger UITableViewCellStyleValue1 = 1;
inline constexpr NSInteger UITableViewCellStyleSubtitle = 3;

struct UITableViewCell : objc::View<UITableViewCell, UIView> {
  static constexpr Message<"textLabel", UILabel*()> textLabel{};
  /// Nil in the default style.
  static constexpr Message<"detailTextLabel", UILabel*()> detailTextLabel{};
  static constexpr Message<"imageView", UIImageView*()> imageView{};
  static constexpr Message<"contentView", UIView*()> contentView{};
  /// The view at the right edge.
  static constexpr Message<"setAccessoryView:", void(UIView*)> setAccessoryView{};
};

struct UITableView : objc::View<UITableView, UIView> {
  /// Above the first group.
  static constexpr Message<"setTableHeaderView:", void(UIView*)> setTableHeaderView{};
};

/// Tells its delegate of each change by searchBar:textDidChange:, and of the search key by
/// searchBarSearchButtonClicked:. Does not keep its delegate alive.
struct UISearchBar : objc::View<UISearchBar, UIView> {
  static constexpr Message<"text", NSString*()> text{};
  static constexpr Message<"setText:", void(NSString*)> setText{};
  static constexpr Message<"setPlaceholder:", void(NSString*)> setPlaceholder{};
  static constexpr Message<"setDelegate:", void(NSObject*)> setDelegate{};
  static constexpr Message<"sizeToFit", void()> sizeToFit{};
};

/// The clipboard.
struct UIPasteboard : objc::View<UIPasteboard, NSObject> {
  static constexpr ClassMessage<"generalPasteboard", UIPasteboard*()> generalPasteboard{};
  /// Nil if it holds no text.
  static constexpr Message<"string", NSString*()> string{};
  static constexpr Message<"setString:", void(NSString*)> setString{};
};

/// What VoiceOver says of an object on the screen.
struct UIAccessibility {
  static constexpr objc::Message<NSObject, "setAccessibilityLabel:", void(NSString*)>
      setAccessibilityLabel{};
  static constexpr objc::Message<NSObject, "setAccessibilityValue:", void(NSString*)>
      setAccessibilityValue{};
};
