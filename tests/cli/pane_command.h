// varnix pane with a script, on a phone whose user has seen the invitation.
#pragma once

#include "cli/command.h"

namespace test {

class PaneCommandTest : public CommandTest {
 protected:
  PaneCommandTest() {
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
    Words all = {"pane", "--script", folder.path() + "/script"};
    all.insert(all.end(), words.begin(), words.end());
    return varnix(all);
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
};

}  // namespace test
