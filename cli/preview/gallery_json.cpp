#include "preview/gallery_json.h"

#include "drawing/hex.h"

#include <cmath>
#include <cstdio>
#include <optional>
#include <set>
#include <string_view>

#include "Foundation/property_list.h"
#include "common/answer_json.h"
#include "common/json.h"
#include "objc/autorelease_pool.h"
#include "settings/file.h"
#include "theme/difference.h"

namespace varnix::cli {

using varnix::screens::Color;

namespace {

enum class Behind : unsigned char { bar, page, wallpaper };

struct Place {
  std::string_view className;
  Behind behind;
};

/// What is behind a surface in an application. For those not listed it is a white page.
constexpr Place kPlaces[] = {
    {"UIStatusBarNewUIStyleAttributes", Behind::bar},
    {"UINavigationBar", Behind::bar},
    {"UITabBar", Behind::bar},
    {"UISegmentedControl", Behind::bar},
    {"UISegment", Behind::bar},
};

Behind behindOf(const varnix::screens::Screen& screen, std::string_view className) {
  if (screen.kind == host::ProcessKind::springboard) return Behind::wallpaper;
  for (const Place& place : kPlaces) {
    if (place.className == className) return place.behind;
  }
  return Behind::page;
}

std::string hex(const Color& color) {
  auto byte = [](double part) { return static_cast<std::uint8_t>(std::lround(part * 255)); };
  return drawing::hex(byte(color.red), byte(color.green), byte(color.blue));
}

std::string colorOf(Behind behind, const Materials& materials) {
  switch (behind) {
    case Behind::bar:
      return "#f8f8f8";
    case Behind::page:
      return "#ffffff";
    case Behind::wallpaper:
      break;
  }
  const auto light = materials.scenes.find("light");
  return hex(
      (light == materials.scenes.end() ? materials.scenes.begin() : light)->second.wallpaperColor);
}

/// Rows that several processes have in common are listed once.
Json surfacesOf(const AskedTab& asked, const Materials& materials) {
  Json rows = Json::array();
  std::set<std::string> listed, processes;
  for (const auto* screen : materials.screens) {
    if (!processes.insert(screen->bundle).second) continue;
    const std::string& bundle = screen->bundle;
    for (Json& row :
         comparedAnswers(*asked.before.at(bundle).surfaces, *asked.after.at(bundle).surfaces)) {
      if (!listed.insert(dump(row)).second) continue;
      const auto className = row["class"].get<std::string>();
      row["process"] = screen->bundle;
      row["behind"] = colorOf(behindOf(*screen, className), materials);
      rows.push_back(std::move(row));
    }
  }
  return rows;
}

Json screenJson(const Tab& tab, const varnix::screens::Screen& screen, const Materials& materials) {
  Json json{{"id", screen.id}, {"title", screen.title}};
  for (const auto& [wallpaper, scene] : materials.scenes) {
    json[wallpaper] = {{"before", pictureFile(tab, screen, wallpaper, "before")},
                       {"after", pictureFile(tab, screen, wallpaper, "after")}};
  }
  return json;
}

/// Empty for settings that cannot be read, which count as none.
Json settingsJson(const Tab& tab) {
  const objc::AutoreleasePool pool;
  Json lines = Json::array();
  auto* stored = objc::as<NSDictionary>(host::propertyListFromFile(tab.root + kSettingsPath));
  for (std::string& line : settingLines(stored)) lines.push_back(std::move(line));
  return lines;
}

}  // namespace

Json galleryJson(const std::vector<Tab>& tabs, const std::vector<AskedTab>& asked,
                 const Materials& materials, bool follows) {
  Json all = Json::array();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    Json screens = Json::array();
    for (const auto* screen : materials.screens)
      screens.push_back(screenJson(tabs[i], *screen, materials));
    all.push_back({{"id", tabs[i].id},
                   {"title", tabs[i].title},
                   {"summary", tabs[i].summary},
                   {"file", tabs[i].file},
                   {"settings", settingsJson(tabs[i])},
                   {"screens", screens},
                   {"surfaces", surfacesOf(asked[i], materials)}});
  }
  return {{"follows", follows}, {"tabs", all}};
}

}  // namespace varnix::cli
