// varnix preview: every screen before and after, as pictures and a page.
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <memory>
#include <optional>

#include "commands.h"
#include "errors.h"
#include "icon_choices.h"
#include "preview/interruption.h"
#include "preview/output_folder.h"
#include "preview/screens_module.h"
#include "preview/studio.h"
#include "preview/watch.h"
#include "process/container.h"

namespace varnix::cli {

namespace {

struct Arguments {
  std::string out = "preview";
  std::string root, settings;
  bool hasRoot = false, hasSettings = false;
  std::string artwork;
  std::vector<std::string> icons;
  MaterialChoice materials;
  bool watches = false;
};

constexpr double kLargestScale = 4;

void check(const Arguments& arguments) {
  if (arguments.hasRoot && arguments.hasSettings)
    throw UsageError("options that exclude each other", "--root and --settings");
  if (arguments.watches && !arguments.hasRoot)
    throw UsageError("missing option, which --watch needs", "--root DIR");
  const double scale = arguments.materials.scale;
  if (!(scale >= 1 && scale <= kLargestScale))
    throw UsageError("not a scale from 1 to 4", std::to_string(scale));
}

Tabs tabsFor(const Arguments& arguments) {
  if (arguments.hasSettings) return Tabs::ofFile(arguments.settings, arguments.artwork);
  if (arguments.hasRoot)
    return Tabs::ofContainer(host::resolveContainerRoot(arguments.root), arguments.artwork);
  return Tabs::samples(arguments.artwork);
}

void showProgress(std::size_t done, std::size_t all) {
  if (isatty(STDERR_FILENO) == 0) return;
  std::cerr << "\rDrawing " << done << " of " << all << (done == all ? "\n" : "") << std::flush;
}

std::string seconds(double time) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f s", time);
  return text;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : ", ").append(word);
  return text;
}

void follow(SettingsWatch& watch, Studio& studio, const std::filesystem::path& folder) {
  std::cout << "Following the settings; to end, press Ctrl-C." << std::endl;
  watch.follow([&] {
    const auto done = studio.work(folder, [](std::size_t, std::size_t) {});
    const std::string what = done.screens.empty() ? "Nothing changed" : joined(done.screens);
    std::cout << what << " (" << seconds(done.asking + done.drawing) << ")" << std::endl;
  });
}

int preview(Arguments& arguments) {
  check(arguments);
  noteInterruptions();
  arguments.materials.icons = iconsFrom(arguments.icons);
  Materials materials = gather(arguments.materials);
  if (!arguments.artwork.empty()) pictureFrom(arguments.artwork, {1, 1});
  Tabs tabs = tabsFor(arguments);
  // Before anything is asked, so that no change is missed.
  std::optional<SettingsWatch> watch;
  if (arguments.watches) watch.emplace(tabs.all().front().root);
  Studio studio(std::move(materials), std::move(tabs));
  std::filesystem::path place;
  {
    OutputFolder folder(arguments.out);
    const auto done = studio.work(folder.path(), showProgress);
    folder.putInPlace();
    place = folder.place();
    std::cout << (place / "index.html").string() << '\n'
              << done.pictures << " pictures: asked in " << seconds(done.asking) << ", drawn in "
              << seconds(done.drawing) << std::endl;
  }
  if (watch) follow(*watch, studio, place);
  return 0;
}

int previewOrEnd(Arguments& arguments) {
  try {
    return preview(arguments);
  } catch (const Interrupted& end) {
    return 128 + end.signal;
  }
}

}  // namespace

void addPreview(CLI::App& app, Action& chosen) {
  auto arguments = std::make_shared<Arguments>();
  CLI::App* command = app.add_subcommand(
      "preview",
      "Draw every screen before and after, and a page that shows them; without settings for four\n"
      "that show what there is");
  auto& materials = arguments->materials;
  command->add_option("--out", arguments->out, "The folder to write; preview")->type_name("DIR");
  CLI::Option* root =
      command->add_option("--root", arguments->root, "Use this container's settings")
          ->type_name("DIR");
  CLI::Option* settings =
      command->add_option("--settings", arguments->settings, "Use a copy of this settings file")
          ->type_name("FILE");
  command->add_option("--wallpaper", materials.wallpaper, "PNG or JPEG")->type_name("FILE");
  command->add_option("--artwork", arguments->artwork, "The playing track's picture, PNG or JPEG")
      ->type_name("FILE");
  command->add_option("--icon", arguments->icons, "An application's icon, PNG or JPEG; repeatable")
      ->type_name("ID=FILE")
      ->allow_extra_args(false);
  command->add_option("--only", materials.screens, "Draw this screen; repeatable")
      ->type_name("SCREEN")
      ->allow_extra_args(false);
  command->add_option("--scale", materials.scale, "Pixels a point, 1 to 4; 2")->type_name("NUMBER");
  command->add_flag("--watch", arguments->watches,
                    "Go on, and redraw what changes with the settings of --root");
  command->callback([arguments, root, settings, &chosen] {
    arguments->hasRoot = root->count() > 0;
    arguments->hasSettings = settings->count() > 0;
    chosen = [arguments] { return previewOrEnd(*arguments); };
  });
}

}  // namespace varnix::cli
