#include "preview/studio.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "common/interruption.h"
#include "common/json.h"
#include "gallery/page/gallery.h"

namespace varnix::cli {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

Studio::Studio(Materials materials, Tabs tabs, PageChoice choice)
    : materials_(std::move(materials)), tabs_(std::move(tabs)), choice_(choice) {}

Studio::Done Studio::work(const std::filesystem::path& folder, const Progress& progress) {
  Done done;
  const auto start = Clock::now();
  const auto asked = askTabs(materials_, tabs_.all(), before_);
  before_ = asked.front().before;
  throwIfInterrupted();
  done.asking = secondsSince(start);

  const auto drawing = Clock::now();
  std::vector<Picture> pictures;
  for (std::size_t i = 0; i < asked.size(); ++i) {
    for (Picture& picture : picturesOf(tabs_.all()[i], asked[i], materials_)) {
      std::string& contents = drawn_[picture.file];
      if (contents == picture.contents) continue;
      contents = picture.contents;
      const std::string title = picture.layers.back().screen->title;
      if (std::find(done.screens.begin(), done.screens.end(), title) == done.screens.end())
        done.screens.push_back(title);
      pictures.push_back(std::move(picture));
    }
  }
  done.pictures = pictures.size();
  drawPictures(pictures, folder, materials_.scale, progress);
  writeGallery(folder, galleryJson(tabs_.all(), asked, materials_, choice_));
  throwIfInterrupted();
  done.drawing = secondsSince(drawing);
  return done;
}

}  // namespace varnix::cli
