// The preview command, and what it wrote.
#pragma once

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "ImageIO/decode.h"
#include "cli/command.h"

namespace test {

using Rgb = std::array<std::uint8_t, 3>;
using host::imageio::Picture;

inline Picture pictureIn(const std::string& file) {
  auto picture = host::imageio::decode(contentsOf(file));
  EXPECT_TRUE(picture) << file;
  return picture.value_or(Picture{});
}

/// Whether some pixel is within the tolerance of the colour, in each channel.
inline bool hasColor(const Picture& picture, const Rgb& color, int tolerance = 0) {
  for (std::size_t i = 0; i + 3 < picture.rgba.size(); i += 4) {
    int apart = 0;
    for (std::size_t c = 0; c < color.size(); ++c)
      apart = std::max(apart, std::abs(picture.rgba[i + c] - color[c]));
    if (apart <= tolerance) return true;
  }
  return false;
}

/// Relative paths, sorted.
inline std::vector<std::string> filesIn(const std::string& folder) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file())
      files.push_back(std::filesystem::relative(entry.path(), folder).string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

class PreviewTest : public CommandTest {
 protected:
  std::string path(const std::string& name) const { return folder.path() + "/" + name; }
  std::string write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }
  /// A settings file with those entries.
  std::string settingsFile(const std::string& entries) const {
    return write("settings.plist", "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
  }
  std::string flat(const std::string& name, const Rgb& color, unsigned width = 40,
                   unsigned height = 60) const {
    Picture picture{width, height, false, 0, {}};
    for (unsigned i = 0; i < width * height; ++i)
      picture.rgba.insert(picture.rgba.end(), {color[0], color[1], color[2], 255});
    return write(name, *host::imageio::encodePng(picture));
  }
  std::string out() const { return path("gallery"); }
  Outcome preview(Words words) const {
    words.insert(words.begin(), {"preview", "--out", out(), "--scale", "1"});
    return varnix(words);
  }
  void previewWell(const Words& words) const {
    const Outcome outcome = preview(words);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "");
  }
  Picture picture(const std::string& name) const { return pictureIn(out() + "/" + name); }
  std::string bytes(const std::string& name) const { return contentsOf(out() + "/" + name); }
};

}  // namespace test
