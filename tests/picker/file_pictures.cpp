// Icons and photographs from files: the repository's, and those that scripts/pictures has fetched.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "ImageIO/decode.h"
#include "picker/canvas.h"

namespace pictures {

namespace {

namespace fs = std::filesystem;

/// In the order of their names; empty if the folder does not exist.
std::vector<fs::path> filesIn(const fs::path& folder, const std::string& extension) {
  std::vector<fs::path> files;
  std::error_code absent;
  for (const auto& entry : fs::directory_iterator(folder, absent)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

Picture open(const fs::path& file) {
  std::ostringstream bytes;
  bytes << std::ifstream(file, std::ios::binary).rdbuf();
  std::string why;
  const auto decoded = host::imageio::decode(bytes.str(), &why);
  if (!decoded) throw std::runtime_error(file.string() + ": " + why);
  // Large ones are thinned out, since their pixels would take most of a test's time.
  constexpr unsigned kLongestSide = 512;
  const unsigned step = std::max(decoded->width, decoded->height) / kLongestSide + 1;
  return paint(file.filename().string(), {decoded->width / step, decoded->height / step},
               [&](unsigned x, unsigned y) {
                 const std::size_t index = std::size_t{y} * step * decoded->width + x * step;
                 const std::uint8_t* p = &decoded->rgba[index * 4];
                 return premultiplied({p[0], p[1], p[2], p[3]});
               });
}

Picture crop(const Picture& from, unsigned left, unsigned top, Size size) {
  const std::string name = from.name + " from " + std::to_string(left) + ", " + std::to_string(top);
  return paint(name, size, [&](unsigned x, unsigned y) {
    const std::uint8_t* p = &from.rgba[(std::size_t{top + y} * from.width + left + x) * 4];
    return Rgba{p[0], p[1], p[2], p[3]};
  });
}

/// The hue turned by that many thirds of a circle.
Picture turned(const Picture& from, unsigned thirds) {
  return paint(from.name + " turned " + std::to_string(thirds), {from.width, from.height},
               [&](unsigned x, unsigned y) {
                 const std::uint8_t* p = &from.rgba[(std::size_t{y} * from.width + x) * 4];
                 return Rgba{p[thirds % 3], p[(thirds + 1) % 3], p[(thirds + 2) % 3], p[3]};
               });
}

/// Some of the fetched ones: enough for variety, few enough for a quick test.
void addFetched(std::vector<Picture>& all, const fs::path& folder, const char* extension,
                std::size_t most) {
  std::vector<fs::path> files = filesIn(folder, extension);
  files.resize(std::min(files.size(), most));
  for (const fs::path& file : files) all.push_back(open(file));
}

}  // namespace

std::vector<Picture> icons() {
  std::vector<Picture> all;
  for (const fs::path& file : filesIn(VARNIX_SAMPLES "/icons", ".png")) {
    const Picture icon = open(file);
    for (unsigned thirds : {0U, 1U, 2U}) {
      const Picture look = turned(icon, thirds);
      const unsigned width = look.width;
      const unsigned height = look.height;
      all.push_back(look);
      all.push_back(crop(look, width / 4, height / 4, {width / 2, height / 2}));
      all.push_back(crop(look, thirds * 20, 40, {width - 50, height - 60}));
      all.push_back(crop(look, width / 2 - 16, height / 2 - 20, {32, 32}));
    }
  }
  addFetched(all, VARNIX_PICTURES "/icons", ".png", 40);
  return all;
}

std::vector<Picture> photographs() {
  std::vector<Picture> all;
  for (const fs::path& file : filesIn(VARNIX_PHOTOGRAPHS, ".jpg")) {
    const Picture photograph = open(file);
    for (unsigned corner : {0U, 1U, 2U, 3U})
      all.push_back(crop(photograph, corner % 2 * 32, corner / 2 * 32, {32, 32}));
    all.push_back(crop(photograph, 16, 16, {32, 32}));
    all.push_back(crop(photograph, 5, 9, {48, 48}));
    all.push_back(crop(photograph, 3, 20, {61, 37}));
    all.push_back(photograph);
  }
  addFetched(all, VARNIX_PICTURES "/photographs", ".jpg", 8);
  return all;
}

}  // namespace pictures
