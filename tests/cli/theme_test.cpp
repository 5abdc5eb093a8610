// varnix theme: settings files that are handed on.
#include "cli/bad_settings.h"
#include "cli/command.h"

using test::Command;
using test::Outcome;
using test::varnix;
using test::Words;

namespace {

constexpr char kHead[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n<dict>\n";

/// Each kind of entry that a settings file may have, and some that it should not.
constexpr char kEverything[] =
    "<key>enabled</key><true/><key>global_color</key><string>#1e88e5</string>"
    "<key>global_color_type</key><integer>1</integer><key>cc_color_type</key><string>2</string>"
    "<key>cc_color</key><string>blue</string><key>nc_color</key><string>#fa0:0.5</string>"
    "<key>com.example.mail_enabled</key><false/><key>com.example.mail_scope_enabled</key><true/>"
    "<key>com.example.mail_sms_color_type</key><real>2</real>"
    "<key>com.example.mail_volume_color</key><array/>"
    "<key>cached_icon_color_com.example.mail</key><data>AAAA</data>"
    "<key>use_album_art</key><dict/><key>colour&#x1b;</key><true/>";

class Theme : public test::CommandTest {
 protected:
  std::string path(const std::string& name) const { return folder.path() + "/" + name; }
  std::string write(const std::string& name, std::string_view bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }
  std::string theme(const std::string& name, const std::string& entries) const {
    return write(name, "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
  }
  static Outcome run(Words words) {
    words.insert(words.begin(), "theme");
    return varnix(words);
  }
  static void expect(const Words& words, int status, const std::string& error) {
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, status) << outcome.error;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + error + "\n");
  }
};

TEST_F(Theme, CheckFindsWhatSettingsCheckFinds) {
  for (const std::string& file :
       {theme("everything", kEverything), theme("none", ""), write("empty", ""),
        write("list", "<plist><array/></plist>"), write("binary", test::kBinarySettings)}) {
    const Outcome one = run({"check", file});
    const Outcome other = varnix({"settings", "check", file});
    EXPECT_EQ(one.status, other.status) << file;
    EXPECT_EQ(one.out, other.out) << file;
    EXPECT_EQ(one.error, "") << file;
  }
  EXPECT_EQ(run({"check", path("everything")}).status, 1);
  EXPECT_NE(run({"check", path("everything")}).out.find("colour\\x1b: no such setting"),
            std::string::npos);
  expect({"check", path("no")}, 1,
         "cannot read the settings file: " + path("no") + ": No such file or directory");
  expect({"check"}, 2, "missing argument: FILE");
}

TEST_F(Theme, DiffGoesInTheOrderOfTheTables) {
  const std::string one = theme(
      "one",
      "<key>zz</key><integer>1</integer><key>a.b_scope_enabled</key><true/>"
      "<key>a.b_cc_color_type</key><integer>1</integer><key>volume_color</key><string>#1</string>"
      "<key>cc_color_type</key><integer>1</integer><key>global_color</key><string>#111</string>"
      "<key>cached_icon_color_a.b</key><data>AAAA</data><key>nc_color_type</key><integer>2</"
      "integer>"
      "<key>b_c.d_enabled</key><true/>");
  const std::string other = theme(
      "other",
      "<key>a&#x1b;</key><integer>1</integer><key>a.b_enabled</key><false/>"
      "<key>volume_color</key><string>#2</string><key>cc_color_type</key><string>1</string>"
      "<key>enabled</key><true/><key>nc_color_type</key><integer>2</integer>"
      "<key>a.b_cc_color</key><string>#222</string><key>b_c.d_enabled</key><integer>1</integer>");
  const Outcome outcome = run({"diff", one, other});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out,
            "+ enabled = true\n"
            "- global_color = \"#111\"\n"
            "- cc_color_type = 1\n"
            "+ cc_color_type = \"1\"\n"
            "- volume_color = \"#1\"\n"
            "+ volume_color = \"#2\"\n"
            "+ a.b_enabled = false\n"
            "- a.b_scope_enabled = true\n"
            "- a.b_cc_color_type = 1\n"
            "+ a.b_cc_color = \"#222\"\n"
            "- b_c.d_enabled = true\n"
            "+ b_c.d_enabled = 1\n"
            "+ \"a\\u001b\" = 1\n"
            "- zz = 1\n");
}

TEST_F(Theme, DiffIsSilentWhereNothingDiffers) {
  const std::string one = write("binary", test::kBinarySettings);
  const std::string other = write("xml", test::kXmlSettings);
  const Outcome outcome = run({"diff", one, other});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.error, "");
  expect({"diff", one}, 2, "missing argument: B");
  expect({"diff", one, write("half", test::kXmlSettings.substr(0, 200))}, 1,
         "no settings can be read from: " + path("half") + ": not a property list, or cut short");
}

TEST_F(Theme, ExportIsWhatThePaneTakes) {
  const std::string wanted =
      kHead + std::string(
                  "\t<key>enabled</key>\n\t<true/>\n"
                  "\t<key>global_color</key>\n\t<string>#1e88e5</string>\n"
                  "\t<key>global_color_type</key>\n\t<integer>1</integer>\n"
                  "\t<key>cc_color_type</key>\n\t<string>2</string>\n"
                  "\t<key>nc_color</key>\n\t<string>#fa0:0.5</string>\n"
                  "\t<key>com.example.mail_enabled</key>\n\t<false/>\n"
                  "\t<key>com.example.mail_scope_enabled</key>\n\t<true/>\n"
                  "\t<key>com.example.mail_sms_color_type</key>\n\t<real>2</real>\n"
                  "</dict>\n</plist>\n");
  const std::string file = theme("everything", kEverything);
  const Outcome outcome = run({"export", file});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, wanted);
  EXPECT_EQ(outcome.error, "varnix: " + file +
                               ": left out, since the pane would not take it: cc_color, "
                               "colour\\x1b, com.example.mail_volume_color, use_album_art\n");
  EXPECT_EQ(run({"export", file, "--out", path("text")}).out, "");
  EXPECT_EQ(test::contentsOf(path("text")), wanted);
  expect({"export", file, "--out", file}, 2, "what is read would be overwritten: " + file);
  expect({"export", path("text"), "--out", path("no/text")}, 1, "cannot write: " + path("no/text"));
}

TEST_F(Theme, ExportRefusesWhatHoldsNoSetting) {
  const std::string file =
      theme("cache", "<key>cached_icon_color_a</key><data>AAAA</data><key>x</key><true/>");
  expect({"export", file}, 1, "no setting in: " + file);
  expect({"export", write("list", "<plist><array/></plist>")}, 1,
         "no settings can be read from: " + path("list") + ": a list is not a dictionary");
  std::string many;
  for (int i = 10; i < 40; ++i) many += "<key>k" + std::to_string(i) + "</key><true/>";
  const std::string large = theme("many", many + "<key>enabled</key><true/>");
  EXPECT_EQ(run({"export", large}).error,
            "varnix: " + large +
                ": left out, since the pane would not take it: k10, k11, k12, k13, k14, 25 more\n");
}

TEST_F(Theme, ExportWritesNothingThatXmlWouldChange) {
  // A return, which XML gives back as a line feed.
  std::string bytes(test::kBinarySettings);
  bytes.replace(bytes.find("#1e88e5"), 7, "#1e88e\r");
  bytes.replace(bytes.find("global_color"), 12, "bcdef_enable");
  const std::string file = write("return", bytes);
  const Outcome outcome = run({"export", file});
  EXPECT_EQ(outcome.status, 0) << "that key is none";
  bytes.replace(bytes.find("bcdef_enable"), 12, "bcde_enabled");
  write("return", bytes);
  expect({"export", file}, 1, "a value cannot be written as text: standard output");
  expect({"export", file, "--out", path("text")}, 1,
         "a value cannot be written as text: " + path("text"));
  EXPECT_FALSE(std::filesystem::exists(path("text")));
}

TEST_F(Theme, ImportTakesWhatExportGives) {
  const std::string file = theme("everything", kEverything);
  const std::string text = run({"export", file}).out;
  const Outcome fromFile = run({"import", write("text", text)});
  EXPECT_EQ(fromFile.status, 0);
  EXPECT_EQ(fromFile.out, text);
  EXPECT_EQ(fromFile.error, "");
  for (const Words& words : {Words{"theme", "import", "--out", path("theme")},
                             Words{"theme", "import", "-", "--out", path("theme")}}) {
    std::filesystem::remove(path("theme"));
    Command command(words);
    command.write(text.substr(0, 100));
    command.write(text.substr(100));
    EXPECT_EQ(command.finish(), 0) << command.error;
    EXPECT_EQ(command.out + command.error, "");
    EXPECT_EQ(test::contentsOf(path("theme")), text);
  }
  EXPECT_EQ(run({"check", path("theme")}).out, "");
}

TEST_F(Theme, ImportRefusesWhatHoldsNoSetting) {
  auto refused = [&](const std::string& text, const std::string& why) {
    Command command({"theme", "import", "--out", path("theme")});
    command.write(text);
    EXPECT_EQ(command.finish(), 1);
    EXPECT_EQ(command.out, "");
    EXPECT_EQ(command.error, "varnix: " + why + "\n");
    EXPECT_FALSE(std::filesystem::exists(path("theme")));
  };
  refused("", "no settings can be read from: standard input: empty");
  refused("Have a look at this!",
          "no settings can be read from: standard input: not a property list, or cut short");
  refused("<plist version=\"1.0\"><dict><key>x</key><true/></dict></plist>",
          "no setting in: standard input");
  refused(std::string((16 << 20) + 100, ' '),
          "no settings can be read from: standard input: larger than 16 MiB");
}

TEST_F(Theme, ImportEndsWhileItWaits) {
  Command command({"theme", "import", "--out", path("theme")});
  // More than a pipe holds: it is reading when this has been written.
  command.write("<plist version=\"1.0\"><dict>" + std::string(1 << 20, ' '));
  command.signal(SIGINT);
  EXPECT_EQ(command.wait(), 128 + SIGINT);
  EXPECT_FALSE(std::filesystem::exists(path("theme")));
}

TEST_F(Theme, PresetsAreListedAndWritten) {
  EXPECT_EQ(run({"presets"}).out, varnix({"settings", "presets"}).out);
  EXPECT_EQ(run({"presets", "ocean", "--out", path("ocean")}).out, "");
  EXPECT_EQ(run({"presets", "Ocean"}).out, test::contentsOf(path("ocean")));
  EXPECT_EQ(run({"check", path("ocean")}).out, "");
  ASSERT_EQ(varnix({"settings", "use", "Ocean"}).status, 0);
  const Outcome same = run({"diff", path("ocean"), settingsPath()});
  EXPECT_EQ(same.status, 0);
  EXPECT_EQ(same.out, "");
  expect({"presets", "Oceann"}, 2, "no such preset: Oceann (did you mean Ocean?)");
  expect({"presets", "--out", path("x")}, 2, "missing argument, which --out needs: NAME");
}

TEST_F(Theme, HostileFilesAreReadOrRefused) {
  for (std::uint32_t seed = 0; seed < 12; ++seed) {
    const std::string file = write("bad", test::mutated(test::kBinarySettings, seed));
    for (const char* what : {"check", "export", "import"}) {
      const int status = run({what, file}).status;
      EXPECT_TRUE(status == 0 || status == 1) << what << ' ' << seed << ": " << status;
    }
    const int status = run({"diff", file, file}).status;
    EXPECT_TRUE(status == 0 || status == 1) << seed;
  }
  const std::string deep = write("deep", test::nestedXml(100));
  const Outcome outcome = run({"diff", deep, theme("none", "")});
  EXPECT_EQ(outcome.status, 1);
}

}  // namespace
