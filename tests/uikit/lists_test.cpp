// Controls, tables, fields and the clipboard.
#include <sys/wait.h>
#include <unistd.h>

#include "platform/UIKitLists.h"
#include "support/pane.h"

namespace {

using namespace test;

std::vector<std::string> heard;

class Lists : public Pane {
 protected:
  void SetUp() override {
    start("com.example.app");
    Class cls = objc_allocateClassPair(objc_getClass("NSObject"), "Listener", 0);
    auto add = [&](SEL selector, auto function, const char* types) {
      class_addMethod(cls, selector, reinterpret_cast<IMP>(+function), types);
    };
    add(
        "changed:"_sel,
        [](NSObject*, SEL, NSObject* control) {
          heard.push_back(std::string("changed ") + class_getName(control->isa));
        },
        "v@:@");
    add(
        "searchBar:textDidChange:"_sel,
        [](NSObject*, SEL, NSObject*, NSString* text) {
          heard.push_back("typed " + std::string(host::text(text)));
        },
        "v@:@@");
    add(
        "searchBarSearchButtonClicked:"_sel,
        [](NSObject*, SEL, NSObject*) { heard.emplace_back("searched"); }, "v@:@");
    objc_registerClassPair(cls);
    listener = make<NSObject>("Listener");
  }
  std::vector<std::string> newlyHeard() { return std::exchange(heard, {}); }
  static constexpr NSUInteger kValueChanged = 1 << 12;

  NSObject* listener = nullptr;
};

TEST_F(Lists, ASwitchTellsOfAFingerAlone) {
  auto* toggle = make<NSObject>("UISwitch");
  auto add = [&] {
    send<void>(toggle, "addTarget:action:forControlEvents:"_sel, listener, "changed:"_sel.get(),
               kValueChanged);
  };
  auto flip = [&] { send<void>(toggle, "standIn_flip"_sel); };
  add();
  send<void>(toggle, "setOn:animated:"_sel, true, true);
  EXPECT_TRUE(send<bool>(toggle, "isOn"_sel));
  EXPECT_EQ(newlyHeard(), std::vector<std::string>{});
  flip();
  EXPECT_FALSE(send<bool>(toggle, "isOn"_sel));
  EXPECT_EQ(newlyHeard(), std::vector<std::string>{"changed UISwitch"});
  send<void>(toggle, "setEnabled:"_sel, false);
  flip();
  EXPECT_FALSE(send<bool>(toggle, "isOn"_sel));
  send<void>(toggle, "setEnabled:"_sel, true);
  send<void>(toggle, "removeTarget:action:forControlEvents:"_sel, static_cast<NSObject*>(nullptr),
             static_cast<SEL>(nullptr), kValueChanged);
  flip();
  EXPECT_EQ(newlyHeard(), std::vector<std::string>{});
  EXPECT_TRUE(send<bool>(toggle, "isOn"_sel));
}

TEST_F(Lists, ASearchFieldTellsOfTypedText) {
  auto* field = make<UISearchBar>("UISearchBar");
  send(field, UISearchBar::setDelegate, listener);
  send(field, UISearchBar::setText, "set"_ns);
  EXPECT_EQ(newlyHeard(), std::vector<std::string>{});
  send<void>(field, "standIn_type:"_sel, "typed"_ns);
  send<void>(field, "standIn_pressSearch"_sel);
  EXPECT_EQ(newlyHeard(), (std::vector<std::string>{"typed typed", "searched"}));
  EXPECT_EQ(host::text(send(field, UISearchBar::text)), "typed");
  send(field, UISearchBar::sizeToFit);
  EXPECT_EQ(send<CGRect>(field, "frame"_sel).size.height, 44);
  // A delegate need not listen.
  send(field, UISearchBar::setDelegate, field);
  send<void>(field, "standIn_type:"_sel, "more"_ns);
  send(field, UISearchBar::setDelegate, nullptr);
  send<void>(field, "standIn_type:"_sel, "more"_ns);
  EXPECT_EQ(newlyHeard(), std::vector<std::string>{});
}

TEST_F(Lists, ACellHasTheLabelsOfItsStyle) {
  for (NSInteger style : {0, 1, 2, 3}) {
    auto* cell = send<UITableViewCell*>(objc_getClass("UITableViewCell"), "alloc"_sel);
    cell = send<UITableViewCell*>(cell, "initWithStyle:reuseIdentifier:"_sel, style, "kind"_ns);
    objc_autorelease(cell);
    EXPECT_EQ(host::text(send<NSString*>(cell, "reuseIdentifier"_sel)), "kind");
    send(send(cell, UITableViewCell::textLabel), UILabel::setText, "title"_ns);
    EXPECT_EQ(host::text(send(send(cell, UITableViewCell::textLabel), UILabel::text)), "title");
    EXPECT_NE(send(cell, UITableViewCell::imageView), nullptr);
    EXPECT_EQ(send(cell, UITableViewCell::detailTextLabel) == nullptr, style == 0) << style;
    auto* first = make<UIView>("UIView");
    auto* second = make<UIView>("UIView");
    send(cell, UITableViewCell::setAccessoryView, first);
    send(cell, UITableViewCell::setAccessoryView, second);
    EXPECT_EQ(send<NSObject*>(first, "superview"_sel), nullptr);
    EXPECT_EQ(send<NSObject*>(second, "superview"_sel), cell);
    send(cell, UITableViewCell::setAccessoryView, nullptr);
    EXPECT_EQ(send<NSObject*>(second, "superview"_sel), nullptr);
  }
}

TEST_F(Lists, ATableWithoutADataSourceHasNoRows) {
  auto* table = make<UITableView>("UITableView");
  EXPECT_EQ(send<NSInteger>(table, "numberOfSections"_sel), 1);
  EXPECT_EQ(send<NSInteger>(table, "numberOfRowsInSection:"_sel, NSInteger{0}), 0);
  send<void>(table, "layoutIfNeeded"_sel);
  send<void>(table, "reloadData"_sel);
  auto* path = send<NSObject*>(objc_getClass("NSIndexPath"), "indexPathForRow:inSection:"_sel,
                               NSInteger{0}, NSInteger{0});
  EXPECT_EQ(send<NSObject*>(table, "cellForRowAtIndexPath:"_sel, path), nullptr);
  send<void>(table, "standIn_pressRowAtIndexPath:"_sel, path);
  EXPECT_EQ(send<NSObject*>(table, "indexPathForSelectedRow"_sel), nullptr);
}

TEST_F(Lists, PlacesAreEqualByRowAndSection) {
  auto place = [](NSInteger row, NSInteger section) {
    return send<NSObject*>(objc_getClass("NSIndexPath"), "indexPathForRow:inSection:"_sel, row,
                           section);
  };
  EXPECT_TRUE(send(place(1, 2), NSObject::isEqual, place(1, 2)));
  EXPECT_EQ(send(place(1, 2), NSObject::hash), send(place(1, 2), NSObject::hash));
  EXPECT_FALSE(send(place(1, 2), NSObject::isEqual, place(2, 1)));
  EXPECT_FALSE(send(place(1, 2), NSObject::isEqual, place(1, 1)));
  EXPECT_FALSE(send(place(1, 2), NSObject::isEqual, nullptr));
  EXPECT_FALSE(send(place(1, 2), NSObject::isEqual, listener));
}

TEST_F(Lists, WhatIsSpokenIsKept) {
  auto* view = make<UIView>("UIView");
  EXPECT_EQ(send<NSString*>(view, "accessibilityLabel"_sel), nullptr);
  send(view, UIAccessibility::setAccessibilityLabel, "label"_ns);
  send(view, UIAccessibility::setAccessibilityValue, "value"_ns);
  EXPECT_EQ(host::text(send<NSString*>(view, "accessibilityLabel"_sel)), "label");
  EXPECT_EQ(host::text(send<NSString*>(view, "accessibilityValue"_sel)), "value");
  send(view, UIAccessibility::setAccessibilityLabel, nullptr);
  EXPECT_EQ(send<NSString*>(view, "accessibilityLabel"_sel), nullptr);
}

class Clipboard : public Pane {
 protected:
  void startHere() { start("com.example.app"); }
  static std::string read() {
    NSString* text = send(UIPasteboard::generalPasteboard(), UIPasteboard::string);
    return text == nullptr ? "nil" : std::string(host::text(text));
  }
  static void write(NSString* text) {
    send(UIPasteboard::generalPasteboard(), UIPasteboard::setString, text);
  }
};

TEST_F(Clipboard, HoldsOneText) {
  startHere();
  EXPECT_EQ(read(), "nil");
  write("one"_ns);
  write("two"_ns);
  EXPECT_EQ(read(), "two");
  write(""_ns);
  EXPECT_EQ(read(), "");
  write(nullptr);
  write(nullptr);
  EXPECT_EQ(read(), "nil");
}

TEST_F(Clipboard, IsThatOfAllProcesses) {
  const pid_t child = fork();
  if (child == 0) {
    startHere();
    write("from a child"_ns);
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  startHere();
  EXPECT_EQ(read(), "from a child");
}

TEST_F(Clipboard, WhatIsNoTextIsNothing) {
  startHere();
  write("x"_ns);
  const auto file = folder.path() + "/var/mobile/Library/Caches/com.apple.UIKit.pboard/general";
  ASSERT_TRUE(std::filesystem::exists(file));
  std::ofstream(file) << "\xff";
  EXPECT_EQ(read(), "nil");
}

}  // namespace
