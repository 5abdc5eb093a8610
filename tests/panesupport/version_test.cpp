// The footer with the package's version and the years.
#include "Foundation/clock.h"
#include "support/pane.h"
#include "varnix/pane.h"

namespace {

using namespace test;

/// Moments around the ends of years, in seconds since the start of 2001, GMT.
constexpr double kFirstOf2015 = 441763200;
constexpr double kFirstOf2016 = 473299200;
constexpr double kMidst2016 = kFirstOf2016 + 180 * 86400.0;

class Version : public Pane {
 protected:
  void SetUp() override {
    host::setClock(kMidst2016);
    settingsApplication();
    function = exported<decltype(QKVersionCopyrightSpecifier)>("QKVersionCopyrightSpecifier");
    ASSERT_NE(function, nullptr);
  }
  static std::string property(PSSpecifier* specifier, const char* key) {
    auto* value =
        send(send(specifier, PSSpecifier::properties), NSDictionary::objectForKey, string(key));
    return value == nullptr ? "nil" : std::string(host::text(send(value, NSObject::description)));
  }
  PSSpecifier* specifier(const char* firstYear, const char* package = "com.example.pack") {
    return function(package == nullptr ? nullptr : string(package), string("The Holder"),
                    firstYear == nullptr ? nullptr : string(firstYear));
  }
  std::string footer(const char* firstYear, const char* package = "com.example.pack") {
    return property(specifier(firstYear, package), "footerText");
  }
  /// A package manager that knows a single package.
  void knowsThePackage() {
    program("dpkg",
            "[ \"$1 $2\" = '-s com.example.pack' ] || { echo \"no package $2\" >&2; exit 1; }\n"
            "echo 'Package: com.example.pack'\n"
            "echo 'Version: 2.0.0-1'\n"
            "echo 'Depends: firmware'\n");
  }

  decltype(&QKVersionCopyrightSpecifier) function = nullptr;
};

TEST_F(Version, IsAGroupWithACenteredFooter) {
  knowsThePackage();
  PSSpecifier* made = specifier("2016");
  EXPECT_EQ(made->isa, objc_getClass("PSSpecifier"));
  EXPECT_EQ(host::text(send<NSString*>(made, "name"_sel)), "");
  EXPECT_NE(send<NSString*>(made, "name"_sel), nullptr);
  EXPECT_EQ(send<NSObject*>(made, "target"_sel), nullptr);
  EXPECT_EQ(send<PSCellType>(made, "cellType"_sel), 0);
  EXPECT_EQ(send<Class>(made, "detailControllerClass"_sel), nullptr);
  EXPECT_EQ(send<Class>(made, "editPaneClass"_sel), nullptr);
  EXPECT_EQ(send(send(made, PSSpecifier::properties), NSDictionary::count), 2U);
  EXPECT_EQ(property(made, "footerAlignment"), "1");
  EXPECT_NE(objc::as<NSString>(send(send(made, PSSpecifier::properties), NSDictionary::objectForKey,
                                    "footerAlignment"_ns)),
            nullptr);
  EXPECT_EQ(property(made, "footerText"), "© The Holder 2016\n Version: 2.0.0-1\n");
}

TEST_F(Version, IsANewOneEveryTime) { EXPECT_NE(specifier("2016"), specifier("2016")); }

TEST_F(Version, SpansTheYearsFromAnEarlierFirst) {
  EXPECT_EQ(footer("2015"), "© The Holder 2015 - 2016\n ");
  EXPECT_EQ(footer("2016"), "© The Holder 2016\n ");
  EXPECT_EQ(footer("2020"), "© The Holder 2020 - 2016\n ");
  EXPECT_EQ(footer("2016 "), "© The Holder 2016  - 2016\n ");
}

TEST_F(Version, CountsYearsInGmt) {
  host::setLocalTimeZone(14 * 3600);
  host::setClock(kFirstOf2016 - 1);
  EXPECT_EQ(footer("2015"), "© The Holder 2015\n ");
  host::setLocalTimeZone(-11 * 3600);
  host::setClock(kFirstOf2016);
  EXPECT_EQ(footer("2015"), "© The Holder 2015 - 2016\n ");
  host::setClock(kFirstOf2015);
  EXPECT_EQ(footer("2015"), "© The Holder 2015\n ");
}

TEST_F(Version, CountsYearsInTheHoldersCalendar) {
  host::setUserLocale("th_TH@calendar=buddhist");
  EXPECT_EQ(footer("2015"), "© The Holder 2015 - 2016\n ");
}

TEST_F(Version, IsEmptyForAnUnknownPackage) {
  knowsThePackage();
  EXPECT_EQ(footer("2016", "com.example.other"), "© The Holder 2016\n ");
}

TEST_F(Version, IsWhatTheShellPrintsWhole) {
  program("dpkg",
          "printf 'Version: 1\\nDescription: a Version of it\\nsize 3\\nConfig-Version: 4'");
  EXPECT_EQ(footer("2016"),
            "© The Holder 2016\n Version: 1\nDescription: a Version of it\nConfig-Version: 4\n");
}

TEST_F(Version, HandsThePackageToTheShellAsItIs) {
  program("dpkg", "echo \"Version: $*\"");
  EXPECT_EQ(footer("2016", "a  b"), "© The Holder 2016\n Version: -s a b\n");
  EXPECT_EQ(footer("2016", "a; echo Version: b"),
            "© The Holder 2016\n Version: -s a\nVersion: b\n");
  EXPECT_EQ(footer("2016", "a | grep none"), "© The Holder 2016\n ");
  EXPECT_EQ(footer("2016", ""), "© The Holder 2016\n Version: -s\n");
}

TEST_F(Version, ReadsAMegabyteToItsEnd) {
  program("dpkg",
          "i=0\nwhile [ $i -lt 16384 ]; do\n"
          "echo 'Version: 01234567890123456789012345678901234567890123456789012345'\n"
          "i=$((i + 1))\ndone\necho 'Version: last'\n");
  const std::string text = footer("2016");
  EXPECT_GT(text.size(), 1000000U);
  EXPECT_TRUE(text.ends_with("\nVersion: last\n"));
}

TEST_F(Version, LeavesNoChildAndNoDescriptor) {
  knowsThePackage();
  auto descriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  specifier("2016");
  const auto before = descriptors();
  {
    objc::AutoreleasePool pool;
    for (int i = 0; i < 20; ++i) specifier("2016");
  }
  EXPECT_LE(descriptors(), before);
  auto children = [] {
    return contentsOf("/proc/self/task/" + std::to_string(getpid()) + "/children");
  };
  EXPECT_TRUE(eventually([&] { return children().empty(); })) << children();
}

TEST_F(Version, IsEmptyForBytesThatAreNoAscii) {
  program("dpkg", "printf 'Version: \\303\\251\\n'");
  EXPECT_EQ(footer("2016"), "© The Holder 2016\n ");
}

TEST_F(Version, IsEmptyWhereTheShellCannotBeRun) {
  std::filesystem::create_directories(folder.path() + "/bin");
  std::ofstream(folder.path() + "/bin/sh") << "no program";
  EXPECT_EQ(footer("2016"), "© The Holder 2016\n ");
}

TEST_F(Version, IsEmptyWithoutPackageManager) {
  // Even if this machine has such a program, it does not know this package.
  EXPECT_EQ(footer("2016", "com.example.none"), "© The Holder 2016\n ");
}

TEST_F(Version, TakesNothingForGranted) {
  knowsThePackage();
  EXPECT_EQ(property(function(nullptr, nullptr, nullptr), "footerText"),
            "© (null) (null) - 2016\n ");
}

using VersionElsewhere = Pane;

TEST_F(VersionElsewhere, IsNilInAProcessWithoutPanes) {
  application("");
  auto* function = exported<decltype(QKVersionCopyrightSpecifier)>("QKVersionCopyrightSpecifier");
  EXPECT_EQ(function(string("a"), string("b"), string("2016")), nullptr);
}

}  // namespace
