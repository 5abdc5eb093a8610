// Pages of rows: what they show, and what a finger on a row does.
#include "preferences/settings_app.h"

namespace {

using namespace test;

Strong<NSMutableDictionary> values;

NSObject* readValue(NSObject*, SEL, PSSpecifier* row) {
  NSObject* value = send(values, NSDictionary::objectForKey, send(row, PSSpecifier::identifier));
  return value != nullptr ? value : send(row, PSSpecifier::propertyForKey, "default"_ns);
}
void setValue(NSObject*, SEL, NSObject* value, PSSpecifier* row) {
  events().push_back("set " + pages::Row::words(send(row, PSSpecifier::identifier)) + " " +
                     pages::Row::words(value));
  send(values, NSMutableDictionary::setObjectForKey, value, send(row, PSSpecifier::identifier));
}

PSSpecifier* with(PSSpecifier* row, NSString* key, NSObject* value) {
  send(row, PSSpecifier::setProperty, value, key);
  return row;
}

NSArray* detailRows(NSObject* page, SEL) {
  return keptRows(page, [&] { return rowsOf({makeRow("Inside", page, PSStaticTextCell)}); });
}

NSArray* mainRows(NSObject* page, SEL) {
  return keptRows(page, [&] {
    PSSpecifier* choice = makeRow("Choice", page, PSLinkListCell);
    send(choice, PSSpecifier::setValues,
         listOf({NSNumber::numberWithLongLong(1), NSNumber::numberWithLongLong(2)}),
         listOf({"One"_ns, "Two"_ns}));
    with(choice, "default"_ns, NSNumber::numberWithLongLong(1));
    with(choice, "staticTextMessage"_ns, "Choose one."_ns);
    PSSpecifier* button = makeRow("Button", page, PSButtonCell);
    send(button, PSSpecifier::setButtonAction, "pressed:"_sel);
    PSSpecifier* off = makeRow("Off", page, PSLinkCell, objc_getClass("DetailPage"));
    with(off, "enabled"_ns, NSNumber::numberWithBool(false));
    return rowsOf({makeRow("Loose", page, PSStaticTextCell),
                   PSSpecifier::groupSpecifierWithHeader("Head"_ns, "Foot"_ns),
                   makeRow("Switch", page, PSSwitchCell), choice, button,
                   makeRow("Title", page, PSTitleValueCell), PSSpecifier::emptyGroupSpecifier(),
                   makeRow("Link", page, PSLinkCell, objc_getClass("DetailPage")), off,
                   makeRow("Field", page, PSEditTextCell)});
  });
}

class ListController : public SettingsApp {
 protected:
  void SetUp() override {
    SettingsApp::SetUp();
    values = Strong<NSMutableDictionary>::retain(NSMutableDictionary::dictionary());
    main = pageClass("MainPage", mainRows);
    pageClass("DetailPage", detailRows);
    for (const char* name : {"MainPage", "DetailPage"}) {
      Class cls = objc_getClass(name);
      method(cls, "readPreferenceValue:"_sel, readValue, "@@:@");
      method(cls, "setPreferenceValue:specifier:"_sel, setValue, "v@:@@");
      method(
          cls, "pressed:"_sel,
          [](NSObject*, SEL, PSSpecifier* row) {
            events().push_back("pressed " + pages::Row::words(send(row, PSSpecifier::name)));
          },
          "v@:@");
    }
  }
  void put(const char* key, NSObject* value) {
    send(values, NSMutableDictionary::setObjectForKey, value, string(key));
  }
  Class main = nullptr;
};

TEST_F(ListController, ShowsItsRowsInSections) {
  put("Title", "here"_ns);
  put("Switch", NSNumber::numberWithBool(true));
  show(main);
  const auto sections = pages::sections();
  ASSERT_EQ(sections.size(), 3U);
  EXPECT_EQ(sections[0].header, "");
  EXPECT_EQ(sections[1].header, "Head");
  EXPECT_EQ(sections[1].footer, "Foot");
  EXPECT_EQ(sections[2].footer, "");
  EXPECT_EQ(titles(), (std::vector<std::string>{"Loose", "Switch", "Choice", "Button", "Title",
                                                "Link", "Off", "Field"}));
  EXPECT_TRUE(row("Switch").isOn());
  EXPECT_EQ(row("Choice").detail(), "One");
  EXPECT_TRUE(row("Choice").isLink());
  EXPECT_EQ(row("Title").detail(), "here");
  EXPECT_FALSE(row("Title").isLink());
  EXPECT_TRUE(row("Link").isLink());
  EXPECT_TRUE(row("Link").isEnabled());
  EXPECT_FALSE(row("Off").isEnabled());
}

TEST_F(ListController, AFlippedSwitchTellsTheRowsTarget) {
  show(main);
  EXPECT_FALSE(row("Switch").isOn());
  pages::flip(row("Switch"));
  EXPECT_EQ(newEvents(), std::vector<std::string>{"set Switch 1"});
  EXPECT_TRUE(row("Switch").isOn());
  pages::flip(row("Switch"));
  EXPECT_EQ(newEvents(), std::vector<std::string>{"set Switch 0"});
  // A finger on the rest of the row does nothing.
  pages::press(row("Switch"));
  EXPECT_EQ(newEvents(), std::vector<std::string>{});
}

TEST_F(ListController, ADisabledSwitchStays) {
  UIViewController* page = show(main);
  const auto toggle = row("Switch");
  send(toggle.specifier, PSSpecifier::setProperty, NSNumber::numberWithBool(false), "enabled"_ns);
  send<void>(page, "reloadSpecifier:"_sel, toggle.specifier.get());
  EXPECT_FALSE(row("Switch").isEnabled());
  pages::flip(row("Switch"));
  EXPECT_EQ(newEvents(), std::vector<std::string>{});
  EXPECT_FALSE(row("Switch").isOn());
}

TEST_F(ListController, AButtonSendsItsAction) {
  show(main);
  pages::press(row("Button"));
  EXPECT_EQ(newEvents(), std::vector<std::string>{"pressed Button"});
  EXPECT_EQ(pages::depth(), 2U);
}

TEST_F(ListController, ALinkOpensItsPage) {
  UIViewController* page = show(main);
  const auto link = row("Link");
  pages::press(link);
  EXPECT_EQ(pages::depth(), 3U);
  UIViewController* top = pages::topPage();
  EXPECT_STREQ(class_getName(top->isa), "DetailPage");
  EXPECT_EQ(pages::titleOf(top), "Link");
  EXPECT_EQ(send<NSObject*>(top, "specifier"_sel), link.specifier.get());
  EXPECT_EQ(send<NSObject*>(top, "parentController"_sel), page);
  EXPECT_EQ(titles(), std::vector<std::string>{"Inside"});
  EXPECT_TRUE(pages::back());
  EXPECT_EQ(pages::topPage(), page);
}

TEST_F(ListController, APageMayHaveATitleOfItsOwn) {
  method(
      objc_getClass("DetailPage"), "init"_sel,
      [](NSObject* self, SEL selector) -> NSObject* {
        objc_super above{self, objc_getClass("PSListController")};
        auto* made =
            reinterpret_cast<NSObject* (*)(objc_super*, SEL)>(objc_msgSendSuper)(&above, selector);
        send<void>(made, "setTitle:"_sel, "Mine"_ns);
        return made;
      },
      "@@:");
  show(main);
  pages::press(row("Link"));
  EXPECT_EQ(pages::titleOf(pages::topPage()), "Mine");
}

TEST_F(ListController, ADisabledRowOpensNothing) {
  show(main);
  pages::press(row("Off"));
  EXPECT_EQ(pages::depth(), 2U);
}

TEST_F(ListController, RowsWithoutAPageOpenNothing) {
  show(main);
  pages::press(row("Loose"));
  pages::press(row("Title"));
  EXPECT_EQ(pages::depth(), 2U);
  EXPECT_EQ(newEvents(), std::vector<std::string>{});
}

TEST_F(ListController, AChoiceIsMadeOnAPageOfItsOwn) {
  show(main);
  pages::press(row("Choice"));
  EXPECT_EQ(pages::titleOf(pages::topPage()), "Choice");
  auto sections = pages::sections();
  ASSERT_EQ(sections.size(), 1U);
  EXPECT_EQ(sections[0].footer, "Choose one.");
  EXPECT_EQ(titles(), (std::vector<std::string>{"One", "Two"}));
  EXPECT_TRUE(sections[0].rows[0].isTicked());
  EXPECT_FALSE(sections[0].rows[1].isTicked());
  pages::press(sections[0].rows[1]);
  EXPECT_EQ(newEvents(), std::vector<std::string>{"set Choice 2"});
  // The page stays, and the tick moves.
  EXPECT_EQ(pages::depth(), 3U);
  sections = pages::sections();
  EXPECT_FALSE(sections[0].rows[0].isTicked());
  EXPECT_TRUE(sections[0].rows[1].isTicked());
  pages::back();
  EXPECT_EQ(row("Choice").detail(), "Two");
}

TEST_F(ListController, AChoiceShowsItsShortTitle) {
  UIViewController* page = show(main);
  const auto choice = row("Choice");
  send<void>(choice.specifier, "setValues:titles:shortTitles:"_sel,
             send(choice.specifier, PSSpecifier::values), listOf({"One"_ns, "Two"_ns}),
             listOf({"1st"_ns, "2nd"_ns}));
  send<void>(page, "reloadSpecifier:"_sel, choice.specifier.get());
  EXPECT_EQ(row("Choice").detail(), "1st");
  pages::press(row("Choice"));
  EXPECT_EQ(titles(), (std::vector<std::string>{"One", "Two"}));
}

TEST_F(ListController, AnUnknownValueShowsNothing) {
  put("Choice", NSNumber::numberWithLongLong(7));
  show(main);
  EXPECT_EQ(row("Choice").detail(), "");
  pages::press(row("Choice"));
  const auto sections = pages::sections();
  for (const auto& item : sections[0].rows) EXPECT_FALSE(item.isTicked());
}

TEST_F(ListController, TypedTextTellsTheRowsTarget) {
  put("Field", "old"_ns);
  show(main);
  EXPECT_EQ(pages::Row::words(send<NSObject*>(row("Field").control(), "text"_sel)), "old");
  pages::type(row("Field"), "new"_ns);
  EXPECT_EQ(newEvents(), std::vector<std::string>{"set Field new"});
}

TEST_F(ListController, ShowsARowAnewWhenItIsReloaded) {
  put("Title", "before"_ns);
  UIViewController* page = show(main);
  const auto title = row("Title");
  EXPECT_EQ(title.detail(), "before");
  put("Title", "after"_ns);
  EXPECT_EQ(row("Title").detail(), "before");
  send<void>(page, "reloadSpecifierID:animated:"_sel, "Title"_ns, false);
  EXPECT_EQ(row("Title").detail(), "after");
  EXPECT_EQ(row("Title").cell.get(), title.cell.get());
  send<void>(page, "reloadSpecifierID:animated:"_sel, "nothing"_ns, false);
}

TEST_F(ListController, MakesItsRowsAnew) {
  UIViewController* page = show(main);
  const auto before = row("Title");
  put("Title", "after"_ns);
  send<void>(page, "reloadSpecifiers"_sel);
  EXPECT_NE(row("Title").specifier.get(), before.specifier.get());
  EXPECT_EQ(row("Title").detail(), "after");
}

TEST_F(ListController, TakesRowsInAndOut) {
  UIViewController* page = show(main);
  PSSpecifier* link = row("Link").specifier;
  send<void>(page, "insertSpecifier:afterSpecifier:animated:"_sel,
             makeRow("New", page, PSStaticTextCell), link, true);
  EXPECT_EQ(titles(), (std::vector<std::string>{"Loose", "Switch", "Choice", "Button", "Title",
                                                "Link", "New", "Off", "Field"}));
  send<void>(page, "removeSpecifier:animated:"_sel, link, true);
  send<void>(page, "removeContiguousSpecifiers:animated:"_sel,
             listOf({row("New").specifier, row("Off").specifier}), true);
  EXPECT_EQ(titles(),
            (std::vector<std::string>{"Loose", "Switch", "Choice", "Button", "Title", "Field"}));
  EXPECT_FALSE(send<bool>(page, "containsSpecifier:"_sel, link));
  send<void>(page, "insertContiguousSpecifiers:afterSpecifier:animated:"_sel,
             listOf({makeRow("Last", page, PSStaticTextCell)}), static_cast<PSSpecifier*>(nullptr),
             true);
  EXPECT_EQ(titles().back(), "Last");
  send<void>(page, "removeSpecifier:animated:"_sel, static_cast<PSSpecifier*>(nullptr), true);
}

TEST_F(ListController, KnowsWhereARowIs) {
  auto* page = static_cast<PSListController*>(show(main));
  PSSpecifier* off = send(page, PSListController::specifierForID, "Off"_ns);
  auto* path = send<NSIndexPath*>(page, "indexPathForSpecifier:"_sel, off);
  EXPECT_EQ(send(path, NSIndexPath::section), 2);
  EXPECT_EQ(send(path, NSIndexPath::row), 1);
  EXPECT_EQ(send<NSObject*>(page, "specifierAtIndexPath:"_sel, path), off);
  EXPECT_EQ(send(page, PSListController::specifierForID, "nothing"_ns), nullptr);
  EXPECT_EQ(send(page, PSListController::specifierForID, nullptr), nullptr);
  EXPECT_EQ(send<NSObject*>(page, "indexPathForSpecifier:"_sel, static_cast<PSSpecifier*>(nullptr)),
            nullptr);
  for (auto [at, section] : {std::pair{9, 0}, {0, 9}, {-1, 0}, {0, -1}}) {
    EXPECT_EQ(send<NSObject*>(page, "specifierAtIndexPath:"_sel,
                              NSIndexPath::indexPathForRow(at, section)),
              nullptr);
  }
}

TEST_F(ListController, WorksOutsideOfAnyWindow) {
  auto* page = make<PSListController>("MainPage");
  EXPECT_FALSE(send<bool>(page, "isViewLoaded"_sel));
  EXPECT_EQ(send(send(page, PSListController::specifiers), NSArray::count), 10U);
  EXPECT_EQ(send(page, PSListController::cachedCell, nullptr), nullptr);
  send(page, PSListController::reloadSpecifiers);
  EXPECT_EQ(send(page, PSListController::table), nullptr);
}

TEST_F(ListController, ACellIsKnownOnceItHasBeenShown) {
  auto* page = static_cast<PSListController*>(show(main));
  PSSpecifier* link = send(page, PSListController::specifierForID, "Link"_ns);
  EXPECT_EQ(send(page, PSListController::cachedCell, link), row("Link").cell.get());
  EXPECT_EQ(send(page, PSListController::cachedCell, makeRow("Other", page, PSLinkCell)), nullptr);
}

TEST_F(ListController, PagesHearWhenTheyComeAndGo) {
  for (const char* name : {"MainPage", "DetailPage"}) {
    Class cls = objc_getClass(name);
    method(
        cls, "viewDidLoad"_sel,
        [](NSObject* self, SEL) {
          events().push_back(std::string(class_getName(self->isa)) + " loaded");
        },
        "v@:");
    method(
        cls, "viewDidAppear:"_sel,
        [](NSObject* self, SEL, bool) {
          events().push_back(std::string(class_getName(self->isa)) + " came");
        },
        "v@:c");
    method(
        cls, "viewWillDisappear:"_sel,
        [](NSObject* self, SEL, bool) {
          events().push_back(std::string(class_getName(self->isa)) + " goes");
        },
        "v@:c");
  }
  // These call the platform's, as a page's own do.
  method(
      main, "viewWillAppear:"_sel,
      [](NSObject* self, SEL selector, bool animated) {
        events().push_back("MainPage comes");
        objc_super above{self, objc_getClass("PSListController")};
        reinterpret_cast<void (*)(objc_super*, SEL, unsigned char)>(objc_msgSendSuper)(
            &above, selector, animated);
      },
      "v@:c");
  show(main);
  EXPECT_EQ(newEvents(),
            (std::vector<std::string>{"MainPage loaded", "MainPage comes", "MainPage came"}));
  pages::press(row("Link"));
  EXPECT_EQ(newEvents(),
            (std::vector<std::string>{"DetailPage loaded", "MainPage goes", "DetailPage came"}));
  pages::back();
  EXPECT_EQ(newEvents(),
            (std::vector<std::string>{"DetailPage goes", "MainPage comes", "MainPage came"}));
  pages::back();
  EXPECT_EQ(newEvents(), std::vector<std::string>{"MainPage goes"});
}

TEST_F(ListController, ARowMayBringItsOwnCell) {
  Class cell = objc_allocateClassPair(objc_getClass("PSTableCell"), "LoudCell", 0);
  method(
      cell, "refreshCellContentsWithSpecifier:"_sel,
      [](NSObject* self, SEL selector, PSSpecifier* shown) {
        objc_super above{self, objc_getClass("PSTableCell")};
        reinterpret_cast<void (*)(objc_super*, SEL, PSSpecifier*)>(objc_msgSendSuper)(
            &above, selector, shown);
        auto* title = send<NSString*>(self, "title"_sel);
        send<void>(self, "setTitle:"_sel, send(title, NSString::stringByAppendingString, "!"_ns));
      },
      "v@:@");
  objc_registerClassPair(cell);
  UIViewController* page = show(main);
  const auto link = row("Link");
  for (NSObject* named :
       {reinterpret_cast<NSObject*>(cell), static_cast<NSObject*>("LoudCell"_ns)}) {
    send(link.specifier, PSSpecifier::setProperty, named, "cellClass"_ns);
    PSSpecifier* kept = link.specifier;
    send<void>(page, "removeSpecifier:animated:"_sel, kept, false);
    send<void>(page, "insertSpecifier:afterSpecifier:animated:"_sel, kept,
               static_cast<PSSpecifier*>(nullptr), false);
    EXPECT_EQ(row("Link").title(), "Link!");
    EXPECT_STREQ(class_getName(row("Link").cell->isa), "LoudCell");
  }
}

}  // namespace
