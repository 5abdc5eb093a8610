// The pictures that belong to a theme: wallpapers, icons, the playing track's cover.
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "common/json_forward.h"
#include "studio/history.h"
#include "studio/painter.h"

namespace varnix::cli {

/// A folder with an index and pictures that are named by their contents, so that no name comes from
/// a page. For several threads at once.
class MaterialStore {
 public:
  /// Reads the index, if there is one. What it names and is no picture of this folder is left out,
  /// and pictures that it does not name are removed, as at the end: until then they may come back.
  explicit MaterialStore(std::filesystem::path folder);
  ~MaterialStore();
  MaterialStore(const MaterialStore&) = delete;
  MaterialStore& operator=(const MaterialStore&) = delete;

  /// A place is "wallpaper/light", "wallpaper/dark", "cover" or "icon/IDENTIFIER".
  static bool isPlace(std::string_view place);

  /// Keeps a PNG or JPEG for a place. Throws UsageError for anything else, and Failure.
  void put(const std::string& place, const std::string& bytes);
  /// False if there is none. Throws Failure.
  bool remove(const std::string& place);
  /// The file for that place; empty if there is none.
  std::string file(const std::string& place) const;

  /// What had names before is there again. Without those whose files are gone. Throws Failure.
  void use(const PictureNames& names);
  PictureNames names() const;

  OwnMaterials all() const;
  /// The places, as {PLACE: NAME}; a name stands for the contents.
  Json json() const;

 private:
  std::string fileOf(const std::string& place) const;
  Json listed() const;
  void write() const;
  void removeUnused() const;

  mutable std::mutex mutex_;
  std::filesystem::path folder_;
  PictureNames names_;
};

}  // namespace varnix::cli
