#include "common/death_report.h"

#include <sys/uio.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>
#include <unwind.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "common/death_maps.h"
#include "process/process.h"

// Nothing that a signal handler calls here allocates memory or takes one of our locks.
namespace varnix::cli {

namespace {

using Address = std::uintptr_t;

constexpr int kFatal[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT, SIGTRAP, SIGSYS};

/// Seconds, in case the unwinder goes round in circles.
constexpr unsigned kPatience = 4;
constexpr int kMostFrames = 200'000;

pid_t owner = 0;
int toldTo = -1;
Telling toldHow = Telling::sentence;
char folderToRemove[4096];
alignas(64) char handlerStack[1 << 17];

volatile std::sig_atomic_t dying = 0;
volatile std::sig_atomic_t faults = 0;
volatile pid_t dyingThread = 0;

struct Registers {
  Address pc;
  Address caller;  ///< return address of a function that has no frame yet; 0 if unknown
};

/// The word at an address, which may be invalid.
[[maybe_unused]] Address wordAt(Address address) {
  Address word = 0;
  iovec here{&word, sizeof word};
  iovec there{reinterpret_cast<void*>(address), sizeof word};
  return process_vm_readv(getpid(), &here, 1, &there, 1, 0) == sizeof word ? word : 0;
}

Registers registersOf(void* context) {
  const auto& machine = static_cast<ucontext_t*>(context)->uc_mcontext;
#if defined(__x86_64__)
  return {static_cast<Address>(machine.gregs[REG_RIP]),
          wordAt(static_cast<Address>(machine.gregs[REG_RSP]))};
#elif defined(__aarch64__)
  return {machine.pc, machine.regs[30]};
#elif defined(__arm__)
  return {machine.arm_pc, machine.arm_lr};
#else
#error "Where does this processor keep its program counter?"
#endif
}

struct Search {
  const char* found = nullptr;
  int frames = 0;
};

_Unwind_Reason_Code visitFrame(_Unwind_Context* frame, void* argument) {
  auto& search = *static_cast<Search*>(argument);
  // A return address is after the call, which may be a function's last instruction.
  search.found = namedLibraryAt(_Unwind_GetIP(frame) - 1);
  return search.found != nullptr || ++search.frames == kMostFrames ? _URC_END_OF_STACK
                                                                   : _URC_NO_REASON;
}

/// The nearest remembered library with a function in progress.
const char* namedLibrary(const Registers& registers) {
  if (const char* here = namedLibraryAt(registers.pc)) return here;
  if (const char* caller = namedLibraryAt(registers.caller - 1)) return caller;
  Search search;
  _Unwind_Backtrace(visitFrame, &search);
  return search.found;
}

/// A line of the report, as long as there is room.
class Line {
 public:
  void add(std::string_view text) {
    text = text.substr(0, std::min(text.size(), sizeof text_ - length_));
    std::memcpy(text_ + length_, text.data(), text.size());
    length_ += text.size();
  }
  void addHexadecimal(Address value) {
    char digits[2 * sizeof value];
    std::size_t count = 0;
    do digits[count++] = "0123456789abcdef"[value & 15];
    while ((value >>= 4) != 0);
    add("0x");
    while (count > 0) add({&digits[--count], 1});
  }
  void write(int descriptor) const {
    [[maybe_unused]] const ssize_t written = ::write(descriptor, text_, length_);
  }

 private:
  char text_[3 * 4096] = {};
  std::size_t length_ = 0;
};

void tell(const Registers& registers, const char* named) {
  constinit static Line line;
  if (toldHow == Telling::sentence) line.add("varnix: the process died");
  const std::string_view here = fileAt(registers.pc);
  if (named != nullptr) {
    line.add(" in ");
    line.add(named);
  }
  const bool isElsewhere = named == nullptr || namedLibraryAt(registers.pc) != named;
  if (isElsewhere) {
    line.add(named == nullptr ? (here.empty() ? " at " : " in ") : ", which called ");
    if (here.empty()) line.addHexadecimal(registers.pc);
    else line.add(here);
  }
  if (toldHow == Telling::sentence) {
    line.add(": ");
    line.add(sigdescr_np(dying));
    line.add("\n");
  }
  line.write(toldTo);
}

void removeFolder() {
  if (folderToRemove[0] == '\0') return;
  const pid_t remover = _Fork();
  if (remover == 0) {
    execl("/bin/rm", "rm", "-rf", "--", folderToRemove, nullptr);
    _exit(127);
  }
  while (remover > 0 && waitpid(remover, nullptr, 0) < 0 && errno == EINTR) {
  }
}

[[noreturn]] void die(int number) {
  std::signal(number, SIG_DFL);
  sigset_t all;
  sigfillset(&all);
  sigprocmask(SIG_UNBLOCK, &all, nullptr);
  raise(number);
  _exit(128 + number);
}

/// The search took too long.
void giveUp(int) {
  removeFolder();
  die(dying);
}

void handle(int number, siginfo_t*, void* context) {
  static Registers registers;
  // A forked process has its parent's handlers until it runs another program.
  if (getpid() != owner) die(number);
  if (dying != 0 && dyingThread != gettid()) {
    // The other thread ends them both.
    while (true) pause();
  }
  if (dying == 0) {
    dyingThread = gettid();
    dying = number;
    std::signal(SIGALRM, giveUp);
    alarm(kPatience);
    registers = registersOf(context);
    readMaps();
    tell(registers, namedLibrary(registers));
  } else if (faults == 0) {
    // The stack is unusable now.
    faults = 1;
    tell(registers, namedLibraryAt(registers.pc));
  }
  removeFolder();
  die(dying);
}

bool isUnhandled(int number) {
  struct sigaction old = {};
  return sigaction(number, nullptr, &old) == 0 && (old.sa_flags & SA_SIGINFO) == 0 &&
         old.sa_handler == SIG_DFL;
}

}  // namespace

void tellOfDeath(int descriptor, Telling telling) {
  owner = getpid();
  toldTo = descriptor;
  toldHow = telling;
  stack_t old = {};
  if (sigaltstack(nullptr, &old) == 0 && (old.ss_flags & SS_DISABLE) != 0) {
    stack_t stack = {};
    stack.ss_sp = handlerStack;
    stack.ss_size = sizeof handlerStack;
    sigaltstack(&stack, nullptr);
  }
  struct sigaction action = {};
  action.sa_sigaction = handle;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
  for (int number : kFatal) {
    if (isUnhandled(number)) sigaction(number, &action, nullptr);
  }
}

void removeOnDeath(const std::string& folder) {
  if (folder.size() < sizeof folderToRemove) folder.copy(folderToRemove, folder.size());
}

void loadNamed(const std::string& file) {
  nameLibrary(file);
  host::loadLibrary(file);
}

}  // namespace varnix::cli
