// Our picker beside others that people use, on the same decoded pixels.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "color/ImportantColor.h"
#include "measures.h"
#include "objc/autorelease_pool.h"
#include "pixels.h"
#include "table.h"
#include "timing.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr int kSide = 512;

struct Picture {
  std::string name;
  Pixels pixels;
  std::string file;  ///< the pixels, for the other pickers
};

/// Adds the first files of a folder, in the order of their names, that can be read.
void addFrom(const fs::path& folder, std::size_t count, std::vector<Picture>& pictures) {
  std::error_code ignored;
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder, ignored))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) {
    if (count == 0) return;
    auto pixels = pixelsOfFile(file.string(), kSide, kSide);
    if (!pixels) continue;
    pictures.push_back({file.stem().string(), std::move(*pixels), {}});
    --count;
  }
}

/// Our picker on the same bytes: an image is made from them each time.
struct Ours {
  double milliseconds;
  std::string color;
};
Ours pickOurs(const Pixels& pixels) {
  Ours ours{0, {}};
  ours.milliseconds = bestOf(200, 1,
                             [&] {
                               const objc::AutoreleasePool pool;
                               ours.color = hex(varnix::Color::ImportantColor(imageOver(pixels)));
                             }) /
                      1e6;
  return ours;
}

std::string output(const std::string& command) {
  std::string text;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return text;
  char part[4096];
  while (const std::size_t size = std::fread(part, 1, sizeof part, pipe)) text.append(part, size);
  return pclose(pipe) == 0 ? text : std::string();
}

/// A list of pickers for each picture; null if they could not be run.
nlohmann::json measureOthers(const fs::path& folder, std::vector<Picture>& pictures) {
  std::ostringstream command;
  command << "node '" << (folder / "measure.mjs").string() << "' " << kSide << ' ' << kSide;
  for (Picture& picture : pictures) {
    picture.file = (folder / (picture.name + ".rgba")).string();
    const auto& bytes = picture.pixels.bytes;
    std::ofstream(picture.file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    command << " '" << picture.file << "'";
  }
  auto answer = nlohmann::json::parse(output(command.str()), nullptr, false);
  return answer.is_array() && answer.size() == pictures.size() ? answer : nlohmann::json();
}

}  // namespace

void measurePickers(const std::string& pickers, const std::string& pictureFolder) {
  if (!fs::exists(fs::path(pickers) / "node_modules")) {
    std::printf("\nother pickers are not installed: not compared with them\n");
    return;
  }
  std::vector<Picture> pictures;
  addFrom(VARNIX_SAMPLE_ICONS, 1, pictures);
  addFrom(pictureFolder, 2, pictures);
  pictures.push_back({"generated", generatedPixels(kSide, kSide), {}});
  const nlohmann::json others = measureOthers(pickers, pictures);
  if (others.is_null()) {
    std::printf("\nother pickers could not be run: not compared with them\n");
    return;
  }
  std::printf("\n%-28s %-22s %8s %8s  %s\n", "512 x 512 pixels", "picker", "ms", "ratio", "colour");
  double worst = 0;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const char* name = pictures[i].name.c_str();
    const Ours ours = pickOurs(pictures[i].pixels);
    std::printf("%-28.28s %-22s %8.2f %8.2f  %s\n", name, "ours", ours.milliseconds, 1.0,
                ours.color.c_str());
    for (const nlohmann::json& other : others[i]) {
      const double best = other.at("best");
      const std::string picker =
          other.at("name").get<std::string>() + " " + other.at("version").get<std::string>();
      std::printf("%-28s %-22s %8.2f %8.2f  %s\n", "", picker.c_str(), best,
                  best / ours.milliseconds, other.at("color").get<std::string>().c_str());
      worst = std::max(worst, ours.milliseconds / best);
    }
  }
  report("important colour, in the fastest other picker's times", worst, Goal::atMost(1));
}

}  // namespace bench
