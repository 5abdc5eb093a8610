// varnix preview --settings FILE --watch: follows the file, however an editor writes it.
#include <memory>

#include "preview/gallery.h"

using test::Rgb;

namespace {

class WatchFile : public test::PreviewTest {
 protected:
  WatchFile() {
    std::filesystem::create_directories(path("theme"));
    put(file, "#102030");
  }
  static std::string themeOf(const std::string& color) {
    return "<plist version=\"1.0\"><dict><key>global_color</key><string>" + color +
           "</string></dict></plist>";
  }
  static void put(const std::string& name, const std::string& color) {
    std::ofstream(name, std::ios::binary) << themeOf(color);
  }
  void start() {
    command = std::make_unique<test::Command>(test::Words{"preview", "--watch", "--settings", file,
                                                          "--out", out(), "--scale", "1", "--only",
                                                          "application"});
    ASSERT_TRUE(command->waitFor("Following")) << command->error;
    command->out.clear();
  }
  void expectDrawn(const Rgb& color) {
    ASSERT_TRUE(command->waitFor("Application (")) << command->out << command->error;
    EXPECT_TRUE(test::hasColor(picture("settings/application-light-after.png"), color));
    EXPECT_EQ(command->error, "");
    command->out.clear();
  }
  /// The pictures stay, and one warning says why.
  void expectKept(const std::string& why, const std::string& drawn) {
    ASSERT_TRUE(command->waitFor(why)) << command->error;
    EXPECT_EQ(command->error, "varnix: " + file + ": " + why + "; the last pictures stay\n");
    EXPECT_EQ(command->out, "");
    EXPECT_EQ(bytes("settings/application-light-after.png"), drawn);
    command->error.clear();
  }
  void expectEnds() {
    command->signal(SIGTERM);
    EXPECT_EQ(command->wait(), 128 + SIGTERM);
  }

  const std::string file = path("theme/mine.plist");
  std::unique_ptr<test::Command> command;
};

TEST_F(WatchFile, WrittenInPlaceReplacedAndMadeAgain) {
  start();
  put(file, "#12b457");
  expectDrawn({0x12, 0xb4, 0x57});
  put(path("theme/.mine.new"), "#7a1fc3");
  std::filesystem::rename(path("theme/.mine.new"), file);
  expectDrawn({0x7a, 0x1f, 0xc3});
  // The file that was replaced is no longer looked at; the new one is.
  put(file, "#12b457");
  expectDrawn({0x12, 0xb4, 0x57});
  std::filesystem::remove(file);
  put(file, "#0a64c8");
  expectDrawn({0x0a, 0x64, 0xc8});
  std::filesystem::rename(file, file + "~");
  put(file, "#c8640a");
  expectDrawn({0xc8, 0x64, 0x0a});
  expectEnds();
}

TEST_F(WatchFile, WrittenInPieces) {
  start();
  const std::string all = themeOf("#12b457");
  std::ofstream slow(file, std::ios::binary);
  for (char c : all) {
    slow << c << std::flush;
    usleep(1000);
  }
  slow.close();
  expectDrawn({0x12, 0xb4, 0x57});
  expectEnds();
}

TEST_F(WatchFile, KeepsTheLastPicturesWhileItHoldsNoSettings) {
  start();
  const std::string drawn = bytes("settings/application-light-after.png");
  std::ofstream(file) << "<plist><dict><key>glo";
  expectKept("not a property list, or cut short", drawn);
  std::filesystem::remove(file);
  expectKept("not there", drawn);
  std::filesystem::create_directory(file);
  expectKept("cannot be read", drawn);
  std::filesystem::remove(file);
  expectKept("not there", drawn);
  std::ofstream(file) << "<plist><array/></plist>";
  expectKept("a list is not a dictionary", drawn);
  put(file, "#102030");
  ASSERT_TRUE(command->waitFor("Nothing changed (")) << command->out << command->error;
  command->out.clear();
  put(file, "#12b457");
  expectDrawn({0x12, 0xb4, 0x57});
  expectEnds();
}

TEST_F(WatchFile, SaysWhatIsWrongInIt) {
  start();
  std::ofstream(file) << "<plist><dict><key>global_colour</key><true/></dict></plist>";
  ASSERT_TRUE(command->waitFor("Application (")) << command->out;
  EXPECT_EQ(command->error,
            "varnix: " + file +
                ": global_colour: no such setting (did you mean global_color?); it is ignored\n");
}

TEST_F(WatchFile, ThroughALinkAndItsFolders) {
  const std::string other = path("other.plist");
  put(other, "#102030");
  std::filesystem::remove(file);
  std::filesystem::create_symlink("../other.plist", file);
  start();
  put(other, "#12b457");
  expectDrawn({0x12, 0xb4, 0x57});
  // The link leads elsewhere now.
  std::filesystem::create_directory(path("third"));
  put(path("third/t.plist"), "#7a1fc3");
  std::filesystem::create_symlink("../third/t.plist", path("theme/link"));
  std::filesystem::rename(path("theme/link"), file);
  expectDrawn({0x7a, 0x1f, 0xc3});
  put(path("third/t.plist"), "#0a64c8");
  expectDrawn({0x0a, 0x64, 0xc8});
  // Its folder goes and comes back, as when another state of a repository is checked out.
  std::filesystem::remove_all(path("theme"));
  ASSERT_TRUE(command->waitFor("not there")) << command->error;
  command->error.clear();
  std::filesystem::create_directories(path("theme"));
  put(file, "#c8640a");
  expectDrawn({0xc8, 0x64, 0x0a});
  put(file, "#12b457");
  expectDrawn({0x12, 0xb4, 0x57});
  expectEnds();
}

TEST_F(WatchFile, OtherFilesBesideItChangeNothing) {
  start();
  put(path("theme/mine.plist~"), "#12b457");
  put(path("theme/mine.plis"), "#12b457");
  put(file, "#102030");  // the same again
  put(file, "#7a1fc3");
  expectDrawn({0x7a, 0x1f, 0xc3});
  expectEnds();
}

TEST_F(WatchFile, NeedsAPlainFile) {
  for (const auto& [what, why] :
       {std::pair{folder.path(), "not a plain file"}, {path("no"), "No such file or directory"}}) {
    const auto outcome = test::varnix({"preview", "--watch", "--settings", what, "--out", out()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, "varnix: cannot follow: " + what + ": " + why + "\n");
  }
  const auto outcome = test::varnix({"preview", "--watch", "--out", out()});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.error,
            "varnix: missing option, which --watch needs: --root DIR or --settings FILE\n");
}

}  // namespace
