#include "preview/against.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string_view>
#include <system_error>

#include "Foundation/property_list.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "preview/comparison.h"
#include "preview/output_folder.h"

namespace varnix::cli {

namespace fs = std::filesystem;

namespace {

/// Whether it is "TAB/SCREEN-WALLPAPER-WHEN.png".
bool shows(const std::string& name, const std::string& screen) {
  const std::string file = name.substr(name.find('/') + 1);
  return file.starts_with(screen + "-") &&
         std::count(file.begin() + std::ssize(screen) + 1, file.end(), '-') == 1;
}

}  // namespace

void requireKeptPictures(const std::string& kept) {
  std::error_code error;
  const bool isFolder = fs::is_directory(kept, error);
  if (!isFolder)
    throw Failure("cannot read the folder",
                  kept + ": " + (error ? error.message() : "not a folder"));
}

int compareWithKept(Studio& studio, const std::string& kept, const std::string& out,
                    const std::vector<std::string>& screens, const Studio::Progress& progress) {
  OutputFolder folder(out, OutputFolder::Holds::differences);
  const fs::path drawn = folder.path() / ".drawn";
  fs::create_directory(drawn);
  studio.work(drawn, progress);
  const auto isCompared = [&](const std::string& name) {
    return screens.empty() || std::ranges::any_of(screens, [&](const std::string& screen) {
             return shows(name, screen);
           });
  };
  const Comparison found = comparePictures(drawn, kept, folder.path(), isCompared);
  fs::remove_all(drawn);
  std::string text;
  for (const std::string& line : found.lines) text += line + '\n';
  text += std::to_string(found.lines.size()) + " of " + std::to_string(found.compared) +
          " pictures differ\n";
  const std::string list = folder.path() / kDifferenceList;
  if (!host::writeFile(list, text, false)) throw Failure("cannot write", list);
  folder.putInPlace();
  std::cout << text;
  if (!found.lines.empty()) std::cout << "See " << escaped(folder.place().string()) << '\n';
  return found.lines.empty() ? 0 : 1;
}

}  // namespace varnix::cli
