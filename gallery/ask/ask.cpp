#include "gallery/ask/ask.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <filesystem>
#include <optional>
#include <thread>

#include "Foundation/file_contents.h"
#include "Foundation/log.h"
#include "Foundation/property_list.h"
#include "common/answer_json.h"
#include "common/death_report.h"
#include "common/errors.h"
#include "common/hosted_child.h"
#include "common/input_limits.h"
#include "common/json.h"
#include "common/temporary_container.h"
#include "objc/autorelease_pool.h"
#include "platform/UIKit.h"
#include "probe/surfaces.h"
#include "settings/file.h"

namespace varnix::cli {

using varnix::screens::Answer;
using varnix::screens::Answers;

namespace {

constexpr std::chrono::seconds kAskingLimit{20};

Json toJson(const Answers& answers) {
  Json json = Json::object();
  for (const auto& [name, answer] : answers.values) {
    std::visit(
        [&, &key = name](const auto& value) {
          if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::monostate>) {
            json[key] = nullptr;
          } else {
            json[key] = value;
          }
        },
        answer);
  }
  return json;
}

Answers fromJson(const Json& json) {
  Answers answers;
  for (const auto& [name, value] : json.items()) {
    Answer& answer = answers.values[name];
    if (value.is_boolean()) answer = value.get<bool>();
    else if (value.is_number()) answer = value.get<double>();
    else if (value.is_string()) answer = value.get<std::string>();
  }
  return answers;
}

/// Does nothing in a process without the framework of the playing track.
void play(const std::string& artwork) {
  if (objc_getClass("MPUNowPlayingController") == nullptr) return;
  const auto bytes = host::fileContents(artwork, kLargestFile);
  if (!bytes) throw Failure("cannot be read", artwork);
  auto* image = send<NSObject*>(objc_getClass("UIImage"), "imageWithData:"_sel,
                                NSData::dataWithBytes(bytes->data(), bytes->size()));
  varnix::probe::playTrack(image, true);
}

/// The container of a process. The Settings application writes down what it has shown: it works on
/// a copy; without the library on an empty one, as after the installation.
class OwnContainer {
 public:
  explicit OwnContainer(const ProcessQuestion& question) : root_(question.process.root) {
    if (question.process.bundle != "com.apple.Preferences") return;
    const std::string file = root_ + kSettingsPath;
    if (question.withLibrary && std::filesystem::exists(file)) copyFrom(file);
    else copy_.emplace();
    root_ = copy_->root();
  }
  const std::string& root() const { return root_; }

 private:
  /// The library writes the file in place, and processes beside this one keep colours in it: what
  /// was read in the middle of that holds no settings, and is read again for a while.
  void copyFrom(const std::string& file) {
    constexpr int kTries = 50;
    constexpr std::chrono::milliseconds kPause{10};
    for (int i = 0; i < kTries; ++i) {
      copy_.emplace(kSettingsPath, file);
      if (host::propertyListFromFile(copy_->root() + kSettingsPath) != nullptr) return;
      std::this_thread::sleep_for(kPause);
    }
  }

  std::string root_;
  std::optional<TemporaryContainer> copy_;
};

/// In the child: turns this process into the hosted one.
std::string answer(const ProcessQuestion& question) {
  objc::AutoreleasePool pool;
  host::printLog(false);
  const OwnContainer own(question);
  host::ProcessOptions process = question.process;
  process.root = own.root();
  host::startProcess(process);
  if (question.withLibrary) loadNamed(host::defaultLibraryPath());
  if (!question.artwork.empty()) play(question.artwork);
  // The settings' pages bring the library with them.
  const Json surfaces = question.asksSurfaces ? surfaceAnswers() : Json::array();
  Json screens = Json::object();
  for (const auto* screen : question.screens) {
    Json& answers = screens[screen->id] = Json::object();
    for (const auto& [wallpaper, color] : question.wallpapers) {
      objc::AutoreleasePool inner;
      // Null: the same as on the wallpaper before. The Settings' icons are long texts.
      const bool isAsked = answers.empty() || screen->showsWallpaper;
      answers[wallpaper] = isAsked ? toJson(screen->ask({color})) : Json();
    }
  }
  return dump(Json{{"screens", screens}, {"surfaces", surfaces}});
}

std::string awaited(HostedChild& child) {
  return child.wait(std::chrono::steady_clock::now() + kAskingLimit);
}

}  // namespace

std::string askedText(const ProcessQuestion& question) {
  HostedChild child([&question] { return answer(question); });
  return awaited(child);
}

ProcessAnswer parsedAnswer(const std::string& text) {
  const Json json = Json::parse(text);
  ProcessAnswer parsed;
  for (const auto& [screen, wallpapers] : json["screens"].items()) {
    Answers last;
    for (const auto& [wallpaper, answers] : wallpapers.items()) {
      if (!answers.is_null()) last = fromJson(answers);
      parsed.screens[screen][wallpaper] = last;
    }
  }
  parsed.surfaces = std::make_shared<const Json>(json["surfaces"]);
  return parsed;
}

std::vector<ProcessAnswer> askProcesses(const std::vector<ProcessQuestion>& questions) {
  const std::size_t atOnce = std::max(std::thread::hardware_concurrency(), 1U);
  std::vector<ProcessAnswer> answers;
  std::deque<HostedChild> running;
  for (const ProcessQuestion& question : questions) {
    if (running.size() == atOnce) {
      answers.push_back(parsedAnswer(awaited(running.front())));
      running.pop_front();
    }
    running.emplace_back([&question] { return answer(question); });
  }
  for (HostedChild& child : running) answers.push_back(parsedAnswer(awaited(child)));
  return answers;
}

}  // namespace varnix::cli
