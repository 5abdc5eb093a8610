// varnix pick, as a process: the colours of pictures made here, and files that are not pictures.
#include <sys/stat.h>

#include "ImageIO/decode.h"
#include "cli/command.h"

using host::imageio::Picture;
using test::Json;
using test::varnix;
using test::Words;

namespace {

using Rgb = std::array<std::uint8_t, 3>;

constexpr Rgb kBlue{0x1e, 0x88, 0xe5};
constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kRed{0xd0, 0x20, 0x20};
constexpr Rgb kGreen{0x20, 0xc0, 0x40};

/// 32 x 32, so that squeezing changes nothing: bands from the top; the last one reaches the bottom.
Picture bands(const std::vector<std::pair<Rgb, unsigned>>& rows) {
  Picture picture{32, 32, false, 0, {}};
  for (const auto& [color, count] : rows) {
    for (unsigned i = 0; i < count * 32; ++i) {
      picture.rgba.insert(picture.rgba.end(), {color[0], color[1], color[2], 255});
    }
  }
  return picture;
}

Picture flat(const Rgb& color) { return bands({{color, 32}}); }

/// Sampling takes the mean of two rows where colours meet, so each band counts one row less. Above
/// 90 the sum of so many small steps is one too small.
Picture threeBands() { return bands({{kWhite, 8}, {kRed, 4}, {kGreen, 4}, {kWhite, 16}}); }

class Pick : public test::CommandTest {
 protected:
  std::string path(const std::string& name) const { return folder.path() + "/" + name; }
  std::string write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }
  std::string write(const std::string& name, const Picture& picture) const {
    return write(name, *host::imageio::encodePng(picture));
  }
  static Json pick(Words words) {
    words.insert(words.begin(), {"pick", "--json"});
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_EQ(outcome.error, "");
    return outcome.status == 0 ? Json::parse(outcome.out) : Json();
  }
  void expectBad(const std::string& file, const std::string& why) const {
    const auto plain = varnix({"pick", file});
    EXPECT_EQ(plain.status, 1) << file;
    EXPECT_EQ(plain.out, "");
    EXPECT_EQ(plain.error, "varnix: cannot pick from " + file + ": " + why + "\n");
    const auto outcome = varnix({"pick", "--json", file});
    EXPECT_EQ(outcome.status, 1) << file;
    EXPECT_EQ(Json::parse(outcome.out), Json::array({{{"file", file}, {"error", why}}}));
  }
};

TEST_F(Pick, AFlatImageIsItsOwnBackground) {
  const std::string file = write("flat.png", flat(kBlue));
  const auto outcome = varnix({"pick", "--json", file});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.out, R"([
  {
    "file": ")" + file + R"(",
    "background": "#1e88e5ff",
    "primary": "#000000ff",
    "secondary": "#ffffffff",
    "important": "#1e88e5ff",
    "average": "#1e88e5ff",
    "rule": "background",
    "saturated": false,
    "runnersUp": []
  }
]
)");
}

TEST_F(Pick, RunnersUpFollowByTheirCounts) {
  const std::string file = write("bands.png", threeBands());
  const Json image = pick({file})[0];
  EXPECT_EQ(image["background"], "#ffffffff");
  EXPECT_EQ(image["primary"], "#d02020ff");
  EXPECT_EQ(image["secondary"], "#000000ff");
  EXPECT_EQ(image["important"], "#d02020ff");
  EXPECT_EQ(image["rule"], "primary");
  EXPECT_EQ(image["saturated"], false);
  // Red comes before green, which has the same count.
  const Json red{{"color", "#d02020ff"}, {"count", 48}};
  const Json green{{"color", "#20c040ff"}, {"count", 48}};
  EXPECT_EQ(image["runnersUp"], Json::array({red, green}));
  EXPECT_EQ(pick({"--runners-up", "1", file})[0]["runnersUp"], Json::array({red}));
  EXPECT_EQ(pick({"--runners-up", "0", file})[0]["runnersUp"], Json::array());
  EXPECT_EQ(pick({"--runners-up", "256", file})[0]["runnersUp"], Json::array({red, green}));
}

TEST_F(Pick, FiveRunnersUpUnlessMoreAreAskedFor) {
  std::vector<std::pair<Rgb, unsigned>> rows;
  for (unsigned i = 0; i < 16; ++i) rows.push_back({{static_cast<std::uint8_t>(16 * i), 0, 0}, 1});
  rows.push_back({kWhite, 16});
  const std::string file = write("steps.png", bands(rows));
  EXPECT_EQ(pick({file})[0]["runnersUp"].size(), 5U);
  const Json all = pick({"--runners-up", "100", file})[0];
  ASSERT_EQ(all["runnersUp"].size(), 15U);
  int previous = 255;
  for (const Json& other : all["runnersUp"]) {
    EXPECT_NE(other["color"], all["background"]);
    EXPECT_LE(other["count"], previous);
    previous = other["count"];
  }
}

TEST_F(Pick, TheImportantColorIsSaturatedBetweenGreyAndVivid) {
  const Json pale = pick({write("pale.png", flat({200, 120, 120}))})[0];
  EXPECT_EQ(pale["important"], "#c83030ff");  // brightness 200, saturation 0.76
  EXPECT_EQ(pale["rule"], "background");
  EXPECT_EQ(pale["saturated"], true);
  const Json grey = pick({write("grey.png", flat({200, 190, 190}))})[0];
  EXPECT_EQ(grey["important"], "#c8bebeff");
  EXPECT_EQ(grey["saturated"], false);
}

TEST_F(Pick, TransparencyStaysInTheAverage) {
  Picture clear = flat(kBlue);
  clear.hasAlpha = true;
  for (std::size_t i = 3; i < clear.rgba.size(); i += 4) clear.rgba[i] = 0;
  EXPECT_EQ(pick({write("clear.png", clear)})[0]["average"], "#00000000");
}

TEST_F(Pick, JpegWorksToo) {
  const std::string file = write("flat.jpg", *host::imageio::encodeJpeg(flat({0, 0, 0}), 1));
  EXPECT_EQ(pick({file})[0]["background"], "#000000ff");
}

TEST_F(Pick, FilesAreAnsweredInOrderWithABadOneBetween) {
  const std::string blue = write("blue.png", flat(kBlue));
  const std::string bad = write("bad.png", "not a picture");
  const std::string white = write("white.png", flat(kWhite));
  const auto outcome = varnix({"pick", "--json", white, bad, blue, white});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error, "varnix: cannot pick from " + bad + ": not a PNG or JPEG image\n");
  const Json images = Json::parse(outcome.out);
  ASSERT_EQ(images.size(), 4U);
  EXPECT_EQ(images[0]["background"], "#ffffffff");
  EXPECT_EQ(images[1]["file"], bad);
  EXPECT_EQ(images[2]["background"], "#1e88e5ff");
  EXPECT_EQ(images[3], images[0]);

  const auto text = varnix({"pick", white, bad, blue});
  EXPECT_EQ(text.status, 1);
  EXPECT_EQ(text.error, outcome.error);
  EXPECT_LT(text.out.find(white), text.out.find(blue));
  EXPECT_EQ(text.out.find(bad), text.out.npos);
}

TEST_F(Pick, FilesThatAreNoImage) {
  const std::string png = *host::imageio::encodePng(threeBands());
  expectBad(path("missing.png"), "No such file or directory");
  expectBad(folder.path(), "is a directory");
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  expectBad(path("pipe"), "is not a file");
  const std::string huge = write("huge", "");
  std::filesystem::resize_file(huge, (256ULL << 20) + 1);
  expectBad(huge, "is larger than 256 MB");
  expectBad(write("empty.png", ""), "not a PNG or JPEG image");
  // Cut a few bytes into the pixels, before the first complete row.
  expectBad(write("cut.png", png.substr(0, 45)), "the image is truncated or damaged");
  std::string damaged = png;
  damaged[30] = static_cast<char>(~damaged[30]);
  expectBad(write("damaged.png", damaged), "the image is truncated or damaged");
}

TEST_F(Pick, APartOfAnImageCountsWithAWarning) {
  // Each row is stored independently, so a cut keeps the rows above it.
  Picture noise{32, 32, false, 0, {}};
  for (unsigned i = 0; i < 32 * 32; ++i) {
    const auto value = static_cast<std::uint8_t>(i * i * 7 >> 3);
    noise.rgba.insert(noise.rgba.end(), {value, static_cast<std::uint8_t>(i), value, 255});
  }
  const std::string png = *host::imageio::encodePng(noise);
  const std::string file = write("cut.png", png.substr(0, png.size() * 3 / 4));
  const auto outcome = varnix({"pick", file});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.starts_with(file + "\nbackground")) << outcome.out;
  const std::string warning = ": the image is truncated or damaged: only a part of it is there\n";
  EXPECT_EQ(outcome.error, "varnix: " + file + warning);
  // A name that would control a terminal.
  const std::string clearing = write("c\x1b[2Jut.png", png.substr(0, png.size() * 3 / 4));
  EXPECT_EQ(varnix({"pick", clearing}).error, "varnix: " + path("c\\x1b[2Jut.png") + warning);
}

TEST_F(Pick, SizesThatNoImageHas) {
  const std::string png = *host::imageio::encodePng(flat(kBlue));
  auto sized = [&](const std::string& width, const std::string& height) {
    std::string changed = png;
    return changed.replace(16, 8, width + height);  // the header's first eight bytes
  };
  const std::string sixtyThousand("\0\0\xEA\x60", 4);
  expectBad(write("large.png", sized(sixtyThousand, sixtyThousand)),
            "the image is too large (60000 x 60000; 100000000 pixels at most)");
  const std::string nothing(4, '\0');
  expectBad(write("none.png", sized(nothing, nothing)), "the image has no pixels");
}

TEST_F(Pick, TextIsATableAnImage) {
  const std::string blue = write("blue.png", flat(kBlue));
  const std::string three = write("three.png", threeBands());
  const std::string blueTable = blue +
                                "\nbackground  #1e88e5ff\n"
                                "primary     #000000ff\n"
                                "secondary   #ffffffff\n"
                                "important   #1e88e5ff  from background\n"
                                "average     #1e88e5ff\n";
  EXPECT_EQ(varnix({"pick", blue}).out, blueTable);
  const auto outcome = varnix({"pick", blue, three});
  EXPECT_EQ(outcome.out.find(blueTable + "\n" + three + "\nbackground  #ffffffff\n"), 0U)
      << outcome.out;
  EXPECT_TRUE(
      outcome.out.ends_with("runners-up  #d02020ff  48\n"
                            "            #20c040ff  48\n"))
      << outcome.out;
  const auto colored = varnix({"pick", "--color", "always", blue});
  EXPECT_NE(colored.out.find("background  \x1b[48;2;30;136;229m  \x1b[0m #1e88e5ff\n"),
            colored.out.npos)
      << colored.out;
  const auto saturated = varnix({"pick", write("pale.png", flat({200, 120, 120}))});
  EXPECT_NE(saturated.out.find("#c83030ff  from background, saturated\n"), saturated.out.npos);
}

/// The parts of a card, in pixels; the next card is that much lower.
struct Place {
  std::size_t x, y;
};
constexpr Place kPreview{320, 480};
constexpr Place kReadQuarter{640, 320};
constexpr Place kDimmed{940, 620};
constexpr Place kHeat{1475, 285};
constexpr Place kSwatches[] = {{240, 864}, {520, 864}, {800, 864}, {1080, 864}, {1360, 864}};
constexpr Place kSample{128, 1368};
constexpr std::size_t kNextCard = 1456;

Rgb at(const Picture& picture, Place place, std::size_t card = 0) {
  const std::size_t start = ((place.y + card * kNextCard) * picture.width + place.x) * 4;
  return {picture.rgba.at(start), picture.rgba.at(start + 1), picture.rgba.at(start + 2)};
}

TEST_F(Pick, ThePictureShowsWhatWasPicked) {
  const std::string file = write("flat.png", flat(kBlue));
  ASSERT_EQ(varnix({"pick", file, "--picture", path("card.png")}).status, 0);
  const auto picture = host::imageio::decode(test::contentsOf(path("card.png")));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 1600U);
  EXPECT_EQ(picture->height, 1504U);
  EXPECT_FALSE(picture->hasAlpha);
  EXPECT_EQ(at(*picture, kPreview), kBlue);
  EXPECT_EQ(at(*picture, kReadQuarter), kBlue);
  EXPECT_GT(at(*picture, kDimmed)[0], 100);
  EXPECT_EQ(at(*picture, kHeat), (Rgb{20, 38, 86}));
  const Rgb expected[] = {kBlue, {0, 0, 0}, kWhite, kBlue, kBlue};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(at(*picture, kSwatches[i]), expected[i]) << i;
  EXPECT_EQ(at(*picture, kSample), kBlue);
}

TEST_F(Pick, NoTextLeavesItsPlaceOnTheCard) {
  // A rule that takes two lines, and a name that takes more than one.
  const std::string file = write(std::string(120, 'W') + ".png", flat({200, 120, 120}));
  ASSERT_EQ(varnix({"pick", file, "--picture", path("card.png")}).status, 0);
  const auto picture = host::imageio::decode(test::contentsOf(path("card.png")));
  ASSERT_TRUE(picture);
  auto isPaper = [&](std::size_t left, std::size_t right, std::size_t top, std::size_t bottom) {
    for (std::size_t y = top; y < bottom; ++y) {
      for (std::size_t x = left; x < right; ++x) {
        if (at(*picture, {x, y}) != kWhite) return false;
      }
    }
    return true;
  };
  constexpr std::size_t kTextsTop = 936, kSampleTop = 1168, kSwatchWidth = 256, kStep = 280;
  for (std::size_t right = 112 + kSwatchWidth; right < 1488; right += kStep)
    EXPECT_TRUE(isPaper(right, right + kStep - kSwatchWidth, kTextsTop, kSampleTop)) << right;
  // Below the last line, and beside the name.
  EXPECT_TRUE(isPaper(112, 1488, 1150, kSampleTop));
  EXPECT_FALSE(isPaper(952, 1208, 1116, 1150)) << "the fourth line";
  EXPECT_TRUE(isPaper(1488, 1552, 100, 200));
}

TEST_F(Pick, CardsStandBelowOneAnother) {
  const std::string blue = write("blue.png", flat(kBlue));
  const std::string three = write("three.png", threeBands());
  const auto outcome =
      varnix({"pick", "--picture", path("cards.png"), blue, path("missing.png"), three});
  EXPECT_EQ(outcome.status, 1);
  const auto picture = host::imageio::decode(test::contentsOf(path("cards.png")));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 1600U);
  EXPECT_EQ(picture->height, 1504U + kNextCard);
  EXPECT_EQ(at(*picture, kSwatches[0]), kBlue);
  const Rgb expected[] = {kWhite, kRed, {0, 0, 0}, kRed};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(at(*picture, kSwatches[i], 1), expected[i]) << i;
  EXPECT_EQ(at(*picture, kSample, 1), kWhite);
}

TEST_F(Pick, ExtremeShapesHaveCardsToo) {
  const std::string wide =
      write("wide.png", Picture{3000, 1, false, 0, std::vector<std::uint8_t>(12000, 255)});
  const std::string high =
      write("high.png", Picture{1, 3000, false, 0, std::vector<std::uint8_t>(12000, 255)});
  ASSERT_EQ(varnix({"pick", "--picture", path("cards.png"), wide, high}).status, 0);
  const auto picture = host::imageio::decode(test::contentsOf(path("cards.png")));
  ASSERT_TRUE(picture);
  EXPECT_EQ(at(*picture, kSwatches[0]), kWhite);
  EXPECT_EQ(at(*picture, kSwatches[0], 1), kWhite);
}

TEST_F(Pick, PicturesThatCannotBe) {
  const std::string file = write("flat.png", flat(kBlue));
  for (const std::string& out : {path("no/such/folder.png"), folder.path(), std::string()}) {
    const auto outcome = varnix({"pick", "--picture=" + out, file});
    EXPECT_EQ(outcome.status, 1) << out;
    EXPECT_EQ(outcome.error, "varnix: cannot write: " + out + "\n");
    EXPECT_NE(outcome.out, "");
  }
  Words many(100, file);
  many.insert(many.begin(), {"pick", "--picture", path("many.png")});
  const auto outcome = varnix(many);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.error, "varnix: too many images for one picture: 100 (22 at most)\n");
  // With nothing to draw, no file is written.
  EXPECT_EQ(varnix({"pick", "--picture", path("none.png"), path("missing.png")}).status, 1);
  EXPECT_FALSE(std::filesystem::exists(path("none.png")));
}

TEST_F(Pick, WhatIsReadIsNeverWritten) {
  const std::string file = write("flat.png", flat(kBlue));
  const std::string before = test::contentsOf(file);
  std::filesystem::create_symlink("flat.png", path("soft.png"));
  std::filesystem::create_hard_link(file, path("hard.png"));
  std::filesystem::create_directory_symlink(folder.path(), path("folder"));
  for (const std::string& out :
       {file, path("soft.png"), path("hard.png"), path("folder/flat.png"), path("./flat.png")}) {
    const auto outcome = varnix({"pick", "--picture", out, write("other.png", flat(kRed)), file});
    EXPECT_EQ(outcome.status, 2) << out;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: what is read would be overwritten: " + file + "\n");
    EXPECT_TRUE(test::contentsOf(file) == before) << out;
  }
  EXPECT_EQ(varnix({"pick", "--picture", file, path("soft.png")}).status, 2);
  EXPECT_TRUE(test::contentsOf(file) == before);
}

TEST_F(Pick, AFullDiskLeavesTheOldPicture) {
  const std::string file = write("flat.png", flat(kBlue));
  std::filesystem::create_directory(path("out"));
  const std::string card = write("out/card.png", "an older one");
  const std::string command = "trap '' XFSZ; ulimit -f 8; exec " + test::commandFile() +
                              " pick --picture " + card + " " + file + " >/dev/null 2>&1";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  EXPECT_TRUE(test::contentsOf(card) == "an older one");
  std::filesystem::remove(card);
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  EXPECT_TRUE(std::filesystem::is_empty(path("out")));
}

TEST_F(Pick, APictureGoesWhereALinkLeads) {
  const std::string file = write("flat.png", flat(kBlue));
  std::filesystem::create_directory(path("there"));
  std::filesystem::create_symlink("there/card.png", path("link.png"));
  for (int i = 0; i < 2; ++i) {  // first the link leads to nothing, then to an older picture
    ASSERT_EQ(varnix({"pick", "--picture", path("link.png"), file}).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.png")));
    EXPECT_TRUE(host::imageio::decode(test::contentsOf(path("there/card.png"))));
    write("there/card.png", "an older one");
  }
  // A device is written to, and stays a device.
  EXPECT_EQ(varnix({"pick", "--picture", "/dev/null", file}).status, 0);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(Pick, ANameThatIsNoTextIsShownAllTheSame) {
  const std::string file = write("od\xFF\n\x1b.png", flat(kBlue));
  const Json image = pick({"--picture", path("card.png"), file})[0];
  EXPECT_EQ(image["background"], "#1e88e5ff");
  EXPECT_TRUE(host::imageio::decode(test::contentsOf(path("card.png"))));
}

TEST_F(Pick, WithoutOpenGlThereIsNoResult) {
  const std::string file = write("flat.png", flat(kBlue));
  setenv("LIBGL_DRIVERS_PATH", "/nonexistent", 1);
  const auto outcome = varnix({"pick", "--json", "--picture", path("card.png"), file});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_TRUE(outcome.error.find("Failed to initialize OpenGLES 2.0 context\n") !=
              outcome.error.npos)
      << outcome.error;
  EXPECT_TRUE(outcome.error.ends_with("varnix: cannot pick colours: no OpenGL ES\n"))
      << outcome.error;
  EXPECT_FALSE(std::filesystem::exists(path("card.png")));
}

TEST_F(Pick, Usage) {
  auto expect = [](const Words& words, const std::string& message) {
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + message + "\n");
  };
  const std::string file = write("flat.png", flat(kBlue));
  expect({"pick"}, "missing argument: FILE");
  expect({"pick", "--json"}, "missing argument: FILE");
  expect({"pick", file, "--frob"}, "unexpected argument: --frob");
  expect({"pick", file, "--runners-up", "-1"}, "unusable number of runners-up: -1");
  expect({"pick", file, "--runners-up", "257"}, "unusable number of runners-up: 257");
  expect({"pick", file, "--runners-up", "few"}, "unusable value: --runners-up = few");
  expect({"pick", file, "--color", "red"}, "no such choice of --color: red");
  EXPECT_EQ(varnix({"pick", "--help"}).status, 0);
}

}  // namespace
