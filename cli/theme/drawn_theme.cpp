#include "theme/drawn_theme.h"

#include "common/errors.h"
#include "gallery/materials/screens_module.h"
#include "gallery/page/theme_page.h"
#include "preview/sheet.h"
#include "settings/file.h"
#include "theme/theme_file.h"

namespace varnix::cli {

using varnix::screens::Effort;
using varnix::screens::Screen;

namespace {

constexpr std::size_t kLargestPage = 6'000'000;

}  // namespace

std::vector<DrawnScreen> drawnScreens(
    const std::function<std::string(const Screen&, const std::string&)>& draw) {
  std::vector<DrawnScreen> screens;
  for (const Screen* screen : screensModule().screens) {
    if (!screen->showsWallpaper) {
      screens.push_back({screen->title, "", draw(*screen, "light")});
      continue;
    }
    for (const char* wallpaper : {"light", "dark"})
      screens.push_back({screen->title, wallpaper, draw(*screen, wallpaper)});
  }
  return screens;
}

std::vector<DrawnScreen> drawnScreensOf(NSDictionary* settings) {
  const TemporaryContainer container;
  const std::string file = container.root() + "/theme.plist";
  writeTheme(settings, file);
  Materials materials = gather({.screens = {}, .icons = {}, .wallpaper = {}, .scale = 1});
  const Tabs tabs = Tabs::ofFile(file, "");
  const Tab& tab = tabs.all().front();
  const auto asked = askTabs(materials, {tab});
  const auto pictures = picturesOf(tab, asked.front(), materials);
  return drawnScreens([&](const Screen& screen, const std::string& wallpaper) {
    const std::string name = pictureFile(tab, screen, wallpaper, "after");
    for (const Picture& picture : pictures) {
      if (picture.file != name) continue;
      return screensModule().draw(picture.layers, picture.scene, materials.scale, Effort::kept);
    }
    throw Failure("no such picture", name);
  });
}

std::string themePage(const DrawnTheme& theme) {
  gallery::PageTheme page{theme.name, theme.lines, theme.text, {}};
  for (const auto& [title, wallpaper, png] : theme.screens)
    page.pictures.push_back({title, wallpaper, screensModule().dataAddress(png)});
  std::string text = gallery::themePage(page);
  // Even wallpapers of pure noise leave it below.
  if (text.size() > kLargestPage) throw Failure("the page is larger than 6 MB", theme.name);
  return text;
}

std::string themeSheet(const DrawnTheme& theme) {
  std::vector<varnix::screens::SheetPicture> pictures;
  for (const auto& [title, wallpaper, png] : theme.screens)
    pictures.push_back({wallpaper.empty() ? title : title + ", " + wallpaper, png});
  return screensModule().contactSheet(theme.name, pictures);
}

}  // namespace varnix::cli
