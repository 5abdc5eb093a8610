// The stand-in's bar items and the navigation item that holds them.
#pragma once

#include <map>
#include <utility>

#include "objc/define.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace host {

struct BarItem : UIBarButtonItem {
  NSString* titleOf() { return title; }
  void setTitle(NSString* text) {
    title = Strong<NSString>::adopt(send<NSString*>(text, "copy"_sel));
  }
  UIImage* imageOf() { return image; }
  void setImage(UIImage* value) { image = Strong<UIImage>::retain(value); }
  NSInteger tagOf() { return tag; }
  void setTag(NSInteger value) { tag = value; }

  Strong<NSString> title;
  Strong<UIImage> image;
  NSInteger tag;
};

struct BarButtonItem : BarItem {
  BarButtonItem* initWithImage(UIImage* picture, NSInteger buttonStyle, NSObject* receiver,
                               SEL message);
  NSInteger styleOf() { return style; }
  NSObject* targetOf() { return target; }
  void setTarget(NSObject* receiver) { target = receiver; }
  SEL actionOf() { return action; }
  void setAction(SEL message) { action = message; }
  void setBackground(UIImage* picture, NSUInteger state, NSInteger metrics);
  UIImage* background(NSUInteger state, NSInteger metrics);
  /// What a finger does: the action goes to the target, with the item.
  void press();

  NSInteger style;
  NSObject* target;  ///< not kept alive
  SEL action;
  std::map<std::pair<NSUInteger, NSInteger>, Strong<UIImage>> backgrounds;
};

struct NavigationItem : UINavigationItem {
  NavigationItem* initWithTitle(NSString* text);
  NSString* titleOf() { return title; }
  void setTitle(NSString* text) {
    title = Strong<NSString>::adopt(send<NSString*>(text, "copy"_sel));
  }
  UIBarButtonItem* rightItem() { return right; }
  void setRightItem(UIBarButtonItem* item) { right = Strong<UIBarButtonItem>::retain(item); }
  UIBarButtonItem* leftItem() { return left; }
  void setLeftItem(UIBarButtonItem* item) { left = Strong<UIBarButtonItem>::retain(item); }

  Strong<NSString> title;
  Strong<UIBarButtonItem> right;
  Strong<UIBarButtonItem> left;
};

}  // namespace host
