// The pictures that belong to a theme: wallpapers, icons, the playing track's cover.
#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "common/json_forward.h"
#include "studio/painter.h"

namespace varnix::cli {

/// A folder with an index and pictures that are named by their contents, so that no name comes from
/// a page. For several threads at once.
class MaterialStore {
 public:
  /// Reads the index, if there is one. What it names and is no picture of this folder is left out.
  explicit MaterialStore(std::filesystem::path folder);

  /// A place is "wallpaper/light", "wallpaper/dark", "cover" or "icon/IDENTIFIER".
  static bool isPlace(std::string_view place);

  /// Keeps a PNG or JPEG for a place. Throws UsageError for anything else, and Failure.
  void put(const std::string& place, const std::string& bytes);
  /// False if there is none. Throws Failure.
  bool remove(const std::string& place);
  /// The file for that place; empty if there is none.
  std::string file(const std::string& place) const;

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
  std::map<std::string, std::string> names_;  ///< by place
};

}  // namespace varnix::cli
