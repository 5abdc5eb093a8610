// varnix preview --against: pictures as a test.
#include "preview/gallery.h"

using test::Outcome;
using test::Picture;
using test::varnix;
using test::Words;

namespace {

constexpr char kAfter[] = "settings/twitter-light-after.png";
constexpr char kBefore[] = "settings/twitter-light-before.png";
constexpr char kAll[] = "375 x 667";

class Against : public test::PreviewTest {
 protected:
  /// Keeps pictures of the settings.
  void keep(const std::string& entries = "") const {
    const Outcome outcome = varnix({"preview", "--settings", settingsFile(entries), "--only",
                                    "twitter", "--scale", "1", "--out", kept()});
    ASSERT_EQ(outcome.status, 0) << outcome.error;
  }
  std::string kept(const std::string& name = "") const { return path("kept") + "/" + name; }
  std::string differing(const std::string& name) const { return path("differing") + "/" + name; }
  Outcome compare(const std::string& entries = "", const Words& more = {"--only", "twitter"},
                  const std::string& scale = "1") const {
    Words words = {"preview", "--settings",      settingsFile(entries), "--scale",   scale,
                   "--out",   path("differing"), "--against",           path("kept")};
    words.insert(words.end(), more.begin(), more.end());
    return varnix(words);
  }
  /// What is printed for those lines of that many pictures.
  std::string text(const std::string& lines, int count, int all = 4) const {
    return lines + std::to_string(count) + " of " + std::to_string(all) + " pictures differ\n" +
           (count > 0 ? "See " + path("differing") + "\n" : "");
  }
  void expect(const Outcome& outcome, const std::string& lines, int count, int all = 4) const {
    EXPECT_EQ(outcome.status, count > 0 ? 1 : 0);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.out, text(lines, count, all));
    const std::string list = test::contentsOf(differing("differences.txt"));
    EXPECT_EQ(list, outcome.out.substr(0, outcome.out.find("See ")));
  }
  void expectRefused(const Words& words, int status, const std::string& error) const {
    const Outcome outcome = varnix(words);
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + error + "\n");
    EXPECT_FALSE(std::filesystem::exists(path("differing")));
  }
  /// In place of a kept picture. The older file may be that of other names too.
  void replace(const std::string& name, const std::string& bytes) const {
    std::filesystem::remove(kept(name));
    std::ofstream(kept(name), std::ios::binary) << bytes;
  }
  void replace(const std::string& name, const Picture& picture) const {
    replace(name, *host::imageio::encodePng(picture));
  }
};

TEST_F(Against, EqualPicturesAreSilent) {
  keep();
  expect(compare(), "", 0);
  EXPECT_EQ(test::filesIn(path("differing")), std::vector<std::string>{"differences.txt"});
}

TEST_F(Against, PixelsAreCountedAndMarked) {
  keep();
  Picture changed = test::pictureIn(kept(kAfter));
  const Picture drawn = changed;
  for (std::size_t at : {0U, 7U, 375U * 667 - 1}) changed.rgba[4 * at + 1] ^= 1;
  replace(kAfter, changed);
  const std::string old = test::contentsOf(kept(kAfter));
  expect(compare(), std::string(kAfter) + ": 3 of 250125 pixels differ\n", 1);
  const std::vector<std::string> files = {
      "differences.txt", "settings/twitter-light-after-drawn.png",
      "settings/twitter-light-after-kept.png", "settings/twitter-light-after-marked.png"};
  EXPECT_EQ(test::filesIn(path("differing")), files);
  EXPECT_EQ(test::contentsOf(differing(files[2])), old);
  EXPECT_EQ(test::pictureIn(differing(files[1])).rgba, drawn.rgba);
  const Picture marked = test::pictureIn(differing(files[3]));
  ASSERT_EQ(marked.rgba.size(), drawn.rgba.size());
  std::set<std::size_t> marks;
  for (std::size_t i = 0; i < marked.rgba.size(); i += 4) {
    const bool isMagenta =
        marked.rgba[i] == 255 && marked.rgba[i + 1] == 0 && marked.rgba[i + 2] == 255;
    if (isMagenta) marks.insert(i / 4);
    else if (marked.rgba[i] != 255 - (255 - drawn.rgba[i]) / 4) ADD_FAILURE() << i;
  }
  EXPECT_EQ(marks, (std::set<std::size_t>{0, 7, 375 * 667 - 1}));
}

TEST_F(Against, OtherBytesOfTheSamePixelsAreEqual) {
  keep();
  const std::string old = test::contentsOf(kept(kAfter));
  replace(kAfter, test::pictureIn(kept(kAfter)));
  ASSERT_NE(test::contentsOf(kept(kAfter)), old);
  expect(compare(), "", 0);
}

TEST_F(Against, AChangedSettingIsSeen) {
  keep();
  const Outcome outcome = compare("<key>global_color</key><string>#12b457</string>");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out.find("settings/twitter-dark-after.png: "), 0U) << outcome.out;
  EXPECT_NE(outcome.out.find("\nsettings/twitter-light-after.png: "), std::string::npos);
  EXPECT_EQ(outcome.out.find("before"), std::string::npos);
  EXPECT_NE(outcome.out.find("\n2 of 4 pictures differ\n"), std::string::npos);
  EXPECT_TRUE(test::hasColor(test::pictureIn(differing("settings/twitter-light-after-drawn.png")),
                             {0x12, 0xb4, 0x57}));
  // What no longer differs goes.
  expect(compare(), "", 0);
  EXPECT_EQ(test::filesIn(path("differing")), std::vector<std::string>{"differences.txt"});
}

TEST_F(Against, MissingAndAdditionalOnes) {
  keep();
  std::filesystem::rename(kept(kAfter), kept("settings/gone.png"));
  std::filesystem::copy(kept("settings/gone.png"), kept("settings/twitter-blue-after.png"));
  std::filesystem::create_directory(kept("other"));
  std::filesystem::copy(kept(kBefore), kept("other/twitter-light-before.png"));
  const std::string ofTwitter =
      "other/twitter-light-before.png: no longer drawn\n"
      "settings/twitter-blue-after.png: no longer drawn\n" +
      std::string(kAfter) + ": none was kept\n";
  expect(compare(), ofTwitter, 3, 6);
  EXPECT_TRUE(std::filesystem::exists(differing("settings/twitter-light-after-drawn.png")));
  EXPECT_TRUE(std::filesystem::exists(differing("settings/twitter-blue-after-kept.png")));
  // Without --only, pictures of any name count.
  const Outcome all = compare("", {});
  EXPECT_NE(all.out.find("settings/gone.png: no longer drawn\n"), std::string::npos) << all.out;
  EXPECT_NE(all.out.find("settings/volume-dark-after.png: none was kept\n"), std::string::npos);
}

TEST_F(Against, OtherSizesAreSaid) {
  keep();
  Picture cut = test::pictureIn(kept(kAfter));
  cut.height = 600;
  cut.rgba.resize(std::size_t{375} * 600 * 4);
  replace(kAfter, cut);
  expect(compare(), std::string(kAfter) + ": " + kAll + " pixels, the kept one 375 x 600\n", 1);
  EXPECT_FALSE(std::filesystem::exists(differing("settings/twitter-light-after-marked.png")));
}

TEST_F(Against, BrokenPicturesAreSaid) {
  keep();
  const std::string whole = test::contentsOf(kept(kAfter));
  replace(kAfter, whole.substr(0, whole.size() / 2));
  replace(kBefore, "no picture");
  const std::string dark = "settings/twitter-dark-after.png";
  std::filesystem::remove(kept(dark));
  ASSERT_EQ(mkfifo(kept(dark).c_str(), 0600), 0);
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 1);
  const std::string why = ": the kept one cannot be compared: ";
  EXPECT_EQ(outcome.out.find(dark + ": the kept one is no file that can be read\n"), 0U)
      << outcome.out;
  EXPECT_NE(outcome.out.find(kAfter + why), std::string::npos);
  EXPECT_NE(outcome.out.find(kBefore + why + "not a PNG or JPEG image\n"), std::string::npos);
  EXPECT_NE(outcome.out.find("\n3 of 4 pictures differ\n"), std::string::npos);
  EXPECT_EQ(test::contentsOf(differing("settings/twitter-light-before-kept.png")), "no picture");
}

TEST_F(Against, WhatCannotBeCompared) {
  const std::string none = path("none");
  const Words words = {"preview", "--out", path("differing"), "--against"};
  auto with = [&](const std::string& against, const Words& more = {}) {
    Words all = words;
    all.push_back(against);
    all.insert(all.end(), more.begin(), more.end());
    return all;
  };
  expectRefused(with(none), 1, "cannot read the folder: " + none + ": No such file or directory");
  expectRefused(with(write("file", "")), 1,
                "cannot read the folder: " + path("file") + ": not a folder");
  expectRefused(with(folder.path(), {"--watch", "--root", folder.path()}), 2,
                "options that exclude each other: --watch and --against");
}

TEST_F(Against, OnlyDifferencesAreReplaced) {
  keep();
  const auto before = test::filesIn(path("kept"));
  Words words = {"preview", "--only", "twitter", "--against", path("kept"), "--out"};
  words.push_back(path("kept"));
  EXPECT_EQ(varnix(words).error,
            "varnix: what is read would be overwritten: " + path("kept") + "\n");
  std::filesystem::copy(path("kept"), path("other"), std::filesystem::copy_options::recursive);
  words.back() = path("other");
  EXPECT_EQ(varnix(words).error,
            "varnix: the folder holds something else than differences: " + path("other") + "\n");
  EXPECT_EQ(test::filesIn(path("kept")), before);
  EXPECT_EQ(test::filesIn(path("other")), before);
  // Nor does a gallery replace differences.
  ASSERT_EQ(compare().status, 0);
  EXPECT_EQ(varnix({"preview", "--only", "twitter", "--out", path("differing")}).error,
            "varnix: the folder holds something else than a gallery: " + path("differing") + "\n");
}

}  // namespace
