// Wrong usage: one line on standard error, exit status 2.
#include "cli/command.h"

using test::varnix;
using test::Words;

namespace {

class Usage : public test::CommandTest {
 protected:
  static void expect(const Words& words, const std::string& message) {
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, 2) << message;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + message + "\n");
  }
};

TEST_F(Usage, VersionAndHelp) {
  for (const char* option : {"--version", "-V"}) {
    EXPECT_EQ(varnix({option}).out, "varnix " VARNIX_VERSION "\n");
  }
  for (const Words& words : {Words{"--help"}, Words{"run", "--help"}, Words{"inspect", "--help"},
                             Words{"settings", "--help"}, Words{"settings", "set", "--help"}}) {
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.out.find("Usage: varnix"), outcome.out.npos);
    EXPECT_EQ(outcome.error, "");
  }
  EXPECT_NE(varnix({"settings", "set", "--help"}).out.find("statusbar_color_type"),
            std::string::npos);
}

TEST_F(Usage, HelpOfACommand) {
  EXPECT_EQ(varnix({"help"}).out, varnix({"--help"}).out);
  EXPECT_EQ(varnix({"help", "settings", "set"}).out, varnix({"settings", "set", "--help"}).out);
  EXPECT_NE(varnix({"help", "run"}).out, varnix({"help"}).out);
  expect({"help", "paint"}, "no such command: paint");
  expect({"help", "run", "inspect"}, "no such command: inspect");
}

TEST_F(Usage, Commands) {
  expect({}, "missing command: see varnix --help");
  expect({"settings"}, "missing command: see varnix --help");
  expect({"paint"}, "unexpected argument: paint");
  expect({"settings", "list", "x"}, "unexpected argument: x");
  expect({"settings", "get"}, "missing argument: KEY");
  expect({"settings", "set", "enabled"}, "missing argument: VALUE");
  expect({"inspect", "--frob"}, "unexpected argument: --frob");
}

TEST_F(Usage, ProcessOptions) {
  for (const char* command : {"run", "inspect"}) {
    expect({command}, "missing option: --bundle ID or --no-bundle");
    expect({command, "--bundle", "a", "--no-bundle"},
           "options that exclude each other: --bundle and --no-bundle");
    expect({command, "--bundle", "a", "--root", folder.path(), "--settings", "x"},
           "options that exclude each other: --root and --settings");
    expect({command, "--bundle", "a", "--kind", "toaster"}, "no such kind of process: toaster");
    expect({command, "--bundle", "a", "--hooking", "later"},
           "no such way of hooking: later (did you mean late?)");
    expect({command, "--bundle", "a", "--without", "b", "-[c"},
           "not a class, method, variable or function: -[c");
    expect({command, "--bundle", "a", "b"}, "unexpected argument: b");
  }
  expect({"run", "--bundle", "a", "--for", "-1"}, "unusable time: -1.000000");
  expect({"run", "--bundle", "a", "--for", "soon"}, "unusable value: --for = soon");
  expect({"inspect", "--bundle", "a", "--color", "red"}, "no such choice of --color: red");
}

TEST_F(Usage, AnEmptyValueIsAValue) {
  const auto report = inspect({"--bundle=", "--no-library"});
  EXPECT_EQ(report["bundle"], "");
  EXPECT_EQ(report["dye"], nullptr);
  EXPECT_EQ(varnix({"settings", "set", "--force", "--", "-a", "-b="}).status, 0);
  EXPECT_EQ(varnix({"settings", "get", "--", "-a"}).out, "-b=\n");
}

TEST_F(Usage, OutputThatCannotBeWrittenIsAFailure) {
  for (const char* where : {">/dev/full", ">&-"}) {
    const std::string command = test::commandFile() + " inspect --no-bundle 2>/dev/null " + where;
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 1) << where;
  }
}

TEST_F(Usage, ValuesThatAreMissing) {
  const auto outcome = varnix({"inspect", "--bundle"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_TRUE(outcome.error.starts_with("varnix: wrong number of values: --bundle"))
      << outcome.error;
}

}  // namespace
