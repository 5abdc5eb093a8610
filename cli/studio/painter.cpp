#include "studio/painter.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <string_view>
#include <utility>

#include "common/errors.h"
#include "common/framework_files.h"
#include "common/json.h"
#include "gallery/materials/listed_icons.h"
#include "gallery/materials/sample_files.h"
#include "gallery/materials/screens_module.h"

namespace varnix::cli {

using varnix::screens::Effort;
using varnix::screens::Layer;
using varnix::screens::Scene;
using varnix::screens::Screen;

namespace {

/// As many as there are processors on a small machine. More would only compete with the drawing.
constexpr std::size_t kAskers = 2;

const Screen& screenOf(const std::string& identifier) {
  return *screensNamed({identifier}).front();
}

/// The screen that a panel covers.
const Screen& screenBelow(const View& view) {
  return screenOf(view.isInFront ? "application" : "home");
}

bool isOfSpringBoard(const Screen& screen) { return screen.kind == host::ProcessKind::springboard; }

std::string tagOf(const std::vector<Layer>& layers, const View& view, long materials) {
  std::string text = view.wallpaper + ' ' + std::to_string(view.scale) + ' ' +
                     std::to_string(materials) + (view.plays ? " plays" : "");
  for (const auto& [screen, answers] : layers) {
    text.append("\n").append(screen->id);
    for (const auto& [name, answer] : answers->values) {
      text.append("\n").append(name).append(" ");
      if (const auto* color = std::get_if<std::string>(&answer)) text.append(*color);
      else if (const auto* number = std::get_if<double>(&answer)) text += std::to_string(*number);
      else if (const auto* truth = std::get_if<bool>(&answer)) text.append(*truth ? "yes" : "no");
    }
  }
  return std::to_string(std::hash<std::string>{}(text));
}

void replaceWallpaper(Materials& materials, const std::string& name, const std::string& file) {
  auto pixels = [&](double points) {
    return static_cast<int>(std::lround(points * materials.scale));
  };
  Scene& scene = materials.scenes.at(name);
  scene.wallpaper =
      pictureFrom(file, {pixels(varnix::screens::kWidth), pixels(varnix::screens::kHeight)});
  scene.wallpaperColor = screensModule().meanColor(scene.wallpaper);
}

}  // namespace

Painter::Painter(std::function<Shown(bool isOther)> newest) : newest_(std::move(newest)) {
  for (std::size_t i = 0; i < kAskers; ++i) free_.push_back(&askers_.emplace_back());
}

void Painter::use(const OwnMaterials& own) {
  auto dressed = std::make_shared<Dressed>();
  for (const int scale : {1, 2}) {
    MaterialChoice choice;
    choice.icons = own.icons;
    choice.scale = scale;
    Materials& materials = dressed->byScale[scale] = gather(choice);
    for (const auto& [name, file] : own.wallpapers) replaceWallpaper(materials, name, file);
  }
  dressed->cover = own.cover.empty() ? sampleFile("covers/dusk.png") : own.cover;
  if (!own.cover.empty()) pictureFrom(own.cover, {1, 1});
  const std::lock_guard lock(mutex_);
  if (dressed_) dressed->revision = dressed_->revision + 1;
  dressed_ = std::move(dressed);
}

ProcessQuestion Painter::question(const Screen& screen, const View& view,
                                  const Dressed& dressed) const {
  // The colours that a process is told must not depend on the picture's size.
  const Materials& materials = dressed.byScale.at(2);
  ProcessQuestion question;
  question.process.bundle = screen.bundle;
  question.process.kind = screen.kind;
  question.process.icons = iconsFor(screen.bundle, materials.icons);
  question.withLibrary = !view.isBefore;
  question.wallpapers = materials.wallpaperColors();
  question.asksSurfaces = false;
  for (const Screen* other : materials.screens) {
    if (std::string_view(other->bundle) == screen.bundle) question.screens.push_back(other);
  }
  if (isOfSpringBoard(screen)) {
    question.process.files = nowPlayingFiles();
    if (view.isInFront) question.process.open = screenOf("application").bundle;
    if (view.plays) question.artwork = dressed.cover;
  }
  return question;
}

Asker& Painter::takeAsker(std::unique_lock<std::mutex>& lock) {
  changed_.wait(lock, [this] { return !free_.empty(); });
  Asker* asker = free_.back();
  free_.pop_back();
  return *asker;
}

void Painter::giveBack(Asker& asker) {
  free_.push_back(&asker);
  changed_.notify_all();
}

Painter::Loan::Loan(Painter& painter)
    : painter_(painter), asker_([&painter]() -> Asker& {
        std::unique_lock lock(painter.mutex_);
        return painter.takeAsker(lock);
      }()) {}

Painter::Loan::~Loan() {
  const std::lock_guard lock(painter_.mutex_);
  painter_.giveBack(asker_);
}

Json Painter::pick(const std::string& file) { return Loan(*this)->pick(file); }

Painter::Answered Painter::answersOf(const Screen& screen, const View& view, long revision,
                                     const Dressed& dressed) {
  // Without the library the settings make no difference.
  if (view.isBefore) revision = 0;
  const bool isVaried = isOfSpringBoard(screen);
  std::unique_lock lock(mutex_);
  Slot& slot = slots_[{screen.bundle, view.isBefore, isVaried && view.plays,
                       isVaried && view.isInFront, view.isOther}];
  while (true) {
    if (slot.revision >= revision && slot.materials >= dressed.revision) {
      if (slot.answer == nullptr) throw std::runtime_error(slot.failure);
      return slot.answer;
    }
    if (slot.isAsking || free_.empty()) {
      changed_.wait(lock);
      continue;
    }
    slot.isAsking = true;
    Asker& asker = takeAsker(lock);
    lock.unlock();
    // What is asked for may have been replaced while this waited.
    const Shown shown = newest_(view.isOther);
    Answered answer;
    std::string failure;
    try {
      answer = std::make_shared<const ProcessAnswer>(
          asker.ask(question(screen, view, dressed), shown.bytes));
    } catch (const std::exception& error) {
      failure = error.what();
    }
    lock.lock();
    slot = {false, shown.revision, dressed.revision, std::move(answer), std::move(failure)};
    giveBack(asker);
  }
}

Painter::Painted Painter::paint(const View& view, long revision, const std::string& knownTag,
                                Effort effort) {
  std::shared_ptr<const Dressed> dressed;
  {
    const std::lock_guard lock(mutex_);
    dressed = dressed_;
  }
  const auto materials = dressed->byScale.find(view.scale);
  if (materials == dressed->byScale.end())
    throw UsageError("no such scale", std::to_string(view.scale));
  const auto scene = materials->second.scenes.find(view.wallpaper);
  if (scene == materials->second.scenes.end())
    throw UsageError("no such wallpaper", view.wallpaper);
  const Screen& screen = screenOf(view.screen);
  std::vector<const Screen*> drawn;
  if (screen.coversAnother) drawn.push_back(&screenBelow(view));
  drawn.push_back(&screen);
  std::vector<Answered> kept;
  std::vector<Layer> layers;
  for (const Screen* one : drawn) {
    kept.push_back(answersOf(*one, view, revision, *dressed));
    layers.push_back({one, &kept.back()->screens.at(one->id).at(view.wallpaper)});
  }
  Painted painted{tagOf(layers, view, dressed->revision), ""};
  if (painted.tag == knownTag) return painted;
  Scene seen = scene->second;
  seen.isPlaying = view.plays;
  painted.png = screensModule().draw(layers, seen, view.scale, effort);
  return painted;
}

}  // namespace varnix::cli
