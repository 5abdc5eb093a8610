// varnix preview: every screen before and after, as pictures and a page.
#include <unistd.h>

#include <cmath>
#include <iostream>
#include <memory>

#include "commands.h"
#include "errors.h"
#include "icon_choices.h"
#include "preview/gallery/gallery.h"
#include "preview/gallery_json.h"
#include "preview/interruption.h"
#include "preview/output_folder.h"
#include "preview/sheet.h"
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

int preview(Arguments& arguments) {
  check(arguments);
  noteInterruptions();
  arguments.materials.icons = iconsFrom(arguments.icons);
  Materials materials = gather(arguments.materials);
  const Tabs tabs = tabsFor(arguments);
  OutputFolder folder(arguments.out);
  const auto asked = askTabs(materials, tabs.all());
  std::vector<Picture> pictures;
  for (std::size_t i = 0; i < tabs.all().size(); ++i) {
    auto more = picturesOf(tabs.all()[i], asked[i], materials);
    pictures.insert(pictures.end(), more.begin(), more.end());
  }
  drawPictures(pictures, folder.path(), materials.scale, showProgress);
  writeGallery(folder.path(), galleryJson(tabs.all(), asked, materials));
  throwIfInterrupted();
  folder.putInPlace();
  std::cout << (folder.place() / "index.html").string() << '\n';
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
  command->callback([arguments, root, settings, &chosen] {
    arguments->hasRoot = root->count() > 0;
    arguments->hasSettings = settings->count() > 0;
    chosen = [arguments] { return previewOrEnd(*arguments); };
  });
}

}  // namespace varnix::cli
