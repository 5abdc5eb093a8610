// The data for the page, and the files that are written.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "common/errors.h"
#include "common/json.h"
#include "gallery/page/gallery.h"
#include "gallery/page/page_data.h"
#include "sample.h"

using varnix::cli::Failure;
using varnix::cli::Json;
using varnix::cli::writeGallery;
using varnix::cli::gallery::pageData;

namespace {

std::string contents(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class GalleryPage : public testing::Test {
 protected:
  GalleryPage() {
    std::string name = testing::TempDir() + "gallery-XXXXXX";
    folder_ = ::mkdtemp(name.data());
  }
  ~GalleryPage() override { std::filesystem::remove_all(folder_); }

  std::set<std::string> files() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      names.insert(entry.path().filename());
    }
    return names;
  }

  std::filesystem::path folder_;
};

TEST_F(GalleryPage, SurfacesAreTakenAsTheyWereMeasured) {
  const Json gallery = drawSampleGallery(folder_);
  EXPECT_EQ(pageData(folder_, gallery)["tabs"][0]["surfaces"], gallery["tabs"][0]["surfaces"]);
}

TEST_F(GalleryPage, WritesThreeFilesWithEverythingInlined) {
  const Json gallery = drawSampleGallery(folder_);
  writeGallery(folder_, gallery);
  EXPECT_EQ(files(), (std::set<std::string>{"index.html", "gallery.js", "state.js", "global-color",
                                            "album-art"}));
  const std::string page = contents(folder_ / "index.html");
  EXPECT_EQ(page.find("<!-- "), std::string::npos);
  EXPECT_EQ(page.find("http"), std::string::npos);
  EXPECT_EQ(page.find("@import"), std::string::npos);
  EXPECT_FALSE(std::regex_search(page, std::regex("url\\(")));

  // The data ends where its element does, whatever a title contains.
  const std::string start = "<script type=\"application/json\" id=\"data\">";
  const std::size_t from = page.find(start) + start.size();
  const Json data = Json::parse(page.substr(from, page.find("</script>", from) - from));
  EXPECT_EQ(data["tabs"][1]["summary"], gallery["tabs"][1]["summary"]);
  EXPECT_EQ(data["tabs"][0]["screens"][0]["dark"]["after"]["path"],
            "global-color/messages-dark-after.png");
  EXPECT_EQ(contents(folder_ / "state.js"),
            "varnixState(\"" + data["revision"].get<std::string>() + "\");\n");
  EXPECT_EQ(contents(folder_ / "gallery.js"),
            "varnixGallery(" + page.substr(from, page.find("</script>", from) - from) + ");\n");
}

TEST_F(GalleryPage, WithoutScriptsThePicturesAreSideBySide) {
  Json gallery = drawSampleGallery(folder_);
  Json& tabs = gallery["tabs"];
  tabs[0]["title"] = "<b>&\"";
  tabs[0]["screens"][0].erase("dark");
  writeGallery(folder_, gallery);
  const std::string page = contents(folder_ / "index.html");
  const std::size_t from = page.find("<noscript"), end = page.find("</noscript>");
  ASSERT_LT(from, end);
  const std::string plain = page.substr(from, end - from);
  EXPECT_NE(plain.find("<h2>&lt;b>&amp;&quot;</h2>\n<p>One colour for everything.</p>\n"
                       "<p>Settings of <code>themes/violet.plist</code></p>\n<ul>\n"
                       "<li><code>enabled = true</code></li>\n"
                       "<li><code>global_color = &quot;#8e24aa&quot;</code></li>\n</ul>\n"
                       "<figure id=\"tab=global-color&amp;wallpaper=light\">\n"
                       "<img loading=\"lazy\" width=\"375\" alt=\"Before\" "
                       "src=\"global-color/messages-light-before.png\">\n"
                       "<img loading=\"lazy\" width=\"375\" alt=\"After\" "
                       "src=\"global-color/messages-light-after.png\">\n"
                       "<figcaption>Messages, light wallpaper: before and after</figcaption>\n"
                       "</figure>\n"),
            std::string::npos)
      << plain;
  EXPECT_NE(plain.find("<li>&lt;b>&amp;&quot;: <a href=\"#tab=global-color&amp;wallpaper=light\">"
                       "light wallpaper</a> <a href=\"#tab=global-color&amp;wallpaper=dark\">"
                       "dark wallpaper</a></li>\n"),
            std::string::npos)
      << plain;
  EXPECT_NE(plain.find("plays. &lt;b>&amp;amp;&lt;/script></p>"), std::string::npos);
  EXPECT_EQ(plain.find("global-color/messages-dark"), std::string::npos);
  std::size_t pictures = 0;
  for (std::size_t at = 0; (at = plain.find("<img", at)) != plain.npos; ++at) ++pictures;
  EXPECT_EQ(pictures, 14U);
}

TEST_F(GalleryPage, RevisionsChangeWithThePicturesBytesAlone) {
  const Json first = pageData(folder_, drawSampleGallery(folder_));
  EXPECT_EQ(first, pageData(folder_, drawSampleGallery(folder_)));
  const Json second = pageData(folder_, drawSampleGallery(folder_, 0x123456));
  EXPECT_NE(first["revision"], second["revision"]);
  const auto& before = first["tabs"][0]["screens"][0];
  const auto& after = second["tabs"][0]["screens"][0];
  EXPECT_NE(before["light"]["after"]["revision"], after["light"]["after"]["revision"]);
  EXPECT_EQ(before["light"]["before"], after["light"]["before"]);
  EXPECT_EQ(first["tabs"][1], second["tabs"][1]);
}

TEST_F(GalleryPage, AWallpaperMayBeMissing) {
  Json gallery = drawSampleGallery(folder_);
  gallery["tabs"][0]["screens"][0].erase("dark");
  const Json screen = pageData(folder_, gallery)["tabs"][0]["screens"][0];
  EXPECT_TRUE(screen.contains("light"));
  EXPECT_FALSE(screen.contains("dark"));
}

TEST_F(GalleryPage, TextThatIsNoUnicodeDoesNotStopIt) {
  Json gallery = drawSampleGallery(folder_);
  gallery["tabs"][0]["title"] = "a\xff\xc3";
  writeGallery(folder_, gallery);
  EXPECT_NE(contents(folder_ / "index.html").find("a\xEF\xBF\xBD"), std::string::npos);
}

TEST_F(GalleryPage, AMissingPictureIsAFailureAndWritesNothing) {
  Json gallery = drawSampleGallery(folder_);
  for (const char* path : {"nowhere.png", "global-color", ""}) {
    gallery["tabs"][0]["screens"][0]["light"]["after"] = path;
    EXPECT_THROW(writeGallery(folder_, gallery), Failure) << path;
  }
  EXPECT_EQ(files(), (std::set<std::string>{"global-color", "album-art"}));
}

TEST_F(GalleryPage, AFolderThatCannotBeWrittenIsAFailure) {
  const Json gallery{{"tabs", Json::array()}};
  EXPECT_THROW(writeGallery(folder_ / "nowhere", gallery), Failure);
  // A folder is in a file's place: unfinished files are removed again.
  std::filesystem::create_directory(folder_ / "index.html");
  EXPECT_THROW(writeGallery(folder_, gallery), Failure);
  EXPECT_EQ(files(), (std::set<std::string>{"index.html"}));
}

}  // namespace
