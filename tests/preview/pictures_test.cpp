// The screens look as before: small pictures of them, compared with a tolerance. After an intended
// change, VARNIX_NEW_PICTURES=1 writes them again.
#include "CoreGraphics/shrink.h"
#include "preview/gallery.h"

using test::Picture;

namespace {

constexpr unsigned kWidth = 125, kHeight = 222;
/// On a scale of 255: a processor that rounds differently moves edges that much. A glyph of a few
/// pixels differs more.
constexpr int kLargestDifference = 8;
constexpr double kMeanDifference = 0.1;

Picture shrunk(const Picture& picture) {
  auto words = [](const Picture& of) {
    std::vector<std::uint32_t> pixels(of.rgba.size() / 4);
    std::memcpy(pixels.data(), of.rgba.data(), of.rgba.size());
    return pixels;
  };
  std::vector<std::uint32_t> from = words(picture), to(kWidth * kHeight);
  host::shrink({from.data(), picture.width, picture.width, picture.height},
               {to.data(), kWidth, kWidth, kHeight});
  Picture small{kWidth, kHeight, false, 0, std::vector<std::uint8_t>(to.size() * 4)};
  std::memcpy(small.rgba.data(), to.data(), small.rgba.size());
  return small;
}

/// The differences, multiplied by four.
Picture difference(const Picture& one, const Picture& other) {
  Picture result = one;
  for (std::size_t i = 0; i < result.rgba.size(); ++i) {
    const int apart = std::abs(one.rgba[i] - other.rgba[i]);
    result.rgba[i] = i % 4 == 3 ? 255 : static_cast<std::uint8_t>(std::min(4 * apart, 255));
  }
  return result;
}

void save(const std::string& name, const Picture& picture) {
  std::filesystem::create_directories(std::filesystem::path(name).parent_path());
  std::ofstream(name, std::ios::binary) << *host::imageio::encodePng(picture);
}

class Pictures : public test::PreviewTest {
 protected:
  void compare(const std::string& name) const {
    const Picture drawn = shrunk(picture("settings/" + name + ".png"));
    const std::string file = VARNIX_TEST_PICTURES "/" + name + ".png";
    if (std::getenv("VARNIX_NEW_PICTURES") != nullptr) return save(file, drawn);
    const Picture wanted = test::pictureIn(file);
    ASSERT_EQ(wanted.rgba.size(), drawn.rgba.size()) << file;
    int largest = 0;
    double sum = 0;
    for (std::size_t i = 0; i < drawn.rgba.size(); ++i) {
      const int apart = std::abs(drawn.rgba[i] - wanted.rgba[i]);
      largest = std::max(largest, apart);
      sum += apart;
    }
    const double mean = sum / (kWidth * kHeight * 3);
    if (largest <= kLargestDifference && mean <= kMeanDifference) return;
    const std::string place = VARNIX_PICTURE_DIFFERENCES "/" + name;
    save(place + "-drawn.png", drawn);
    save(place + "-wanted.png", wanted);
    save(place + "-difference.png", difference(drawn, wanted));
    ADD_FAILURE() << name << " differs by up to " << largest << ", in the mean by " << mean
                  << ": see " << place << "-difference.png";
  }
};

TEST_F(Pictures, LookAsTheyDid) {
  previewWell({"--settings", VARNIX_SAMPLES "/previews/elements.plist"});
  for (const char* screen : {"application", "messages", "home", "control-centre",
                             "notification-centre", "volume", "instagram", "twitter"}) {
    compare(std::string(screen) + "-light-before");
    compare(std::string(screen) + "-light-after");
  }
  for (const char* screen : {"settings", "settings-element", "settings-applications",
                             "settings-application", "settings-picker", "settings-preset"})
    compare(std::string(screen) + "-light-after");
  compare("settings-light-before");
  compare("home-dark-after");
  compare("control-centre-dark-after");
}

TEST_F(Pictures, OfAnotherColourDiffer) {
  if (std::getenv("VARNIX_NEW_PICTURES") != nullptr) GTEST_SKIP() << "they are being written";
  previewWell({"--settings", VARNIX_SAMPLES "/previews/global.plist", "--only", "messages"});
  const Picture drawn = shrunk(picture("settings/messages-light-after.png"));
  const Picture wanted = test::pictureIn(VARNIX_TEST_PICTURES "/messages-light-after.png");
  ASSERT_EQ(wanted.rgba.size(), drawn.rgba.size());
  int largest = 0;
  for (std::size_t i = 0; i < drawn.rgba.size(); ++i)
    largest = std::max(largest, std::abs(drawn.rgba[i] - wanted.rgba[i]));
  EXPECT_GT(largest, kLargestDifference) << "the tolerance would hide a wrong colour";
}

}  // namespace
