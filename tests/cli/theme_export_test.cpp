// varnix theme export --to: a page, a picture of all screens, the text.
#include "ImageIO/decode.h"
#include "cli/command.h"

using test::Outcome;
using test::varnix;
using test::Words;

namespace {

constexpr std::size_t kLargestPage = 6'000'000;

/// How often that is in the text.
int count(const std::string& text, const std::string& what) {
  int found = 0;
  for (std::size_t at = text.find(what); at != text.npos; at = text.find(what, at + 1)) ++found;
  return found;
}

class ThemeExport : public test::CommandTest {
 protected:
  std::string path(const std::string& name) const { return folder.path() + "/" + name; }
  std::string theme(const std::string& name, const std::string& entries) const {
    std::ofstream(path(name)) << "<plist version=\"1.0\"><dict>" << entries << "</dict></plist>";
    return path(name);
  }
  std::string blue() const {
    return theme("blue.plist", "<key>global_color</key><string>#1e88e5</string>");
  }
  static Outcome run(Words words) {
    words.insert(words.begin(), {"theme", "export"});
    return varnix(words);
  }
  static void expectRefused(const Words& words, int status, const std::string& error) {
    const Outcome outcome = run(words);
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + error + "\n");
  }
};

TEST_F(ThemeExport, WritesAPageThatNeedsNothingElse) {
  const Outcome outcome = run({blue(), "--to", path("blue.html")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.error, "");
  const std::string page = test::contentsOf(path("blue.html"));
  EXPECT_LE(page.size(), kLargestPage);
  EXPECT_EQ(count(page, "<figure>"), 18);
  EXPECT_EQ(count(page, " src=\"data:image/png;base64,"), 18);
  EXPECT_EQ(count(page, " src="), 18);
  EXPECT_EQ(count(page, " href=\"data:,\""), count(page, " href="));
  for (const char* what : {"<script", "<iframe", "<object", "@import", "url(", "srcset", "file:"})
    EXPECT_EQ(count(page, what), 0) << what;
  EXPECT_NE(page.find("<code>global_color</code></th><td><span class=\"swatch\" "
                      "style=\"background:#1e88e5\"></span><code>&quot;#1e88e5&quot;</code>"),
            page.npos);
  EXPECT_NE(page.find("&lt;key>global_color&lt;/key>"), page.npos);
}

TEST_F(ThemeExport, WritesOnePictureOfAllScreens) {
  ASSERT_EQ(run({blue(), "--to", path("blue.png")}).status, 0);
  const auto sheet = host::imageio::decode(test::contentsOf(path("blue.png")));
  ASSERT_TRUE(sheet);
  EXPECT_EQ(sheet->width, 32U + 6 * (375 + 32));
  EXPECT_EQ(sheet->height, 88U + 3 * (667 + 40 + 32));
  // The switch that is on, in the first screen; the paper beside it.
  bool isBlue = false;
  for (std::size_t y = 88; y < 88 + 667; ++y) {
    for (std::size_t x = 32; x < 32 + 375; ++x) {
      const std::uint8_t* at = &sheet->rgba[4 * (y * sheet->width + x)];
      isBlue = isBlue || (at[0] == 0x1e && at[1] == 0x88 && at[2] == 0xe5);
    }
  }
  EXPECT_TRUE(isBlue);
  EXPECT_EQ(sheet->rgba[4 * (100 * sheet->width + 16)], 0xf2);
}

TEST_F(ThemeExport, WritesSeveralAtOnce) {
  const std::string text = run({blue()}).out;
  const Outcome outcome = run({blue(), "--to", path("a.plist"), "--to", path("a.png"), "--to",
                               path("a.html"), "--out", path("text")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out + outcome.error, "");
  EXPECT_EQ(test::contentsOf(path("a.plist")), text);
  EXPECT_EQ(test::contentsOf(path("text")), text);
  EXPECT_TRUE(std::filesystem::exists(path("a.png")));
  EXPECT_TRUE(std::filesystem::exists(path("a.html")));
}

TEST_F(ThemeExport, WritesNamesAsText) {
  const std::string file = theme("<script>&\".plist",
                                 "<key>x&lt;b&gt;_enabled</key><true/>"
                                 "<key>global_color</key><string>#1e88e5</string>");
  ASSERT_EQ(run({file, "--to", path("page.html")}).status, 0);
  const std::string page = test::contentsOf(path("page.html"));
  EXPECT_NE(page.find("<h1>&lt;script>&amp;&quot;</h1>"), page.npos);
  EXPECT_NE(page.find("<code>x&lt;b>_enabled</code>"), page.npos);
  EXPECT_EQ(count(page, "<script"), 0);
  EXPECT_EQ(count(page, "x<b"), 0);
}

TEST_F(ThemeExport, RefusesWhatItCannotWrite) {
  const std::string file = blue();
  expectRefused({file, "--to", path("a.html"), "--to", path("b.jpg")}, 2,
                "not a name that ends in .html, .png or .plist: " + path("b.jpg"));
  EXPECT_FALSE(std::filesystem::exists(path("a.html"))) << "nothing is written";
  expectRefused({file, "--to", file}, 2, "what is read would be overwritten: " + file);
  expectRefused({file, "--to", path("no/a.png")}, 1, "cannot write: " + path("no/a.png"));
  expectRefused({theme("empty.plist", ""), "--to", path("a.html")}, 1,
                "no setting in: " + path("empty.plist"));
  expectRefused(
      {path("missing.plist"), "--to", path("a.html")}, 1,
      "cannot read the settings file: " + path("missing.plist") + ": No such file or directory");
  EXPECT_FALSE(std::filesystem::exists(path("a.html")));
}

}  // namespace
