// The report when a hosted process dies: in which library, and by which signal.
#include "cli/command.h"

using test::varnix;
using test::Words;

// A sanitizer reports faults itself.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VARNIX_FAULTS_ARE_OTHERS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VARNIX_FAULTS_ARE_OTHERS 1
#endif
#endif

namespace {

constexpr char kExtension[] = VARNIX_MISBEHAVE;

class Deaths : public test::CommandTest {
 protected:
  /// Both ways of hosting report the same; the message ends with the signal.
  static void expect(const char* deed, int number, const std::string& place) {
    setenv("MISBEHAVE", deed, 1);
    const std::string end = " died" + place + ": " + strsignal(number) + "\n";
    for (const char* command : {"inspect", "run"}) {
      const bool isRun = std::string(command) == "run";
      const auto outcome = varnix({command, "--bundle", "a", "--load", kExtension});
      EXPECT_EQ(outcome.status, isRun ? -number : 128 + number) << deed;
      EXPECT_EQ(outcome.out, "") << deed;
      const std::string who = isRun ? "the process" : "a hosted process";
#if defined(VARNIX_ARCHITECTURE)
      // In an emulated process, the place is reported only as well as possible.
      EXPECT_NE(outcome.error.find("varnix: " + who + " died"), outcome.error.npos)
          << outcome.error;
#else
      EXPECT_TRUE(outcome.error.ends_with("varnix: " + who + end)) << outcome.error;
#endif
    }
  }
  /// The same for a fault in a called library. The rest of what is said about that library depends
  /// on the machine.
  static void expectCalled(const char* deed, int number,
                           [[maybe_unused]] const std::string& library) {
    setenv("MISBEHAVE", deed, 1);
    const auto outcome = varnix({"inspect", "--bundle", "a", "--load", kExtension});
    EXPECT_EQ(outcome.status, 128 + number) << deed;
#if !defined(VARNIX_ARCHITECTURE)
    EXPECT_NE(
        outcome.error.find("varnix: a hosted process died in " + library + ", which called /"),
        outcome.error.npos)
        << outcome.error;
#endif
    EXPECT_TRUE(outcome.error.ends_with(std::string(": ") + strsignal(number) + "\n"))
        << outcome.error;
  }
};

TEST_F(Deaths, AnAbortIsTheCallers) { expectCalled("abort", SIGABRT, kExtension); }

TEST_F(Deaths, OfNobodysFault) {
  setenv("MISBEHAVE", "kill", 1);
  const auto outcome = varnix({"inspect", "--bundle", "a", "--load", kExtension});
  EXPECT_EQ(outcome.status, 128 + SIGKILL);
  EXPECT_EQ(outcome.error, "varnix: a hosted process died: Killed\n");
}

TEST_F(Deaths, LeaveNoFolder) {
  setenv("MISBEHAVE", "abort", 1);
  const std::string temporary = folder.path() + "/tmp";
  std::filesystem::create_directories(temporary);
  setenv("TMPDIR", temporary.c_str(), 1);
  for (const Words& words : {Words{"run"}, Words{"inspect"}, Words{"inspect", "--in-process"}}) {
    Words all = words;
    all.insert(all.end(), {"--bundle", "a", "--load", kExtension, "--settings",
                           VARNIX_SAMPLES "/settings.plist"});
    EXPECT_NE(varnix(all).status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(temporary)) << words.front();
  }
}

#if !defined(VARNIX_FAULTS_ARE_OTHERS)

std::string inExtension() { return std::string(" in ") + kExtension; }

/// The signal that the compiler's trap instruction raises.
#if defined(__aarch64__)
constexpr int kTrap = SIGTRAP;
#else
constexpr int kTrap = SIGILL;
#endif

TEST_F(Deaths, InAnExtension) {
  expect("fault", SIGSEGV, inExtension());
  expect("trap", kTrap, inExtension());
}

TEST_F(Deaths, OnAnotherThread) { expect("thread", SIGSEGV, inExtension()); }

TEST_F(Deaths, OfAStackThatOverflows) { expect("overflow", SIGSEGV, inExtension()); }

TEST_F(Deaths, OfAJumpToNowhere) { expect("jump", SIGSEGV, inExtension() + ", which called 0x0"); }

TEST_F(Deaths, InWhatAnExtensionCalled) { expectCalled("call", SIGSEGV, kExtension); }

#if defined(__x86_64__)
TEST_F(Deaths, WithoutAStack) { expect("lose-stack", SIGSEGV, inExtension()); }
#endif

TEST_F(Deaths, InTheLibrary) {
  setenv("MISBEHAVE", "mislead", 1);
  const auto outcome = varnix({"inspect", "--bundle", "a", "--load", kExtension});
  EXPECT_EQ(outcome.status, 128 + SIGSEGV);
#if !defined(VARNIX_ARCHITECTURE)
  EXPECT_NE(outcome.error.find("varnix: a hosted process died in " + test::libraryOfCommand() +
                               ", which called /"),
            outcome.error.npos)
      << outcome.error;
#endif
}

TEST_F(Deaths, OfALibraryThatLacksAFunction) {
  // Such a library is loaded as a copy in memory.
  setenv("MISBEHAVE", "fault-without-load", 1);
  const auto outcome =
      varnix({"inspect", "--bundle", "a", "--load", kExtension, "--without", "getloadavg"});
  EXPECT_EQ(outcome.status, 128 + SIGSEGV) << outcome.error;
#if !defined(VARNIX_ARCHITECTURE)
  EXPECT_TRUE(outcome.error.ends_with("varnix: a hosted process died" + inExtension() +
                                      ": Segmentation fault\n"))
      << outcome.error;
#endif
}

#endif

}  // namespace
