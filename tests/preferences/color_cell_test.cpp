// The colour library's cell and picker.
#include "ColorPicker/picker.h"
#include "Foundation/darwin_notify.h"
#include "preferences/settings_app.h"

namespace {

using namespace test;

bool withAlpha = false;
bool withNotification = true;

PSSpecifier* colorRow(NSObject* page, const char* name, NSString* key, NSString* notification) {
  PSSpecifier* row = makeRow(name, page, PSLinkCell);
  if (Class cell = objc_getClass("PFSimpleLiteColorCell"))
    send(row, PSSpecifier::setProperty, reinterpret_cast<NSObject*>(cell), "cellClass"_ns);
  auto* settings = NSMutableDictionary::dictionary();
  auto put = [&](NSString* word, NSObject* value) {
    send(settings, NSMutableDictionary::setObjectForKey, value, word);
  };
  put("defaults"_ns, "com.example.colours"_ns);
  put("key"_ns, key);
  put("fallback"_ns, "#112233"_ns);
  put("alpha"_ns, NSNumber::numberWithBool(withAlpha));
  if (notification != nullptr) put("PostNotification"_ns, notification);
  send(row, PSSpecifier::setProperty, settings, "libcolorpicker"_ns);
  return row;
}

NSArray* colorRows(NSObject* page, SEL) {
  return keptRows(page, [&] {
    NSString* name = withNotification ? "com.example.changed"_ns : nullptr;
    return rowsOf({colorRow(page, "Colour", "tint"_ns, name),
                   colorRow(page, "Other", "other"_ns, "com.example.otherChanged"_ns)});
  });
}

class ColorCell : public SettingsApp {
 protected:
  static constexpr char kFile[] = "/var/mobile/Library/Preferences/com.example.colours.plist";

  void store(const std::string& entries) const { file(kFile, list(entries)); }
  static std::string tint(const std::string& value) {
    return "<key>tint</key><string>" + value + "</string>";
  }
  void showPage() { show(pageClass("ColorPage", colorRows)); }
  std::string stored(const char* key) const {
    NSDictionary* all = NSDictionary::dictionaryWithContentsOfFile(string(kFile));
    return pages::Row::words(send(all, NSDictionary::objectForKey, string(key)));
  }
  static std::string disc() {
    return hex(send<UIColor*>(row("Colour").control(), "backgroundColor"_sel));
  }
  static NSObject* openPicker() {
    pages::press(row("Colour"));
    return host::shownPicker();
  }
};

TEST_F(ColorCell, ShowsTheColourInTheFile) {
  store(tint("#FF8000:0.500000"));
  showPage();
  EXPECT_EQ(row("Colour").title(), "Colour");
  EXPECT_EQ(row("Colour").detail(), "#FF8000");
  EXPECT_EQ(disc(), "#ff800080");
}

TEST_F(ColorCell, ShowsTheFallbackWithoutAColour) {
  showPage();
  EXPECT_EQ(row("Colour").detail(), "#112233");
  store("<key>tint</key><integer>4</integer>");
  host::postDarwinNotification("com.example.changed");
  EXPECT_EQ(row("Colour").detail(), "#112233");
}

TEST_F(ColorCell, WritesTheChosenColourAndTells) {
  store(tint("#FF8000") + "<key>other</key><true/>");
  showPage();
  NSObject* picker = openPicker();
  ASSERT_NE(picker, nullptr);
  EXPECT_EQ(host::pickerColor(picker), "#FF8000:1.000000");
  EXPECT_FALSE(host::pickerHasAlpha(picker));
  host::choosePickerColor(picker, rgb(0, 1, 0));
  EXPECT_EQ(stored("tint"), "#FF8000");
  host::closePicker(picker);
  EXPECT_EQ(host::shownPicker(), nullptr);
  EXPECT_EQ(stored("tint"), "#00FF00:1.000000");
  EXPECT_EQ(stored("other"), "1");
  EXPECT_EQ(row("Colour").detail(), "#00FF00");
  EXPECT_EQ(disc(), "#00ff00ff");
}

TEST_F(ColorCell, ACancelledPickerWritesNothing) {
  showPage();
  NSObject* picker = openPicker();
  host::choosePickerColor(picker, rgb(0, 1, 0));
  host::cancelPicker(picker);
  EXPECT_EQ(host::shownPicker(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(folder.path() + kFile));
  EXPECT_EQ(row("Colour").detail(), "#112233");
}

TEST_F(ColorCell, TheAlphaStaysWithoutASlider) {
  store(tint("#FF8000:0.250000"));
  showPage();
  NSObject* picker = openPicker();
  host::choosePickerColor(picker, rgb(1, 0, 0));
  host::closePicker(picker);
  EXPECT_EQ(stored("tint"), "#FF0000:0.250000");
}

TEST_F(ColorCell, TheAlphaIsChosenWithASlider) {
  withAlpha = true;
  showPage();
  NSObject* picker = openPicker();
  EXPECT_TRUE(host::pickerHasAlpha(picker));
  host::choosePickerColor(picker, UIColor::colorWithRed(1, 0, 0, 0.75));
  host::closePicker(picker);
  EXPECT_EQ(stored("tint"), "#FF0000:0.750000");
}

TEST_F(ColorCell, HearsOfChangesElsewhere) {
  showPage();
  EXPECT_EQ(row("Colour").detail(), "#112233");
  store(tint("#0000FF"));
  EXPECT_EQ(row("Colour").detail(), "#112233");
  host::postDarwinNotification("com.example.changed");
  EXPECT_TRUE(eventually([] { return row("Colour").detail() == "#0000FF"; }));
  EXPECT_EQ(disc(), "#0000ffff");
}

TEST_F(ColorCell, HearsOnlyItsOwnNotification) {
  showPage();
  store(tint("#0000FF") + "<key>other</key><string>#00FF00</string>");
  host::postDarwinNotification("com.example.otherChanged");
  EXPECT_TRUE(eventually([] { return row("Other").detail() == "#00FF00"; }));
  EXPECT_EQ(row("Colour").detail(), "#112233");
}

TEST_F(ColorCell, WithoutANotificationNobodyElseIsHeard) {
  withNotification = false;
  showPage();
  store(tint("#0000FF"));
  host::postDarwinNotification("com.example.changed");
  host::MainRunLoop::instance().runFor(std::chrono::milliseconds(50));
  EXPECT_EQ(row("Colour").detail(), "#112233");
  // Its own changes it hears.
  NSObject* picker = openPicker();
  host::choosePickerColor(picker, rgb(1, 0, 0));
  host::closePicker(picker);
  EXPECT_EQ(row("Colour").detail(), "#FF0000");
}

TEST_F(ColorCell, ADisabledRowOpensNoPicker) {
  UIViewController* page = nullptr;
  page = show(pageClass("ColorPage", colorRows));
  send(row("Colour").specifier, PSSpecifier::setProperty, NSNumber::numberWithBool(false),
       "enabled"_ns);
  send<void>(page, "reloadSpecifierID:animated:"_sel, "Colour"_ns, false);
  EXPECT_EQ(openPicker(), nullptr);
}

TEST_F(ColorCell, AnOpenPickerOutlivesItsPage) {
  showPage();
  auto picker = Strong<NSObject>::retain(openPicker());
  pages::back();
  host::choosePickerColor(picker, rgb(1, 0, 0));
  host::closePicker(picker);
  EXPECT_EQ(stored("tint"), "#FF0000:1.000000");
}

TEST_F(ColorCell, CellsComeAndGo) {
  UIViewController* page = show(pageClass("ColorPage", colorRows));
  for (int i = 0; i < 3; ++i) {
    const objc::AutoreleasePool pool;
    send<void>(page, "reloadSpecifiers"_sel);
    EXPECT_EQ(row("Colour").detail(), "#112233");
  }
  store(tint("#0000FF"));
  host::postDarwinNotification("com.example.changed");
  EXPECT_TRUE(eventually([] { return row("Colour").detail() == "#0000FF"; }));
}

class NoColorLibrary : public ColorCell {
 protected:
  void SetUp() override {
    withoutLibraries = {"libcolorpicker"};
    startSettings();
  }
};

TEST_F(NoColorLibrary, HasNoCell) {
  EXPECT_EQ(objc_getClass("PFSimpleLiteColorCell"), nullptr);
  showPage();
  EXPECT_STREQ(class_getName(row("Colour").cell->isa), "PSTableCell");
}

}  // namespace
