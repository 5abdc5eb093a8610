// varnix preview: every screen before and after, as pictures and a page.
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "common/icon_choices.h"
#include "common/interruption.h"
#include "common/joined.h"
#include "common/output_file.h"
#include "common/root_choice.h"
#include "common/swatches.h"
#include "gallery/materials/screens_module.h"
#include "preview/against.h"
#include "preview/followed_file.h"
#include "preview/output_folder.h"
#include "preview/studio.h"
#include "preview/watch.h"
#include "settings/check.h"
#include "settings/file.h"

namespace varnix::cli {

namespace {

struct PreviewArguments {
  std::optional<std::string> out, root, settings, against;
  std::string artwork;
  std::vector<std::string> icons;
  MaterialChoice materials;
  bool watches = false;
};

constexpr double kLargestScale = 4;

void check(const PreviewArguments& arguments) {
  if (arguments.root && arguments.settings)
    throw UsageError("options that exclude each other", "--root and --settings");
  if (arguments.watches && !arguments.root && !arguments.settings)
    throw UsageError("missing option, which --watch needs", "--root DIR or --settings FILE");
  if (arguments.watches && arguments.against)
    throw UsageError("options that exclude each other", "--watch and --against");
  const double scale = arguments.materials.scale;
  if (!(scale >= 1 && scale <= kLargestScale))
    throw UsageError("not a scale from 1 to 4", std::to_string(scale));
}

std::string outputOf(const PreviewArguments& arguments) {
  return arguments.out.value_or(arguments.against ? "differences" : "preview");
}

/// The older gallery is removed with everything in it.
void requireInputsElsewhere(const PreviewArguments& arguments) {
  std::vector<std::string> inputs = {arguments.materials.wallpaper, arguments.artwork,
                                     arguments.settings.value_or(""), arguments.root.value_or(""),
                                     arguments.against.value_or("")};
  for (const auto& [identifier, file] : arguments.materials.icons) inputs.push_back(file);
  requireNoInputWithin(outputOf(arguments), inputs);
}

Tabs tabsFor(const PreviewArguments& arguments) {
  if (arguments.settings) return Tabs::ofFile(*arguments.settings, arguments.artwork);
  if (arguments.root)
    return Tabs::ofContainer(chosenRoot(arguments.root, RootUse::reads), arguments.artwork);
  return Tabs::samples(arguments.artwork);
}

/// No warnings about the samples, which are our own.
void warnOfStored(const PreviewArguments& arguments, const Tabs& tabs) {
  if (!arguments.settings && !arguments.root) return;
  const std::string file = tabs.all().front().root + kSettingsPath;
  warnOfSettings(file, arguments.settings.value_or(file));
}

void showProgress(std::size_t done, std::size_t all) {
  if (isatty(STDERR_FILENO) == 0 || isDumbTerminal()) return;
  std::cerr << "\rDrawing " << done << " of " << all << (done == all ? "\n" : "") << std::flush;
}

std::string seconds(double time) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f s", time);
  return text;
}

/// What --watch looks at.
struct Watched {
  std::optional<SettingsWatch> container;
  std::optional<FileWatch> file;
};

[[noreturn]] void follow(Watched& watched, const PreviewArguments& arguments,
                         const std::string& root, const std::function<void()>& changed) {
  std::cout << "Following the settings; to end, press Ctrl-C." << std::endl;
  if (watched.container) watched.container->follow(changed);
  followFile(*watched.file, *arguments.settings, root + kSettingsPath, changed);
}

void redraw(Studio& studio, const std::filesystem::path& folder) {
  const auto done = studio.work(folder, [](std::size_t, std::size_t) {});
  const std::string what = done.screens.empty() ? "Nothing changed" : joined(done.screens, ", ");
  std::cout << what << " (" << seconds(done.asking + done.drawing) << ")" << std::endl;
}

int preview(PreviewArguments& arguments) {
  check(arguments);
  noteInterruptions();
  arguments.materials.icons = iconsFrom(arguments.icons);
  requireInputsElsewhere(arguments);
  if (arguments.against) requireKeptPictures(*arguments.against);
  Materials materials = gather(arguments.materials);
  if (!arguments.artwork.empty()) pictureFrom(arguments.artwork, {1, 1});
  // Before the copy and the first question, so that no change is missed.
  Watched watched;
  if (arguments.watches && arguments.settings) watched.file.emplace(*arguments.settings);
  Tabs tabs = tabsFor(arguments);
  warnOfStored(arguments, tabs);
  const std::string root = tabs.all().front().root;
  if (arguments.watches && arguments.root) watched.container.emplace(root);
  Studio studio(std::move(materials), std::move(tabs), arguments.watches);
  if (arguments.against)
    return compareWithKept(studio, *arguments.against, outputOf(arguments),
                           arguments.materials.screens, showProgress);
  std::filesystem::path place;
  {
    OutputFolder folder(outputOf(arguments));
    const auto done = studio.work(folder.path(), showProgress);
    folder.putInPlace();
    place = folder.place();
    std::cout << escaped((place / "index.html").string()) << '\n'
              << done.pictures << " pictures: asked in " << seconds(done.asking) << ", drawn in "
              << seconds(done.drawing) << std::endl;
  }
  if (arguments.watches) follow(watched, arguments, root, [&] { redraw(studio, place); });
  return 0;
}

}  // namespace

Command previewCommand() {
  auto arguments = std::make_shared<PreviewArguments>();
  auto& materials = arguments->materials;
  return {.name = "preview",
          .summary = "Draw every screen before and after, and a page that shows them",
          .options = {{.name = "--out",
                       .value = "DIR",
                       .target = &arguments->out,
                       .meaning = "The folder to write; preview, and with --against differences",
                       .completes = Completes::folders},
                      {.name = "--root",
                       .value = "DIR",
                       .target = &arguments->root,
                       .meaning = "Use this container's settings",
                       .completes = Completes::folders},
                      {.name = "--settings",
                       .value = "FILE",
                       .target = &arguments->settings,
                       .meaning = "Use a copy of this settings file",
                       .completes = Completes::files},
                      {.name = "--wallpaper",
                       .value = "FILE",
                       .target = &materials.wallpaper,
                       .meaning = "PNG or JPEG",
                       .completes = Completes::files},
                      {.name = "--artwork",
                       .value = "FILE",
                       .target = &arguments->artwork,
                       .meaning = "The playing track's picture, PNG or JPEG",
                       .completes = Completes::files},
                      iconOption(arguments->icons),
                      {.name = "--only",
                       .value = "SCREEN",
                       .target = &materials.screens,
                       .meaning = "Draw this screen; repeatable"},
                      {.name = "--scale",
                       .value = "NUMBER",
                       .target = &materials.scale,
                       .meaning = "Pixels a point, 1 to 4; 2"},
                      {.name = "--against",
                       .value = "DIR",
                       .target = &arguments->against,
                       .meaning = "Compare with pictures kept there, and write only what differs",
                       .completes = Completes::folders},
                      {.name = "--watch",
                       .target = &arguments->watches,
                       .meaning = "Go on, and redraw what changes with the settings"}},
          .notes =
              "Without settings it draws four that show what there is. With --against the exit\n"
              "status is 1 where something differs.",
          .run = [arguments] { return preview(*arguments); }};
}

}  // namespace varnix::cli
