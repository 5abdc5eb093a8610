// The stand-in's child processes and pipes: what a hosted process can and cannot start.
#include "process/container.h"
#include "support/pane.h"

namespace {

using namespace test;

class ChildProcess : public Pane {
 protected:
  void SetUp() override { host::setContainerRoot(folder.path()); }
  static NSTask* task(const char* path, const std::vector<const char*>& arguments) {
    auto* words = NSMutableArray::array();
    for (const char* word : arguments) send(words, NSMutableArray::addObject, string(word));
    auto* made = make<NSTask>("NSTask");
    send(made, NSTask::setLaunchPath, string(path));
    send(made, NSTask::setArguments, words);
    return made;
  }
  /// What the program writes, followed by "exit N".
  static std::string run(const char* path, const std::vector<const char*>& arguments) {
    NSTask* started = task(path, arguments);
    NSPipe* pipe = NSPipe::pipe();
    send(started, NSTask::setStandardOutput, pipe);
    send(started, NSTask::launch);
    NSData* bytes =
        send(send(pipe, NSPipe::fileHandleForReading), NSFileHandle::readDataToEndOfFile);
    send<void>(started, "waitUntilExit"_sel);
    return std::string(static_cast<const char*>(send(bytes, NSData::bytes)),
                       send(bytes, NSData::length)) +
           "exit " + std::to_string(send<int>(started, "terminationStatus"_sel));
  }
  static std::string shell(const char* script) { return run("/bin/sh", {"-c", script}); }
};

TEST_F(ChildProcess, HasItsArgumentsOutputAndStatus) {
  program("say", "for word in \"$@\"; do echo \"$word\"; done\nexit 3\n");
  EXPECT_EQ(run("/usr/bin/say", {"a b", "", "*"}), "a b\n\n*\nexit 3");
}

TEST_F(ChildProcess, IsAProgramOfTheContainer) {
  for (const char* path : {"/usr/bin/killall", "/bin/true", "/usr/bin/dpkg", "bin/sh", "", "/",
                           "/../../bin/true", "/bin/../bin/true"}) {
    NSTask* none = task(path, {});
    EXPECT_THROW(send(none, NSTask::launch), host::runtime::Exception) << path;
    EXPECT_FALSE(
        send(NSFileManager::defaultManager(), NSFileManager::isExecutableFileAtPath, string(path)))
        << path;
  }
  EXPECT_TRUE(
      send(NSFileManager::defaultManager(), NSFileManager::isExecutableFileAtPath, "/bin/sh"_ns));
  program("true", "echo ours");
  EXPECT_EQ(run("/usr/bin/true", {}), "ours\nexit 0");
  EXPECT_EQ(run("/usr/../usr/bin/./true", {}), "ours\nexit 0");
}

TEST_F(ChildProcess, FindsTheContainersShellFirst) {
  program("sh", "echo \"ours $1\"");
  std::filesystem::create_directory_symlink("usr/bin", folder.path() + "/bin");
  EXPECT_EQ(shell("echo the machine's"), "ours -c\nexit 0");
}

TEST_F(ChildProcess, LetsAShellUseFewProgramsOfTheMachine) {
  EXPECT_EQ(shell("echo a | grep a"), "a\nexit 0");
  for (const char* name : {"killall", "kill-none", "ls", "rm"})
    EXPECT_EQ(shell((std::string("command -v ") + name).c_str()), "exit 127") << name;
  program("grep", "echo \"ours $1\"");
  EXPECT_EQ(shell("grep a"), "ours a\nexit 0");
}

TEST_F(ChildProcess, AsksTheMachinesPackageManager) {
  if (!std::filesystem::exists("/usr/bin/dpkg")) GTEST_SKIP() << "this machine has none";
  EXPECT_TRUE(shell("dpkg -s dpkg | grep 'Version'").starts_with("Version: "));
}

TEST_F(ChildProcess, IsLaunchedOnceAndWithStringsAlone) {
  NSTask* once = task("/bin/sh", {"-c", "exit 0"});
  EXPECT_EQ(send<int>(once, "processIdentifier"_sel), 0);
  EXPECT_THROW(send<int>(once, "terminationStatus"_sel), host::runtime::Exception);
  send(once, NSTask::launch);
  EXPECT_GT(send<int>(once, "processIdentifier"_sel), 0);
  EXPECT_THROW(send(once, NSTask::launch), host::runtime::Exception);
  send<void>(once, "waitUntilExit"_sel);
  EXPECT_FALSE(send<bool>(once, "isRunning"_sel));

  NSObject* number = NSNumber::numberWithBool(true);
  NSTask* odd = task("/bin/sh", {});
  send(odd, NSTask::setArguments, NSArray::arrayWithObjects(&number, 1));
  EXPECT_THROW(send(odd, NSTask::launch), host::runtime::Exception);
  EXPECT_THROW(send(odd, NSTask::setStandardOutput, number), host::runtime::Exception);
}

TEST_F(ChildProcess, InheritsNoPipeButItsOwn) {
  NSPipe* other = NSPipe::pipe();
  ASSERT_NE(other, nullptr);
  // The child's output is a different pipe.
  const std::string links = shell("/bin/ls -l /proc/$$/fd");
  EXPECT_NE(links.find("pipe:["), std::string::npos);
  for (const char* end : {"fileHandleForReading", "fileHandleForWriting"}) {
    auto* handle = objc::sendDynamic<NSFileHandle*>(other, sel_registerName(end));
    const int descriptor = send<int>(handle, "fileDescriptor"_sel);
    const auto link =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor)).string();
    EXPECT_EQ(links.find(link), std::string::npos) << link << "\n" << links;
    send<void>(handle, "closeFile"_sel);
    send<void>(handle, "closeFile"_sel);
    EXPECT_THROW(send(handle, NSFileHandle::readDataToEndOfFile), host::runtime::Exception);
  }
}

}  // namespace
