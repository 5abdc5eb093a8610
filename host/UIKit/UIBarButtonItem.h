// The stand-in's bar items and the navigation item that holds them.
#pragma once

#include <map>
#include <utility>

#include "objc/define.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace host {
struct BarItem : UIBarButtonItem {
  Strong<NSString> title;
  Strong<UIImage> image;
  NSInteger tag;
};

struct BarButtonItem : BarItem {
  BarButtonItem* initWithImage(UIImage* picture, NSInteger buttonStyle, NSObject* receiver,
                               SEL message);
  void setBackground(UIImage* picture, NSUInteger state, NSInteger metrics);
  UIImage* background(NSUInteger state, NSInteger metrics);
  /// Acts like a tap: sends the action to the target, with the item.
  void press();

  NSInteger style;
  NSObject* target;  ///< not kept alive
  SEL action;
  std::map<std::pair<NSUInteger, NSInteger>, Strong<UIImage>> backgrounds;
};

struct NavigationItem : UINavigationItem {
  NavigationItem* initWithTitle(NSString* text);

  Strong<NSString> title;
  Strong<UIBarButtonItem> right;
  Strong<UIBarButtonItem> left;
};

}  // namespace host
