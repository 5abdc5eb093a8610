#include "sample.h"

#include <cairo.h>

#include <stdexcept>
#include <string>

#include "common/json.h"

using varnix::cli::Json;

namespace {

constexpr int kWidth = 375, kHeight = 667;

void setColor(cairo_t* context, unsigned color) {
  cairo_set_source_rgb(context, ((color >> 16) & 255) / 255.0, ((color >> 8) & 255) / 255.0,
                       (color & 255) / 255.0);
}

/// Bars of the colour on the ground, and a stroke across.
void drawPicture(const std::filesystem::path& path, unsigned ground, unsigned color,
                 unsigned stroke) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
  cairo_t* context = cairo_create(surface);
  setColor(context, ground);
  cairo_paint(context);
  setColor(context, color);
  for (int y = 80; y < kHeight - 80; y += 90) cairo_rectangle(context, 24, y, kWidth - 48, 45);
  cairo_fill(context);
  setColor(context, stroke);
  cairo_rectangle(context, 0, kHeight / 2.0 - 10, kWidth, 20);
  cairo_fill(context);
  cairo_destroy(context);
  const cairo_status_t status = cairo_surface_write_to_png(surface, path.c_str());
  cairo_surface_destroy(surface);
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

Json screen(const std::filesystem::path& folder, const std::string& tab, const std::string& id,
            const std::string& title, unsigned dye, unsigned stroke) {
  std::filesystem::create_directories(folder / tab);
  Json result{{"id", id}, {"title", title}};
  for (const bool dark : {false, true}) {
    const std::string name = tab + "/" + id + (dark ? "-dark-" : "-light-");
    const unsigned ground = dark ? 0x20222a : 0xefeff4;
    drawPicture(folder / (name + "before.png"), ground, 0x007aff, 0xffffff);
    drawPicture(folder / (name + "after.png"), ground, dye, stroke);
    result[dark ? "dark" : "light"] = {{"before", name + "before.png"},
                                       {"after", name + "after.png"}};
  }
  return result;
}

Json surface(const char* process, const char* name, const char* property, const char* situation,
             Json before, Json after, Json behind) {
  return {{"process", process},          {"class", name},
          {"property", property},        {"case", situation},
          {"before", std::move(before)}, {"after", std::move(after)},
          {"behind", std::move(behind)}};
}

Json surfaces(const std::string& dye) {
  Json result = Json::array();
  const char* application = "com.example.notes";
  const char* springboard = "com.apple.springboard";
  for (const Json& one :
       {surface(application, "UIView", "tintColor", "view", "#007affff", dye, "#ffffff"),
        surface(application, "UINavigationBar", "tintColor", "navigation bar", "#007affff", dye,
                "#f8f8f8"),
        surface(application, "UISwitch", "onTintColor", "after layout, set to red", "#ff3b30ff",
                "#ffd60aff", "#ffffff"),
        surface(application, "UIKeyboard", "opaque", "keyboard", true, false, nullptr),
        surface(application, "UIButton", "tintColor", "button", "#007affff", "#007affff",
                "#ffffff"),
        surface(application, "UITabBar", "tintColor", "tab bar", "#007affff", "#e91e63ff",
                "#ffffff"),
        surface(springboard, "SBControlCenterContentContainerView", "colorTint", "presented",
                nullptr, "#1e88e580", "#203040"),
        surface(springboard, "SBIconBlurryBackgroundView", "fallbackColor", "set to grey",
                "#808080ff", "#1e88e5ff", nullptr),
        surface(springboard, "SBHUDView", "colorTint", "after layout", nullptr, nullptr,
                "#203040")}) {
    result.push_back(one);
  }
  return result;
}

}  // namespace

Json drawSampleGallery(const std::filesystem::path& folder, unsigned stroke) {
  Json tabs = Json::array();
  tabs.push_back(
      {{"id", "global-color"},
       {"title", "Global colour"},
       {"summary", "One colour for everything."},
       {"file", "themes/violet.plist"},
       {"settings", Json::array({"enabled = true", "global_color = \"#8e24aa\""})},
       {"screens",
        Json::array({screen(folder, "global-color", "messages", "Messages", 0x8e24aa, stroke),
                     screen(folder, "global-color", "home", "Home screen", 0x8e24aa, 0xffffff)})},
       {"surfaces", surfaces("#8e24aaff")}});
  tabs.push_back(
      {{"id", "album-art"},
       {"title", "Album art"},
       {"summary", "The colours of the track that plays. <b>&amp;</script>"},
       {"file", "<b>.plist"},
       {"settings", Json::array()},
       {"screens",
        Json::array({screen(folder, "album-art", "messages", "Messages", 0x43a047, 0xffffff),
                     screen(folder, "album-art", "home", "Home screen", 0x43a047, 0xffffff)})},
       {"surfaces", surfaces("#43a047ff")}});
  return {{"follows", true}, {"tabs", std::move(tabs)}};
}
