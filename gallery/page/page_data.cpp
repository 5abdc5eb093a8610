#include "gallery/page/page_data.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

#include "common/errors.h"
#include "common/json.h"
#include "gallery/page/contrast.h"

namespace varnix::cli::gallery {

namespace {

constexpr const char* kWallpapers[] = {"light", "dark"};

std::string revisionOf(const std::string& bytes) {
  char text[17];
  std::snprintf(text, sizeof text, "%016zx", std::hash<std::string>{}(bytes));
  return text;
}

Json picture(const std::filesystem::path& folder, const std::string& path) {
  std::ifstream in(folder / path, std::ios::binary);
  std::ostringstream bytes;
  // This also fails for an empty file and for a folder.
  if (!in || !(bytes << in.rdbuf())) {
    throw Failure("no such picture for the gallery", (folder / path).string());
  }
  return {{"path", path}, {"revision", revisionOf(bytes.str())}};
}

Json screenData(const std::filesystem::path& folder, const Json& screen) {
  Json result{{"id", screen.at("id")}, {"title", screen.at("title")}};
  for (const char* wallpaper : kWallpapers) {
    if (!screen.contains(wallpaper)) continue;
    for (const char* side : {"before", "after"}) {
      result[wallpaper][side] = picture(folder, screen.at(wallpaper).at(side).get<std::string>());
    }
  }
  return result;
}

std::optional<drawing::ByteColor> colorOf(const Json& value) {
  if (!value.is_string()) return {};
  return parseColor(value.get_ref<const std::string&>());
}

/// "#rrggbb".
std::string opaqueHex(const drawing::ByteColor& color) { return drawing::hex(color).substr(0, 7); }

Json surfaceData(const Json& surface) {
  Json result = surface;
  for (const char* key : {"contrast", "below", "nearest"}) result[key] = nullptr;
  // The system's own colours are not judged.
  if (surface.at("after") == surface.at("before")) return result;
  const auto dyed = colorOf(surface.at("after"));
  const auto behind = colorOf(surface.value("behind", Json()));
  if (!dyed || !behind) return result;

  const drawing::ByteColor ground = drawing::laidOn({255, 255, 255}, *behind);
  const drawing::ByteColor seen = drawing::laidOn(ground, *dyed);
  const double contrast = drawing::contrastRatio(seen, ground);
  result["contrast"] = std::floor(contrast * 100) / 100;
  if (contrast >= kLeastForText) return result;
  result["below"] = contrast < kLeastForShapes ? kLeastForShapes : kLeastForText;
  if (const auto nearest = nearestOfHue(seen, ground, kLeastForText)) {
    result["nearest"] = opaqueHex(*nearest);
  }
  return result;
}

}  // namespace

Json pageData(const std::filesystem::path& folder, const Json& gallery) {
  Json tabs = Json::array();
  for (const Json& tab : gallery.at("tabs")) {
    Json result{{"id", tab.at("id")},
                {"title", tab.at("title")},
                {"summary", tab.at("summary")},
                {"file", tab.at("file")},
                {"settings", tab.at("settings")}};
    result["screens"] = result["surfaces"] = Json::array();
    for (const Json& screen : tab.at("screens")) {
      result["screens"].push_back(screenData(folder, screen));
    }
    for (const Json& surface : tab.at("surfaces")) {
      result["surfaces"].push_back(surfaceData(surface));
    }
    tabs.push_back(std::move(result));
  }
  const std::string revision = revisionOf(dump(tabs));
  return {{"revision", revision},
          {"follows", gallery.value("follows", false)},
          {"tabs", std::move(tabs)}};
}

}  // namespace varnix::cli::gallery
