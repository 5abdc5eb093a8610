// The gallery: how long the whole command takes, and where a picture's time goes.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "drawing/picture.h"
#include "gallery/screens/backdrop.h"
#include "gallery/screens/screen.h"
#include "table.h"
#include "timing.h"

namespace {

using namespace varnix::screens;

constexpr double kScale = 2;
constexpr int kRounds = 5;

constexpr const Screen* kScreens[] = {
    &kApplication,        &kMessages, &kHome,      &kControlCenter,
    &kNotificationCenter, &kVolume,   &kInstagram, &kTwitter};

template <class F>
double milliseconds(F call) {
  constexpr double kNanoseconds = 1e6;
  return bench::bestOf(kRounds, 1, call) / kNanoseconds;
}

Surface whole(const std::filesystem::path& file, const Pixels& covered) {
  std::string problem;
  Surface picture = readPicture(file, covered, problem);
  if (!problem.empty()) throw std::runtime_error(file.string() + ": " + problem);
  return picture;
}

Scene sampleScene() {
  const std::filesystem::path samples = VARNIX_SAMPLES;
  Scene scene;
  scene.wallpaper = whole(samples / "wallpapers/dark.png", {750, 1334});
  scene.wallpaperColor = meanColor(scene.wallpaper);
  scene.photograph = whole(samples / "covers/tides.png", {750, 750});
  for (const auto& entry : std::filesystem::directory_iterator(samples / "icons")) {
    if (entry.path().extension() == ".png")
      scene.icons[entry.path().stem()] = whole(entry.path(), {120, 120});
  }
  return scene;
}

void measureScreens() {
  const Scene scene = sampleScene();
  const Answers answers;
  const Canvas home(kWidth, kHeight, kScale);
  kHome.draw(home, answers, scene);
  for (const Screen* screen : kScreens) {
    const double time = milliseconds([&] {
      const Canvas canvas(kWidth, kHeight, kScale);
      screen->draw(canvas, answers, scene);
    });
    bench::report(std::string("draw ") + screen->id + ", ms", time, bench::Goal::none());
  }
  bench::report("blur a screen, ms", milliseconds([&] { blurredBehind(home); }),
                bench::Goal::none());
  bench::report("write a screen as PNG, ms", milliseconds([&] { encodePng(home.surface()); }),
                bench::Goal::none());
}

/// Seconds for the whole command.
double gallerySeconds() {
  std::string folder = (std::filesystem::temp_directory_path() / "varnix-bench-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) std::abort();
  const auto start = std::chrono::steady_clock::now();
  const pid_t process = fork();
  if (process == 0) {
    const std::string out = folder + "/gallery";
    execl(VARNIX_CLI, VARNIX_CLI, "preview", "--out", out.c_str(), nullptr);
    _exit(127);
  }
  int status = 0;
  waitpid(process, &status, 0);
  const double time =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::filesystem::remove_all(folder);
  if (status != 0) std::abort();
  return time;
}

}  // namespace

int main() {
  constexpr double kGoal = 15;
  bench::report("whole gallery, s", gallerySeconds(), bench::Goal::atMost(kGoal));
  measureScreens();
  bench::printTable();
}
