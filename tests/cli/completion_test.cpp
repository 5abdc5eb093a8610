// What shells and man make of the declared commands.
#include <set>

#include "cli/command.h"

using test::varnix;
using test::Words;

namespace {

using Set = std::set<std::string>;

class Completion : public test::CommandTest {
 protected:
  /// What a script for a shell prints, by lines.
  Set lines(const std::string& shell, const std::string& script) {
    const std::string file = folder.path() + "/script";
    std::ofstream(file) << script;
    FILE* pipe = popen(("cd " + folder.path() + " && " + shell + " " + file).c_str(), "r");
    Set found;
    char line[4096];
    while (std::fgets(line, sizeof line, pipe) != nullptr) {
      std::string text = line;
      text.erase(text.find_last_not_of("\r\n") + 1);
      if (!text.empty()) found.insert(text);
    }
    EXPECT_EQ(pclose(pipe), 0);
    return found;
  }
  std::string written(const std::string& shell) {
    const auto outcome = varnix({"completion", shell});
    EXPECT_EQ(outcome.status, 0);
    const std::string file = folder.path() + "/completion";
    std::ofstream(file) << outcome.out;
    return file;
  }
  /// What bash offers to complete the last word.
  Set bash(const Words& words) {
    std::string list;
    for (const std::string& word : words) list += " '" + word + "'";
    return lines("bash", ". " + written("bash") + "\nCOMP_WORDS=(" + list +
                             ")\nCOMP_CWORD=" + std::to_string(words.size() - 1) +
                             "\n_varnix || exit\nprintf '%s\\n' \"${COMPREPLY[@]}\"\n");
  }
  /// The same for fish, without descriptions.
  Set fish(const std::string& line) {
    Set found;
    for (const std::string& offer : lines(
             "fish --no-config", "source " + written("fish") + "\ncomplete -C '" + line + "'\n")) {
      found.insert(offer.substr(0, offer.find('\t')));
    }
    return found;
  }
  /// The same for zsh.
  Set zsh(const std::string& line) {
    const std::string functions = folder.path() + "/functions";
    std::filesystem::create_directories(functions);
    std::filesystem::rename(written("zsh"), functions + "/_varnix");
    return lines("bash", "zsh -f " VARNIX_ZSH_CAPTURE " " + folder.path() + " '" + line + "'\n");
  }
};

const Set kCommands{"settings", "run",   "inspect",    "pick", "pane", "preview",
                    "studio",   "theme", "completion", "man",  "help"};

TEST_F(Completion, BashOffersCommandsOptionsAndValues) {
  Set all = kCommands;
  all.insert({"-h", "--help", "-V", "--version"});
  EXPECT_EQ(bash({"varnix", ""}), all);
  EXPECT_EQ(bash({"varnix", "in"}), Set{"inspect"});
  EXPECT_EQ(bash({"varnix", "settings", "se"}), Set{"set"});
  EXPECT_EQ(bash({"varnix", "inspect", "--in"}), Set{"--in-process"});
  EXPECT_EQ(bash({"varnix", "inspect", "--color", ""}), (Set{"auto", "always", "never"}));
  EXPECT_EQ(bash({"varnix", "inspect", "--color", "=", "al"}), Set{"always"});
  EXPECT_EQ(bash({"varnix", "settings", "get", "global_color_"}), Set{"global_color_type"});
  EXPECT_EQ(bash({"varnix", "inspect", "--bundle", ""}), Set{});
  EXPECT_EQ(bash({"varnix", "completion", ""}), (Set{"bash", "fish", "zsh", "-h", "--help"}));
}

TEST_F(Completion, BashOffersFilesAndFoldersWhereTheyAreMeant) {
  std::ofstream(folder.path() + "/a picture.png");
  std::filesystem::create_directories(folder.path() + "/a folder");
  EXPECT_EQ(bash({"varnix", "pick", "a"}), (Set{"a picture.png", "a folder"}));
  EXPECT_EQ(bash({"varnix", "inspect", "--root", "a"}), Set{"a folder"});
  EXPECT_EQ(bash({"varnix", "inspect", "a"}), Set{});
}

TEST_F(Completion, FishOffersTheSame) {
  EXPECT_EQ(fish("varnix "), kCommands);
  EXPECT_EQ(fish("varnix settings se"), Set{"set"});
  EXPECT_EQ(fish("varnix inspect --in"), Set{"--in-process"});
  EXPECT_EQ(fish("varnix inspect --color "), (Set{"auto", "always", "never"}));
  EXPECT_EQ(fish("varnix settings get global_color_"), Set{"global_color_type"});
}

TEST_F(Completion, ZshOffersTheSame) {
  EXPECT_EQ(zsh("varnix "), kCommands);
  EXPECT_EQ(zsh("varnix settings se"), Set{"set"});
  EXPECT_EQ(zsh("varnix inspect --in"), Set{"--in-process"});
  EXPECT_EQ(zsh("varnix inspect --color "), (Set{"auto", "always", "never"}));
  EXPECT_EQ(zsh("varnix settings get global_color_"), Set{"global_color_type"});
}

TEST_F(Completion, EveryOptionIsOfferedByEveryShell) {
  const std::string bashText = varnix({"completion", "bash"}).out;
  const std::string zshText = varnix({"completion", "zsh"}).out;
  const std::string fishText = varnix({"completion", "fish"}).out;
  for (const std::string command :
       {"settings set", "run", "inspect", "pick", "pane", "preview", "theme export"}) {
    Words words{"help"};
    std::istringstream path(command);
    for (std::string word; path >> word;) words.push_back(word);
    std::istringstream help(varnix(words).out);
    for (std::string line; std::getline(help, line);) {
      if (!line.starts_with("  --")) continue;
      const std::string option = line.substr(2, line.find(' ', 2) - 2);
      EXPECT_NE(bashText.find(option), bashText.npos) << option;
      EXPECT_NE(zshText.find(option + "["), zshText.npos) << option;
      EXPECT_NE(fishText.find("-l " + option.substr(2) + " "), fishText.npos) << option;
    }
  }
}

TEST_F(Completion, OtherShellsAreRefused) {
  const auto outcome = varnix({"completion", "tcsh"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.error, "varnix: no completion for this shell: tcsh\n");
}

TEST_F(Completion, TheManualPageIsSoundAndNamesEveryCommand) {
  const auto outcome = varnix({"man"});
  ASSERT_EQ(outcome.status, 0);
  const std::string file = folder.path() + "/varnix.1";
  std::ofstream(file) << outcome.out;
  // -ww: every warning, on standard error.
  const Set warnings = lines("sh", "groff -man -Tutf8 -ww " + file + " 2>&1 >page\n");
  EXPECT_EQ(warnings, Set{});
  for (const std::string& command : kCommands) {
    EXPECT_NE(outcome.out.find("varnix " + command), std::string::npos) << command;
  }
  EXPECT_NE(outcome.out.find("\\fB\\-\\-in\\-process\\fR"), std::string::npos);
  EXPECT_NE(outcome.out.find(".SH EXIT STATUS"), std::string::npos);
}

}  // namespace
