#include "preview/comparison.h"

#include <optional>
#include <set>
#include <system_error>

#include "Foundation/file_contents.h"
#include "Foundation/property_list.h"
#include "common/errors.h"
#include "common/escaped.h"
#include "common/input_limits.h"
#include "common/interruption.h"
#include "gallery/materials/screens_module.h"

namespace varnix::cli {

namespace fs = std::filesystem;

namespace {

/// "TAB/FILE.png" of each picture in the folder's folders.
std::set<std::string> namesIn(const fs::path& folder) {
  std::set<std::string> names;
  try {
    for (const auto& tab : fs::directory_iterator(folder)) {
      if (!tab.is_directory() || tab.path().filename().string().starts_with('.')) continue;
      for (const auto& file : fs::directory_iterator(tab)) {
        if (file.path().extension() == ".png")
          names.insert(tab.path().filename() / file.path().filename());
      }
    }
  } catch (const fs::filesystem_error& error) {
    throw Failure("cannot read the folder", folder.string() + ": " + error.code().message());
  }
  return names;
}

class Comparing {
 public:
  Comparing(fs::path drawn, fs::path kept, fs::path differences)
      : drawn_(std::move(drawn)), kept_(std::move(kept)), differences_(std::move(differences)) {}

  /// What differs; empty if nothing does.
  std::string compare(const std::string& name) const {
    const auto drawn = host::fileContents(drawn_ / name, kLargestFile);
    const auto kept = host::fileContents(kept_ / name, kLargestFile);
    if (drawn && drawn == kept) return "";
    if (!drawn) throw Failure("cannot read", (drawn_ / name).string());
    if (!kept) {
      write(name, "drawn", drawn);
      return "the kept one is no file that can be read";
    }
    const auto difference = screensModule().differenceOf(*drawn, *kept);
    if (difference.what.empty()) return "";
    if (!difference.marked.empty()) write(name, "marked", difference.marked);
    write(name, "drawn", drawn);
    write(name, "kept", kept);
    return difference.what;
  }

  void writeOnly(const std::string& name, bool isDrawn) const {
    write(name, isDrawn ? "drawn" : "kept",
          host::fileContents((isDrawn ? drawn_ : kept_) / name, kLargestFile));
  }

 private:
  void write(const std::string& name, const char* which,
             const std::optional<std::string>& bytes) const {
    if (!bytes) return;
    const fs::path stem = (differences_ / name).replace_extension();
    const fs::path file = stem.string() + "-" + which + ".png";
    std::error_code ignored;  // writing fails then
    fs::create_directories(file.parent_path(), ignored);
    if (!host::writeFile(file, *bytes, false)) throw Failure("cannot write", file.string());
  }

  fs::path drawn_, kept_, differences_;
};

}  // namespace

Comparison comparePictures(const fs::path& drawn, const fs::path& kept, const fs::path& differences,
                           const IsCompared& isCompared) {
  const std::set<std::string> drawnNames = namesIn(drawn), keptNames = namesIn(kept);
  std::set<std::string> names = drawnNames;
  for (const std::string& name : keptNames) {
    if (isCompared(name)) names.insert(name);
  }
  const Comparing comparing(drawn, kept, differences);
  Comparison result;
  result.compared = names.size();
  for (const std::string& name : names) {
    throwIfInterrupted();
    const bool isDrawn = drawnNames.contains(name), isKept = keptNames.contains(name);
    std::string what;
    if (isDrawn && isKept) what = comparing.compare(name);
    else what = isDrawn ? "none was kept" : "no longer drawn";
    if (isDrawn != isKept) comparing.writeOnly(name, isDrawn);
    if (!what.empty()) result.lines.push_back(escaped(name) + ": " + what);
  }
  return result;
}

}  // namespace varnix::cli
