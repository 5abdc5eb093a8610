// varnix pane with a script, on a phone whose user has seen the invitation.
#pragma once

#include "cli/command.h"

namespace test {

class PaneCommandTest : public CommandTest {
 protected:
  explicit PaneCommandTest(Words command = {"pane"}) : command_(std::move(command)) {
    write("/var/mobile/Library/Preferences/com.quillmarsh.varnix2.pane.plist",
          "<plist version=\"1.0\"><dict><key>invited</key><true/></dict></plist>");
  }

  /// What it prints from its start on.
  std::string says(const std::string& script, const Words& words = {}) const {
    const Outcome outcome = run(script, words);
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    return outcome.out;
  }
  /// What the script's commands print.
  std::string after(const std::string& script, const Words& words = {}) const {
    const std::string before = says("", words);
    const std::string all = says(script, words);
    EXPECT_TRUE(all.starts_with(before)) << all;
    return all.substr(before.size());
  }
  Outcome run(const std::string& script, const Words& words = {}) const {
    write("/script", script);
    Words all = command_;
    all.insert(all.end(), {"--script", folder.path() + "/script"});
    all.insert(all.end(), words.begin(), words.end());
    return varnix(all);
  }
  /// Runs a script of one line that changes a setting, with damaged settings.
  void expectDamagedSettingsStay(const std::string& script) const {
    for (const std::string& bytes :
         {std::string("<plist version=\"1.0\"><dict><key>enabled</key><fal"),
          std::string("garbage"), std::string()}) {
      writeSettings(bytes);
      const Outcome outcome = run(script);
      EXPECT_EQ(outcome.status, 1);
      EXPECT_EQ(outcome.error, "varnix: " + folder.path() +
                                   "/script line 1: no settings can be read from: " +
                                   settingsPath() + " (move the file away to begin anew)\n");
      EXPECT_EQ(contentsOf(settingsPath()), bytes);
    }
  }
  /// A program of the phone, in the shell's language.
  void program(const std::string& name, const std::string& text) const {
    write("/usr/bin/" + name, "#!/bin/sh\n" + text);
    std::filesystem::permissions(folder.path() + "/usr/bin/" + name,
                                 std::filesystem::perms::owner_all);
  }

 private:
  void write(const std::string& devicePath, const std::string& text) const {
    const std::filesystem::path path = folder.path() + devicePath;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
  }

  Words command_;
};

}  // namespace test
