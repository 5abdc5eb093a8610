#include "AppList/applications.h"

#include <cctype>
#include <filesystem>

#include "process/container.h"
#include "process/process.h"

namespace host {
namespace {

struct Known {
  const char* identifier;
  const char* name;
  bool isHidden = false;
};

/// On every phone, and two that many people have.
constexpr Known kKnown[] = {
    {"com.apple.Maps", "Maps"},
    {"com.apple.MobileSMS", "Messages"},
    {"com.apple.Music", "Music"},
    {"com.apple.Preferences", "Settings"},
    {"com.apple.WebSheet", "WebSheet", true},
    {"com.apple.mobilemail", "Mail"},
    {"com.apple.mobilenotes", "Notes"},
    {"com.apple.mobilesafari", "Safari"},
    {"com.apple.mobileslideshow", "Photos"},
    {"com.atebits.Tweetie2", "Twitter"},
    {"com.burbn.instagram", "Instagram"},
};

/// "Notes" for "com.example.notes".
std::string nameFrom(const std::string& identifier) {
  std::string name = identifier.substr(identifier.rfind('.') + 1);
  if (name.empty()) return identifier;
  name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
  return name;
}

}  // namespace

std::map<std::string, InstalledApplication> installedApplications() {
  std::map<std::string, InstalledApplication> all;
  for (const Known& known : kKnown) all[known.identifier] = {known.name, known.isHidden};
  auto add = [&](const std::string& identifier) {
    all.try_emplace(identifier, InstalledApplication{nameFrom(identifier)});
  };
  for (const auto& [identifier, file] : processOptions().icons) add(identifier);
  std::error_code error;
  for (std::filesystem::directory_iterator entry(hostPath("/Applications"), error), end;
       !error && entry != end; entry.increment(error)) {
    if (entry->path().extension() == ".png") add(entry->path().stem().string());
  }
  return all;
}

std::string applicationIcon(const std::string& identifier) {
  if (identifier.empty() || identifier.find('/') != identifier.npos) return {};
  const auto& icons = processOptions().icons;
  const auto chosen = icons.find(identifier);
  return chosen != icons.end() ? chosen->second : hostPath("/Applications/" + identifier + ".png");
}

}  // namespace host
