// The studio's pictures are the preview's, whatever was drawn before them.
#include "ImageIO/decode.h"
#include "studio/studio.h"

namespace {

using test::Json;
using test::Reply;

class StudioPictures : public test::StudioTest {
 protected:
  Reply picture(const std::string& screen, const std::string& wallpaper,
                const std::string& more = "") const {
    return get("picture/" + screen + "?scale=2&wallpaper=" + wallpaper +
               "&revision=" + std::to_string(theme()["revision"].get<long>()) + more);
  }
  std::vector<std::string> screens() const {
    std::vector<std::string> screens;
    const Json tables = get("tables").json();
    for (const Json& screen : tables["screens"]) screens.push_back(screen["id"]);
    EXPECT_EQ(screens.size(), 14U);
    return screens;
  }
  static std::vector<std::uint8_t> pixels(const std::string& png) {
    const auto picture = host::imageio::decode(png);
    return picture ? picture->rgba : std::vector<std::uint8_t>();
  }
  /// Of every screen, on both wallpapers.
  void expectThoseOfThePreview() const {
    const std::string drawn = folder.path() + "/drawn";
    const auto outcome = test::varnix({"preview", "--settings", file(), "--out", drawn});
    ASSERT_EQ(outcome.status, 0) << outcome.error;
    for (const std::string& screen : screens()) {
      for (const std::string wallpaper : {"light", "dark"}) {
        const auto shown = pixels(picture(screen, wallpaper).body);
        const std::string name = screen + "-" + wallpaper + "-after.png";
        ASSERT_FALSE(shown.empty()) << name;
        EXPECT_TRUE(shown == pixels(test::contentsOf(drawn + "/settings/" + name))) << name;
      }
    }
  }
};

TEST_F(StudioPictures, AreThoseOfThePreview) {
  write(color("global_color", "#7a1fc3"));
  start({file()});
  expectThoseOfThePreview();
  // The home screen changes, and with it what lies below the panels.
  const Json colors = {{"global_color", "#e5b41e"}};
  ASSERT_EQ(change(colors, theme()["revision"].get<long>()).status, 200);
  ASSERT_TRUE(becomes("/isSaved", true));
  expectThoseOfThePreview();
}

TEST_F(StudioPictures, OfAPanelShowWhatItCovers) {
  start();
  const std::string home = picture("volume", "light").body;
  const std::string front = picture("volume", "light", "&front=1").body;
  EXPECT_NE(pixels(home), pixels(front));
  EXPECT_EQ(pixels(picture("volume", "light").body), pixels(home));
  EXPECT_EQ(pixels(picture("volume", "light", "&front=1").body), pixels(front));
}

}  // namespace
