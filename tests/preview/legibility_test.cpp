// How well text and symbols can be read, against the pixels of the pictures; and that a colour that
// is advised holds wherever it is seen.
#include "preview/gallery.h"

using test::Json;
using test::Picture;
using test::Rgb;
using test::varnix;

namespace {

/// Computed anew from the guidelines' definition.
double luminance(const Rgb& color) {
  constexpr double kWeights[] = {0.2126, 0.7152, 0.0722};
  double sum = 0;
  for (std::size_t i = 0; i < color.size(); ++i) {
    const double part = color[i] / 255.0;
    sum += kWeights[i] * (part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4));
  }
  return sum;
}

double ratio(const Rgb& one, const Rgb& other) {
  const double a = luminance(one), b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// In points; pictures have two pixels a point.
struct Area {
  double x, y, width, height;
  explicit Area(const Json& box) : x(box[0]), y(box[1]), width(box[2]), height(box[3]) {}
};

class Legibility : public test::PreviewTest {
 protected:
  /// The page's rows for these settings, with the pictures of the screens.
  Json rowsFor(const std::string& settings, test::Words more = {}) const {
    more.insert(more.begin(), {"preview", "--out", out(), "--scale", "2", "--settings", settings});
    const test::Outcome outcome = varnix(more);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    const std::string script = bytes("gallery.js");
    const std::size_t from = script.find('(') + 1;
    return Json::parse(script.substr(from, script.rfind(')') - from))["tabs"][0]["surfaces"];
  }
  /// A row stands for all processes that answer alike.
  static Json contrastOf(const Json& rows, const std::string& cls) {
    for (const Json& row : rows) {
      if (row["class"] == cls && !row["contrast"].is_null()) return row["contrast"];
    }
    ADD_FAILURE() << "none of " << cls;
    return {};
  }

  /// The ratio of two colours in the picture: the middle one of those around the place by their
  /// light, which is ground since letters are thin, and the one at the place that differs most.
  double seen(const Json& contrast, const std::string& wallpaper) const {
    const Picture drawn = picture("settings/" + contrast["screen"].get<std::string>() + "-" +
                                  wallpaper + "-after.png");
    const Area place(contrast["place"]);
    auto pixel = [&](int x, int y) {
      const auto at = (static_cast<std::size_t>(y) * drawn.width + static_cast<std::size_t>(x)) * 4;
      return Rgb{drawn.rgba[at], drawn.rgba[at + 1], drawn.rgba[at + 2]};
    };
    constexpr int kAround = 6;
    const int left = static_cast<int>(2 * place.x), top = static_cast<int>(2 * place.y);
    const int right = static_cast<int>(2 * (place.x + place.width));
    const int bottom = static_cast<int>(2 * (place.y + place.height));
    std::vector<std::pair<double, Rgb>> byLight;
    for (int y = std::max(top - kAround, 0); y < bottom + kAround; ++y) {
      for (int x = std::max(left - kAround, 0); x < right + kAround; ++x)
        byLight.emplace_back(luminance(pixel(x, y)), pixel(x, y));
    }
    std::sort(byLight.begin(), byLight.end());
    double furthest = 0;
    const Rgb median = byLight[byLight.size() / 2].second;
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x) furthest = std::max(furthest, ratio(median, pixel(x, y)));
    }
    return furthest;
  }

  Json measured(const std::string& settings, const test::Words& more = {}) const {
    test::Words words{"theme", "contrast", "--json", settings};
    words.insert(words.end(), more.begin(), more.end());
    return Json::parse(varnix(words).out);
  }
  static std::string entry(const std::string& key, const Json& value) {
    return "<key>" + key + "</key>" +
           (value.is_string() ? "<string>" + value.get<std::string>() + "</string>"
                              : "<integer>" + value.dump() + "</integer>");
  }

  /// Follows each advice by itself: what looks different then holds. Returns how many there were.
  std::size_t followAll(const std::string& color) const {
    const std::string entries = entry("global_color", color);
    const Json before = measured(settingsFile(entries), {"--advise"});
    std::set<std::string> followed;
    for (const Json& row : before) {
      EXPECT_EQ(row.contains("advice"), !row["holds"].get<bool>()) << row;
      const Json advice = row.value("advice", Json());
      if (advice.is_null() || !followed.insert(advice.dump()).second) continue;
      std::string better = advice.contains("global_color") ? "" : entries;
      for (const auto& [key, value] : advice.items()) better += entry(key, value);
      const Json after = measured(settingsFile(better));
      EXPECT_EQ(after.size(), before.size());
      for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(after[i]["class"], before[i]["class"]);
        const bool isSame = after[i]["ratio"] == before[i]["ratio"] &&
                            after[i]["ink"] == before[i]["ink"] &&
                            after[i]["ground"] == before[i]["ground"];
        EXPECT_TRUE(isSame || after[i]["holds"]) << advice << " makes it " << after[i];
        const bool isIt = after[i]["class"] == row["class"] &&
                          after[i]["property"] == row["property"] &&
                          after[i]["process"] == row["process"];
        if (isIt) {
          EXPECT_TRUE(after[i]["holds"]) << advice << " is for " << row;
          EXPECT_GT(after[i]["ratio"], row["ratio"]);
        }
      }
    }
    return followed.size();
  }
};

TEST_F(Legibility, OfBlackOnTheDarkWallpaper) {
  const Json rows =
      rowsFor(settingsFile(entry("global_color", "#000000")),
              {"--wallpaper", VARNIX_SAMPLES "/wallpapers/dark.png", "--only", "control-centre",
               "--only", "volume", "--only", "notification-centre", "--only", "home"});
  // Black letters on panels that black makes dark.
  for (const auto& [cls, screen, least, most] :
       {std::tuple("SBControlCenterContentContainerView", "control-centre", 2.0, 2.4),
        std::tuple("SBHUDView", "volume", 1.7, 2.0)}) {
    const Json contrast = contrastOf(rows, cls);
    EXPECT_EQ(contrast["screen"], screen);
    EXPECT_EQ(contrast["wallpaper"], "dark");
    EXPECT_GT(contrast["ratio"], least);
    EXPECT_LT(contrast["ratio"], most);
    EXPECT_EQ(contrast["holds"], false);
    EXPECT_NEAR(seen(contrast, "dark"), contrast["ratio"].get<double>(), 0.15) << contrast;
  }
  // White letters there have what they need.
  EXPECT_EQ(contrastOf(rows, "SBNotificationCenterViewController")["holds"], true);
}

TEST_F(Legibility, OfYellowOnTheLightWallpaper) {
  const Json rows = rowsFor(settingsFile(entry("global_color", "#ffeb3b")),
                            {"--wallpaper", VARNIX_SAMPLES "/wallpapers/light.png"});
  // A light tint is what black letters need, and what white ones cannot bear.
  const Json control = contrastOf(rows, "SBControlCenterContentContainerView");
  EXPECT_EQ(control["holds"], true);
  EXPECT_NEAR(seen(control, "light"), control["ratio"].get<double>(), 0.6) << control;
  for (const auto& [cls, screen, wanted] :
       {std::tuple("SBNotificationCenterViewController", "notification-centre", 1.81),
        std::tuple("SBIconBadgeView", "home", 1.22)}) {
    const Json contrast = contrastOf(rows, cls);
    EXPECT_EQ(contrast["screen"], screen);
    EXPECT_NEAR(contrast["ratio"], wanted, 0.05);
    EXPECT_NEAR(seen(contrast, "light"), contrast["ratio"].get<double>(), 0.1) << contrast;
  }
}

TEST_F(Legibility, OfTealOnTheLightWallpaper) {
  const Json rows = rowsFor(settingsFile(entry("global_color", "#00897b")),
                            {"--wallpaper", VARNIX_SAMPLES "/wallpapers/light.png"});
  for (const auto& [cls, screen, wanted] :
       {std::tuple("SBNotificationCenterViewController", "notification-centre", 2.87),
        std::tuple("UINavigationBar", "application", 4.06),
        std::tuple("UIKeyboard", "messages", 2.71)}) {
    const Json contrast = contrastOf(rows, cls);
    EXPECT_NEAR(contrast["ratio"], wanted, 0.05) << contrast;
    EXPECT_EQ(contrast["holds"], false);
    EXPECT_NEAR(seen(contrast, "light"), contrast["ratio"].get<double>(), 0.25) << contrast;
  }
}

TEST_F(Legibility, OfTheAlbumTabsPhotoFeed) {
  const Json rows = rowsFor(VARNIX_SAMPLES "/previews/album.plist",
                            {"--artwork", VARNIX_SAMPLES "/covers/dusk.png", "--only", "instagram",
                             "--only", "application", "--advise"});
  // The status bar lies on the feed's own dark bar, where a darker shade would be worse.
  const Json bar = contrastOf(rows, "UIStatusBarNewUIStyleAttributes");
  EXPECT_EQ(bar["screen"], "instagram");
  EXPECT_EQ(bar["ground"], "#125688");
  EXPECT_NEAR(bar["ratio"], ratio({0x00, 0x89, 0x7b}, {0x12, 0x56, 0x88}), 0.02);
  EXPECT_NEAR(seen(bar, "light"), bar["ratio"].get<double>(), 0.1);
  const Area mark(bar["mark"]);
  EXPECT_LT(mark.y + mark.height, 20);
  EXPECT_TRUE(bar["advice"].is_null()) << "elsewhere it lies on a light one: " << bar["advice"];
  const Json link = contrastOf(rows, "IGStringStyle");
  EXPECT_NEAR(link["ratio"], ratio({0x00, 0x89, 0x7b}, {255, 255, 255}), 0.02);
  EXPECT_NEAR(seen(link, "light"), link["ratio"].get<double>(), 0.3);
}

TEST_F(Legibility, AdviceForBlackHolds) { EXPECT_EQ(followAll("#000000"), 2U); }
TEST_F(Legibility, AdviceForYellowHolds) { EXPECT_GE(followAll("#ffeb3b"), 3U); }
TEST_F(Legibility, AdviceForTealHolds) { EXPECT_GE(followAll("#00897b"), 3U); }

TEST_F(Legibility, AColourThatFitsEverywhereIsAdvisedForAll) {
  // Where only links and bars on white are dyed, a darker shade of the same hue is enough.
  const std::string entries = entry("global_color", "#ff4081") +
                              "<key>com.apple.springboard_enabled</key><false/>"
                              "<key>com.burbn.instagram_enabled</key><false/>"
                              "<key>keyboard_color_type</key><integer>1</integer>";
  const Json rows = measured(settingsFile(entries), {"--advise"});
  bool isAdvised = false;
  for (const Json& row : rows) {
    const Json advice = row.value("advice", Json());
    isAdvised |= advice.is_object() && advice.contains("global_color");
  }
  EXPECT_TRUE(isAdvised) << rows.dump(1);
}

TEST_F(Legibility, IsPrintedAndSaysByItsStatusWhetherAllHolds) {
  const auto faint = varnix({"theme", "contrast", settingsFile(entry("global_color", "#ffeb3b"))});
  EXPECT_EQ(faint.status, 1);
  EXPECT_NE(faint.out.find("com.burbn.instagram\n"), std::string::npos) << faint.out;
  EXPECT_NE(faint.out.find("   1.22 < 4.50  IGStringStyle linkColor: text on Photo feed, "
                           "#ffeb3b on #ffffff\n"),
            std::string::npos)
      << faint.out;
  const auto off = varnix({"theme", "contrast", settingsFile("<key>enabled</key><false/>")});
  EXPECT_EQ(off.status, 0) << off.out;
  EXPECT_EQ(varnix({"theme", "contrast", path("missing.plist")}).status, 1);
  EXPECT_EQ(preview({"--settings", settingsFile(""), "--watch", "--advise"}).status, 2);
}

}  // namespace
