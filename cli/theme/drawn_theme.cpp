#include "theme/drawn_theme.h"

#include "common/errors.h"
#include "gallery/page/theme_page.h"
#include "preview/screens_module.h"
#include "preview/sheet.h"
#include "settings/file.h"
#include "theme/theme_file.h"

namespace varnix::cli {

using varnix::screens::Effort;
using varnix::screens::Packing;
using varnix::screens::Screen;

namespace {

constexpr std::size_t kLargestPage = 6'000'000;

std::string pageOf(const DrawnTheme& theme, Packing packing) {
  gallery::PageTheme page{theme.name, theme.lines, theme.text, {}};
  for (const auto& [title, wallpaper, png] : theme.screens)
    page.pictures.push_back({title, wallpaper, screensModule().dataAddress(png, packing)});
  return gallery::themePage(page);
}

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
  // Own wallpapers may be photographs, which PNG does not make small.
  for (const Packing packing : {Packing::png, Packing::jpeg}) {
    std::string page = pageOf(theme, packing);
    if (page.size() <= kLargestPage) return page;
  }
  throw Failure("the page would be larger than 6 MB", theme.name);
}

std::string themeSheet(const DrawnTheme& theme) {
  std::vector<varnix::screens::SheetPicture> pictures;
  for (const auto& [title, wallpaper, png] : theme.screens)
    pictures.push_back({wallpaper.empty() ? title : title + ", " + wallpaper, png});
  return screensModule().contactSheet(theme.name, pictures);
}

}  // namespace varnix::cli
