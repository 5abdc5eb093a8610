// What is kept between pictures: the lowest layer, and blurs.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "drawing/blur.h"
#include "gallery/screens/drawn_layers.h"
#include "gallery/screens/kept_blurs.h"

using namespace varnix::screens;

namespace {

Scene sceneOn(const Color& wallpaper) {
  const Canvas canvas(kWidth, kHeight, 1);
  canvas.fill({0, 0, kWidth, kHeight / 2}, wallpaper);
  Scene scene;
  scene.wallpaper = canvas.surface();
  scene.wallpaperColor = wallpaper;
  return scene;
}

Answers withBadge(const std::string& color) { return {{{"badge", color}}}; }

/// As the preview and the studio draw.
std::string drawn(const std::vector<Layer>& layers, const Scene& scene, double scale = 1) {
  const Canvas canvas(kWidth, kHeight, scale);
  drawLayers(canvas, layers, scene);
  return encodePng(canvas.surface());
}

/// One screen after the other, with nothing kept.
std::string drawnAnew(const std::vector<Layer>& layers, const Scene& scene, double scale = 1) {
  const Canvas canvas(kWidth, kHeight, scale);
  for (const Layer& layer : layers) layer.screen->draw(canvas, *layer.answers, scene);
  return encodePng(canvas.surface());
}

TEST(KeptPictures, OfTheLowestLayerAreUsedOnlyForTheSame) {
  const Scene scenes[] = {sceneOn(rgb(0xd0e0f0)), sceneOn(rgb(0x102030))};
  const Answers homes[] = {withBadge("#ff0000ff"), withBadge("#00ff00ff")};
  const Answers panel;
  for (int round = 0; round < 2; ++round) {
    for (const double scale : {1.0, 2.0}) {
      for (const Scene& scene : scenes) {
        for (const Answers& home : homes) {
          const std::vector<Layer> layers = {{&kHome, &home}, {&kVolume, &panel}};
          EXPECT_TRUE(drawn(layers, scene, scale) == drawnAnew(layers, scene, scale));
        }
      }
    }
  }
}

TEST(KeptPictures, AreDrawnAnewWithOtherIcons) {
  Scene scene = sceneOn(rgb(0xd0e0f0));
  const Answers home;
  const std::vector<Layer> layers = {{&kHome, &home}};
  const std::string without = drawn(layers, scene);
  scene.icons["com.example.notes"] = sceneOn(rgb(0xff00ff)).wallpaper;
  EXPECT_FALSE(drawn(layers, scene) == without);
  EXPECT_TRUE(drawn(layers, scene) == drawnAnew(layers, scene));
}

TEST(KeptBlurs, AreSharedByTheSamePixels) {
  const Surface picture = sceneOn(rgb(0xd0e0f0)).wallpaper;
  const Surface soft = keptBlur(picture, 20, 1.8);
  EXPECT_EQ(keptBlur(sceneOn(rgb(0xd0e0f0)).wallpaper, 20, 1.8), soft);
  EXPECT_NE(keptBlur(picture, 10, 1.8), soft);
  EXPECT_NE(keptBlur(picture, 20, 1), soft);
  EXPECT_NE(keptBlur(sceneOn(rgb(0xd0e0f1)).wallpaper, 20, 1.8), soft);
  Surface expected = varnix::drawing::blurred(picture, 20);
  varnix::drawing::saturate(expected, 1.8);
  EXPECT_EQ(encodePng(soft), encodePng(expected));
}

TEST(KeptBlurs, AreForgottenOneByOne) {
  const Surface picture = sceneOn(rgb(0x010203)).wallpaper;
  const Surface soft = keptBlur(picture, 20, 1.8);
  for (unsigned i = 0; i < 20; ++i) {
    keptBlur(sceneOn(rgb(0x405060 + i)).wallpaper, 20, 1.8);
    const bool isUsed = i < 7;
    if (isUsed) {
      EXPECT_EQ(keptBlur(picture, 20, 1.8), soft) << "the last used stay";
    }
  }
  EXPECT_NE(keptBlur(picture, 20, 1.8), soft);
}

}  // namespace
