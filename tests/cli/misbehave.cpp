// An extension that does what $MISBEHAVE says when it is loaded.
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "process/process.h"

// A function that may be missing.
extern "C" [[gnu::weak]] int getloadavg(double* loads, int count) noexcept;

namespace {

// Volatile, so that the compiler cannot know the values.
char* volatile nowhere = reinterpret_cast<char*>(16);
void (*volatile nothing)() = nullptr;
void* (*volatile fill)(void*, int, std::size_t) = &std::memset;
volatile int bottom = -1;

/// Recurses without end.
int recurse(int level) {
  char room[512];
  std::memset(room, level, sizeof room);
  return level == bottom ? 0 : recurse(level + 1) + room[level & 511];
}

void touchNowhere() { *nowhere = 1; }

/// Sets its stack pointer to an invalid value, and faults.
void loseStack() {
#if defined(__x86_64__)
  asm volatile("mov $64, %%rsp\n\tmov $64, %%rbp\n\tmovl $1, (16)" ::: "memory");
#endif
}

/// Makes the library send a message to something that is not an object.
void misleadTheLibrary() {
  void* function = host::librarySymbol(host::defaultLibraryPath(), "QKSetPrefsTint");
  auto* setTint =
      reinterpret_cast<void (*)(void*, void*)>(reinterpret_cast<std::uintptr_t>(function));
  if (setTint != nullptr) setTint(nowhere, nowhere);
}

[[gnu::constructor]] void start() {
  const char* asked = std::getenv("MISBEHAVE");
  const std::string_view deed = asked == nullptr ? "" : asked;
  if (deed == "abort") std::abort();
  if (deed == "fault") touchNowhere();
  if (deed == "jump") nothing();
  if (deed == "overflow") recurse(0);
  if (deed == "trap") __builtin_trap();
  if (deed == "call") fill(nowhere, 1, 64);
  if (deed == "throw") throw std::runtime_error("thrown");
  if (deed == "thread") std::thread(touchNowhere).join();
  if (deed == "lose-stack") loseStack();
  if (deed == "mislead") misleadTheLibrary();
  if (deed == "fault-without-load" && getloadavg == nullptr) touchNowhere();
  if (deed == "kill") raise(SIGKILL);
  while (deed == "hang") pause();
}

}  // namespace
