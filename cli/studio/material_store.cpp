#include "studio/material_store.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <set>
#include <system_error>

#include "Foundation/file_contents.h"
#include "common/errors.h"
#include "common/json.h"
#include "common/output_file.h"
#include "gallery/materials/screens_module.h"

namespace varnix::cli {

namespace fs = std::filesystem;

namespace {

constexpr char kIndex[] = "materials.json";
constexpr std::string_view kIconPlace = "icon/", kWallpaperPlace = "wallpaper/",
                           kCoverPlace = "cover";
constexpr std::size_t kLargestIndex = 1 << 20;

bool isIdentifier(std::string_view text) {
  constexpr std::size_t kLongestIdentifier = 200;
  return !text.empty() && text.size() <= kLongestIdentifier &&
         std::ranges::all_of(text, [](unsigned char c) {
           return std::isalnum(c) != 0 || c == '.' || c == '-' || c == '_';
         });
}

bool isName(const std::string& name) {
  return (name.ends_with(".png") || name.ends_with(".jpg")) &&
         std::all_of(name.begin(), name.end() - 4,
                     [](unsigned char c) { return std::isxdigit(c) != 0 || c == '-'; });
}

const char* extensionOf(std::string_view bytes) {
  if (bytes.starts_with("\x89PNG\r\n\x1a\n")) return ".png";
  if (bytes.starts_with("\xff\xd8")) return ".jpg";
  throw UsageError("neither PNG nor JPEG", std::to_string(bytes.size()) + " bytes");
}

std::string nameOf(const std::string& bytes) {
  char text[64];
  std::snprintf(text, sizeof text, "%016zx-%zx%s", std::hash<std::string>{}(bytes), bytes.size(),
                extensionOf(bytes));
  return text;
}

}  // namespace

bool MaterialStore::isPlace(std::string_view place) {
  if (place == kCoverPlace) return true;
  if (place.starts_with(kIconPlace)) return isIdentifier(place.substr(kIconPlace.size()));
  return place == "wallpaper/light" || place == "wallpaper/dark";
}

MaterialStore::MaterialStore(fs::path folder) : folder_(std::move(folder)) {
  const auto text = host::fileContents(folder_ / kIndex, kLargestIndex);
  if (!text) return;
  const Json index = Json::parse(*text, nullptr, false);
  if (!index.is_object()) return;
  std::error_code ignored;
  for (const auto& [place, name] : index.items()) {
    if (!isPlace(place) || !name.is_string()) continue;
    const auto file = name.get<std::string>();
    if (isName(file) && fs::is_regular_file(folder_ / file, ignored)) names_[place] = file;
  }
}

void MaterialStore::put(const std::string& place, const std::string& bytes) {
  if (!isPlace(place)) throw UsageError("no such place", place);
  const std::string name = nameOf(bytes);
  const std::lock_guard lock(mutex_);
  std::error_code error;
  fs::create_directories(folder_, error);
  if (error) throw Failure("cannot make the folder", folder_.string() + ": " + error.message());
  const std::string file = folder_ / name;
  const bool isNew = !fs::exists(file, error);
  if (isNew) writeOutput(file, bytes);
  try {
    pictureFrom(file, {1, 1});
  } catch (const Failure&) {
    if (isNew) fs::remove(file, error);
    throw UsageError("not a picture that can be read", std::to_string(bytes.size()) + " bytes");
  }
  names_[place] = name;
  write();
}

bool MaterialStore::remove(const std::string& place) {
  const std::lock_guard lock(mutex_);
  if (names_.erase(place) == 0) return false;
  write();
  return true;
}

std::string MaterialStore::fileOf(const std::string& place) const {
  const auto found = names_.find(place);
  return found == names_.end() ? "" : (folder_ / found->second).string();
}

std::string MaterialStore::file(const std::string& place) const {
  const std::lock_guard lock(mutex_);
  return fileOf(place);
}

void MaterialStore::write() const {
  writeOutput(folder_ / kIndex, dump(listed(), 2) + '\n');
  removeUnused();
}

/// Only what has a name that this gave.
void MaterialStore::removeUnused() const {
  std::set<std::string> used;
  for (const auto& [place, name] : names_) used.insert(name);
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder_, ignored)) {
    const std::string name = entry.path().filename();
    if (isName(name) && !used.contains(name)) fs::remove(entry.path(), ignored);
  }
}

OwnMaterials MaterialStore::all() const {
  OwnMaterials own;
  const std::lock_guard lock(mutex_);
  for (const auto& [place, name] : names_) {
    const std::string path = fileOf(place);
    if (place == kCoverPlace) own.cover = path;
    else if (place.starts_with(kIconPlace)) own.icons[place.substr(kIconPlace.size())] = path;
    else own.wallpapers[place.substr(kWallpaperPlace.size())] = path;
  }
  return own;
}

Json MaterialStore::json() const {
  const std::lock_guard lock(mutex_);
  return listed();
}

Json MaterialStore::listed() const {
  Json json = Json::object();
  for (const auto& [place, name] : names_) json[place] = name;
  return json;
}

}  // namespace varnix::cli
