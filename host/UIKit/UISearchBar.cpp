// Fields of text: of a search, and of a row.
#include "Foundation/text.h"
#include "UIKit/UIControl.h"

namespace {

constexpr CGFloat kScreenWidth = 320;
constexpr CGFloat kBarHeight = 44;

/// Tells the delegate, if it wants to know.
template <class Selector, class... A>
void tellDelegate(NSObject* delegate, Selector selector, A... arguments) {
  if (delegate != nullptr && send(delegate, NSObject::respondsToSelector, selector.get()))
    send<void>(delegate, selector, arguments...);
}

struct SearchBar : host::View {
  void sizeToFit() { frame.size = {kScreenWidth, kBarHeight}; }
  /// Acts like the keyboard: the text is this one now.
  void type(NSString* typed) {
    send<void>(this, "setText:"_sel, typed);
    tellDelegate(delegate, "searchBar:textDidChange:"_sel, this, textOf());
  }
  void pressSearch() { tellDelegate(delegate, "searchBarSearchButtonClicked:"_sel, this); }
  NSString* textOf() { return send<NSString*>(this, "text"_sel); }

  Strong<NSString> text;
  Strong<NSString> placeholder;
  NSObject* delegate;  ///< not kept alive
};

struct TextField : host::Control {
  void setSecure(bool secure) { isSecure = secure; }
  /// Acts like the keyboard and its return key. A disabled field stays as it is.
  void type(NSString* typed) {
    if (disabled) return;
    tellDelegate(delegate, "textFieldDidBeginEditing:"_sel, this);
    send<void>(this, "setText:"_sel, typed);
    send<void>(this, "sendActionsForControlEvents:"_sel, host::kEditingChanged);
    send<void>(this, "sendActionsForControlEvents:"_sel, host::kEditingDidEnd);
    tellDelegate(delegate, "textFieldDidEndEditing:"_sel, this);
  }

  Strong<NSString> text;
  Strong<NSString> placeholder;
  NSObject* delegate;  ///< not kept alive
  bool isSecure;
};

}  // namespace

OBJC_CLASS_NAMED(UISearchBar, UIView, SearchBar, host::View,
                 objc::Property<"text", &SearchBar::text, objc::Storage::copy>,
                 objc::Property<"placeholder", &SearchBar::placeholder, objc::Storage::copy>,
                 objc::Property<"delegate", &SearchBar::delegate, objc::Storage::assign>,
                 objc::Method<"sizeToFit", &SearchBar::sizeToFit>,
                 objc::Method<"standIn_type:", &SearchBar::type>,
                 objc::Method<"standIn_pressSearch", &SearchBar::pressSearch>)

OBJC_CLASS_NAMED(UITextField, UIControl, TextField, host::Control,
                 objc::Property<"text", &TextField::text, objc::Storage::copy>,
                 objc::Property<"placeholder", &TextField::placeholder, objc::Storage::copy>,
                 objc::Property<"delegate", &TextField::delegate, objc::Storage::assign>,
                 objc::Readable<"isSecureTextEntry", &TextField::isSecure, "_secureTextEntry">,
                 objc::Method<"setSecureTextEntry:", &TextField::setSecure>,
                 objc::Method<"standIn_type:", &TextField::type>)
