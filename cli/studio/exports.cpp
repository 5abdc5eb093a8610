#include "studio/exports.h"

#include <filesystem>

#include "objc/autorelease_pool.h"
#include "theme/difference.h"
#include "theme/drawn_theme.h"
#include "theme/theme_file.h"

namespace varnix::cli {

using varnix::screens::Effort;
using varnix::screens::Screen;

namespace {

constexpr char kUnnamed[] = "Theme";

/// The screens come later: nothing is drawn while others wait for the theme.
DrawnTheme undrawn(Session& session, const std::optional<std::string>& file, long& revision) {
  DrawnTheme drawn;
  drawn.name = file ? std::filesystem::path(*file).stem().string() : kUnnamed;
  session.with([&](Theme& theme) {
    NSDictionary* settings = settingsOf(dictionaryOf(theme.values()), drawn.name);
    drawn.lines = settingLines(settings);
    drawn.text = themeText(settings, drawn.name);
    revision = theme.revision();
  });
  return drawn;
}

DrawnTheme drawn(Session& session, Painter& painter, const std::optional<std::string>& file) {
  long revision = 0;
  DrawnTheme theme = undrawn(session, file, revision);
  theme.screens = drawnScreens([&](const Screen& screen, const std::string& wallpaper) {
    View view;
    view.screen = screen.id;
    view.wallpaper = wallpaper;
    view.scale = 1;
    return painter.paint(view, revision, "", Effort::kept).png;
  });
  return theme;
}

}  // namespace

std::string exportedText(Session& session) {
  long revision = 0;
  return undrawn(session, {}, revision).text;
}

std::string exportedPage(Session& session, Painter& painter,
                         const std::optional<std::string>& file) {
  return themePage(drawn(session, painter, file));
}

std::string exportedSheet(Session& session, Painter& painter,
                          const std::optional<std::string>& file) {
  return themeSheet(drawn(session, painter, file));
}

}  // namespace varnix::cli
