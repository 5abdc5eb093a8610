#include "preview/sheet.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "common/errors.h"
#include "common/framework_files.h"
#include "gallery/materials/listed_icons.h"
#include "gallery/materials/screens_module.h"

namespace varnix::cli {

using varnix::screens::Answers;
using varnix::screens::Layer;
using varnix::screens::Scene;
using varnix::screens::Screen;

namespace {

const Screen& screenNamed(std::string_view identifier) {
  for (const Screen* screen : screensModule().screens) {
    if (screen->id == identifier) return *screen;
  }
  throw Failure("no such screen", std::string(identifier));
}

}  // namespace

const Screen& coveredScreen(const Tab& tab) {
  const Screen& application = screenNamed("application");
  return tab.open == application.bundle ? application : screenNamed("home");
}

namespace {

/// The screens that are drawn for a tab, including those that others cover.
std::vector<const Screen*> screensIn(const Materials& materials, const Tab& tab) {
  std::vector<const Screen*> drawn = materials.screens;
  const bool anyCovers =
      std::any_of(drawn.begin(), drawn.end(), [](const Screen* s) { return s->coversAnother; });
  if (anyCovers && std::find(drawn.begin(), drawn.end(), &coveredScreen(tab)) == drawn.end())
    drawn.push_back(&coveredScreen(tab));
  return drawn;
}

struct Asked {
  std::size_t tab;
  std::string bundle;
  bool withLibrary;
};

}  // namespace

host::ProcessOptions processOf(const Screen& screen, const Tab& tab, const Materials& materials) {
  host::ProcessOptions options;
  options.bundle = screen.bundle;
  options.kind = screen.kind;
  options.icons = iconsFor(screen.bundle, materials.icons);
  options.root = tab.root;
  if (screen.kind == host::ProcessKind::springboard) {
    options.open = tab.open;
    options.files = nowPlayingFiles();
  }
  return options;
}

namespace {

std::string contentsOf(const std::vector<Layer>& layers, const std::string& wallpaper,
                       const Scene& scene) {
  std::string text;
  for (const auto& [screen, answers] : layers) {
    text.append(screen->id).append(" ");
    if (screen->showsWallpaper) text.append(wallpaper).append(scene.isPlaying ? " plays" : "");
    for (const auto& [name, answer] : answers->values) {
      text.append("\n").append(name).append(" ");
      if (const auto* color = std::get_if<std::string>(&answer)) text.append(*color);
      else if (const auto* number = std::get_if<double>(&answer)) text += std::to_string(*number);
      else if (const auto* truth = std::get_if<bool>(&answer)) text.append(*truth ? "yes" : "no");
    }
    text.append("\n\n");
  }
  return text;
}

}  // namespace

std::vector<AskedTab> askTabs(const Materials& materials, const std::vector<Tab>& tabs,
                              const ProcessAnswers& knownBefore) {
  std::vector<ProcessQuestion> questions;
  std::vector<Asked> asked;
  std::set<std::string> askedBefore;
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    std::map<std::string, std::size_t> questionOf;
    for (const Screen* screen : screensIn(materials, tabs[i])) {
      const auto found = questionOf.find(screen->bundle);
      if (found != questionOf.end()) {
        questions[found->second].screens.push_back(screen);
        continue;
      }
      questionOf[screen->bundle] = questions.size();
      questions.push_back({processOf(*screen, tabs[i], materials),
                           true,
                           tabs[i].artwork,
                           {screen},
                           materials.wallpaperColors()});
      asked.push_back({i, screen->bundle, true});
    }
  }
  // Without the library the settings make no difference, so asking once is enough.
  const std::size_t count = questions.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (knownBefore.contains(asked[i].bundle) || !askedBefore.insert(asked[i].bundle).second)
      continue;
    ProcessQuestion plain = questions[i];
    plain.withLibrary = false;
    std::set<const Screen*> screens;
    for (std::size_t j = 0; j < count; ++j) {
      if (asked[j].bundle == asked[i].bundle)
        screens.insert(questions[j].screens.begin(), questions[j].screens.end());
    }
    plain.screens.assign(screens.begin(), screens.end());
    questions.push_back(std::move(plain));
    asked.push_back({0, asked[i].bundle, false});
  }

  const auto answers = askProcesses(questions);
  std::vector<AskedTab> result(tabs.size(), AskedTab{knownBefore, {}});
  for (std::size_t i = 0; i < answers.size(); ++i) {
    if (asked[i].withLibrary) {
      result[asked[i].tab].after[asked[i].bundle] = answers[i];
    } else {
      for (AskedTab& tab : result) tab.before[asked[i].bundle] = answers[i];
    }
  }
  return result;
}

std::string pictureFile(const Tab& tab, const Screen& screen, const std::string& wallpaper,
                        const char* when) {
  return tab.id + "/" + screen.id + "-" + wallpaper + "-" + when + ".png";
}

std::vector<Picture> picturesOf(const Tab& tab, const AskedTab& asked, const Materials& materials) {
  std::vector<Picture> pictures;
  for (const Screen* screen : materials.screens) {
    for (const auto& [wallpaper, scene] : materials.scenes) {
      for (const char* when : {"before", "after"}) {
        const ProcessAnswers& answers =
            std::string_view(when) == "before" ? asked.before : asked.after;
        auto layer = [&, &name = wallpaper](const Screen& drawn) -> Layer {
          return {&drawn, &answers.at(drawn.bundle).screens.at(drawn.id).at(name)};
        };
        Picture picture{pictureFile(tab, *screen, wallpaper, when), "", {}, scene};
        picture.scene.isPlaying = !tab.artwork.empty();
        if (screen->coversAnother) picture.layers.push_back(layer(coveredScreen(tab)));
        picture.layers.push_back(layer(*screen));
        picture.contents = contentsOf(picture.layers, wallpaper, picture.scene);
        pictures.push_back(std::move(picture));
      }
    }
  }
  return pictures;
}

}  // namespace varnix::cli
