// varnix preview --watch: follows a container's settings.
#include "preview/gallery.h"

using test::hasColor;
using test::varnix;

namespace {

class Watch : public test::PreviewTest {
 protected:
  static ino_t identity(const std::string& file) {
    struct stat status{};
    EXPECT_EQ(stat(file.c_str(), &status), 0) << file;
    return status.st_ino;
  }
  void set(const std::string& key, const std::string& value) const {
    EXPECT_EQ(varnix({"settings", "--root", folder.path(), "set", key, value}).status, 0);
  }
  test::Words words() const {
    return {"preview", "--watch", "--root", folder.path(), "--out", out(), "--scale", "1"};
  }
};

TEST_F(Watch, RedrawsWhatChanged) {
  test::Command command(words());
  ASSERT_TRUE(command.waitFor("Following")) << command.error;
  const std::string messages = out() + "/settings/messages-light-after.png";
  const std::string before = out() + "/settings/messages-light-before.png";
  const std::string home = out() + "/settings/home-light-after.png";
  const std::string oldPicture = test::contentsOf(messages);
  const std::string oldState = test::contentsOf(out() + "/state.js");
  const ino_t oldHome = identity(home), oldBefore = identity(before);
  command.out.clear();

  set("sms_color_type", "2");
  ASSERT_TRUE(command.waitFor("\n")) << command.error;
  // The element's own row shows its type too.
  EXPECT_EQ(command.out.find("Messages, Settings, An application's settings, A colour ("), 0U)
      << command.out;
  EXPECT_EQ(std::count(command.out.begin(), command.out.end(), '\n'), 1);
  EXPECT_NE(test::contentsOf(messages), oldPicture);
  EXPECT_EQ(identity(home), oldHome);
  EXPECT_EQ(identity(before), oldBefore);
  EXPECT_NE(test::contentsOf(out() + "/state.js"), oldState) << "the open page looks at it";

  command.out.clear();
  set("sms_color_type", "2");
  ASSERT_TRUE(command.waitFor("\n"));
  EXPECT_EQ(command.out.find("Nothing changed ("), 0U) << command.out;
  command.signal(SIGTERM);
  EXPECT_EQ(command.wait(), 128 + SIGTERM);
  EXPECT_TRUE(std::filesystem::exists(out() + "/index.html"));
}

TEST_F(Watch, AsksForTheColourAnew) {
  test::Words only = words();
  only.insert(only.end(), {"--only", "application"});
  test::Command command(only);
  ASSERT_TRUE(command.waitFor("Following")) << command.error;
  for (const auto& [color, rgb] : {std::pair<const char*, test::Rgb>{"#12b457", {0x12, 0xb4, 0x57}},
                                   {"#7a1fc3", {0x7a, 0x1f, 0xc3}}}) {
    command.out.clear();
    set("global_color", color);
    ASSERT_TRUE(command.waitFor("Application (")) << command.out << command.error;
    EXPECT_TRUE(hasColor(picture("settings/application-dark-after.png"), rgb));
  }
}

TEST_F(Watch, DamagedSettingsCountAsNone) {
  test::Command command(words());
  ASSERT_TRUE(command.waitFor("Following")) << command.error;
  const std::string plain = bytes("settings/application-light-after.png");
  set("global_color", "#12b457");
  ASSERT_TRUE(command.waitFor("Application")) << command.error;
  command.out.clear();
  writeSettings("<plist><dict><key>glo");
  EXPECT_NE(varnix({"settings", "--root", folder.path(), "set", "enabled", "true"}).status, 0);
  std::ofstream(folder.path() + "/.notify/com.quillmarsh.varnix2.changed") << "x";
  ASSERT_TRUE(command.waitFor("Application")) << command.error;
  EXPECT_EQ(bytes("settings/application-light-after.png"), plain);
  EXPECT_TRUE(command.isRunning());
}

}  // namespace
