// How the browser is told the address: not where other users see it.
#include <sys/stat.h>

#include "studio/studio.h"

namespace {

class Browser : public test::StudioTest {
 protected:
  /// With a desktop whose program writes down what it was to open.
  void SetUp() override {
    StudioTest::SetUp();
    std::filesystem::create_directories(in("bin"));
    std::ofstream(in("bin/xdg-open"))
        << "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" << in("opened.new") << "'\nmv '"
        << in("opened.new") << "' '" << in("opened") << "'\n";
    chmod(in("bin/xdg-open").c_str(), 0755);
    setenv("PATH", (in("bin") + ":" + getenv("PATH")).c_str(), 1);
    setenv("DISPLAY", ":99", 1);
    unsetenv("WAYLAND_DISPLAY");
  }
  std::string in(const std::string& name) const { return folder.path() + "/" + name; }

  void startWithBrowser() {
    command.emplace(test::Words{"studio"});
    ASSERT_TRUE(command->waitFor("\n")) << command->error;
    address = command->out.substr(0, command->out.find('\n'));
  }
  /// The file that was opened.
  std::string opened() const {
    const auto end = std::chrono::steady_clock::now() + test::kPatience;
    while (!std::filesystem::exists(in("opened"))) {
      if (std::chrono::steady_clock::now() > end) return "";
      usleep(5'000);
    }
    std::string text = test::contentsOf(in("opened"));
    text.pop_back();
    return text;
  }
  static unsigned modeOf(const std::filesystem::path& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
  }
  void expectAPrivateFileBelow(const std::string& place) {
    startWithBrowser();
    const std::filesystem::path file = opened();
    EXPECT_EQ(file.parent_path().parent_path(), place);
    EXPECT_EQ(file.string().find(address.substr(address.find('/', 17))), std::string::npos);
    EXPECT_EQ(modeOf(file), 0600U);
    EXPECT_EQ(modeOf(file.parent_path()), 0700U);
    EXPECT_NE(test::contentsOf(file).find("content=\"0; url=" + address + "\""), std::string::npos);
    command->signal(SIGTERM);
    command->wait();
    EXPECT_FALSE(std::filesystem::exists(file.parent_path()));
  }
};

TEST_F(Browser, IsGivenAPrivateFile) {
  std::filesystem::create_directories(in("run"));
  setenv("XDG_RUNTIME_DIR", in("run").c_str(), 1);
  umask(0);
  expectAPrivateFileBelow(in("run"));
}

TEST_F(Browser, IsGivenOneElsewhereWithoutARuntimeFolder) {
  std::filesystem::create_directories(in("temporary"));
  setenv("TMPDIR", in("temporary").c_str(), 1);
  setenv("XDG_RUNTIME_DIR", in("missing").c_str(), 1);
  expectAPrivateFileBelow(in("temporary"));
}

TEST_F(Browser, IsNotOpenedWithoutADesktop) {
  std::filesystem::create_directories(in("run"));
  setenv("XDG_RUNTIME_DIR", in("run").c_str(), 1);
  unsetenv("DISPLAY");
  startWithBrowser();
  EXPECT_TRUE(std::filesystem::is_empty(in("run")));
  command->signal(SIGTERM);
  command->wait();
  EXPECT_FALSE(std::filesystem::exists(in("opened")));
}

}  // namespace
