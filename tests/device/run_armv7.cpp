// A program for 32-bit Arm Linux, without any library. It treats the linked-in library as a
// device's loader does: copies the segments, rebases, binds, runs the initialisers. Then it calls
// _entry and prints what happens.
#include <stddef.h>
#include <stdint.h>

asm(".section .rodata\n"
    ".balign 4\n"
    "file_start: .incbin \"" LIBRARY
    "\"\n"
    ".previous\n");
extern "C" const uint8_t file_start[];

alignas(0x4000) static uint8_t image[0x40000];

extern "C" void* memcpy(void* to, const void* from, size_t size) {
  for (size_t i = 0; i < size; ++i)
    static_cast<volatile uint8_t*>(to)[i] = static_cast<const uint8_t*>(from)[i];
  return to;
}

static int systemCall(int number, int a, const void* b, int c) {
  register int r7 asm("r7") = number;
  register int r0 asm("r0") = a;
  register const void* r1 asm("r1") = b;
  register int r2 asm("r2") = c;
  asm volatile("svc 0" : "+r"(r0) : "r"(r7), "r"(r1), "r"(r2) : "memory");
  return r0;
}

static int lengthOf(const char* text) {
  int length = 0;
  while (text[length] != 0) ++length;
  return length;
}

static bool isSame(const char* a, const char* b) {
  while (*a != 0 && *a == *b) ++a, ++b;
  return *a == *b;
}

static void print(const char* text) { systemCall(4, 1, text, lengthOf(text)); }

[[noreturn]] static void leave(int status) {
  for (;;) systemCall(1, status, nullptr, 0);
}

// --- what the library imports --------------------------------------------------------------------

extern "C" int called(const char* text, const void* more) {
  print(text);
  print(more == nullptr ? " without\n" : " with\n");
  return lengthOf(text);
}
static const char* const imported = "imported text";

static uint32_t addressOf(const char* name) {
  if (isSame(name, "_called")) return reinterpret_cast<uint32_t>(&called);
  if (isSame(name, "_imported")) return reinterpret_cast<uint32_t>(&imported);
  return 0;
}

// --- loading -------------------------------------------------------------------------------------

static uint32_t word(const uint8_t* at) {
  return at[0] | uint32_t{at[1]} << 8 | uint32_t{at[2]} << 16 | uint32_t{at[3]} << 24;
}

static void putWord(uint8_t* at, uint32_t value) {
  for (int i = 0; i < 4; ++i) at[i] = static_cast<uint8_t>(value >> 8 * i);
}

static uint32_t uleb(const uint8_t*& at) {
  uint32_t value = 0;
  for (int shift = 0;; shift += 7) {
    value |= (*at & 0x7fu) << shift;
    if ((*at++ & 0x80) == 0) return value;
  }
}

static uint32_t segments[4];
static int segmentCount;

static void rebase(uint32_t place, uint32_t count) {
  for (; count > 0; --count, place += 4)
    putWord(image + place, word(image + place) + reinterpret_cast<uint32_t>(image));
}

static void rebaseAll(const uint8_t* at, const uint8_t* end) {
  uint32_t place = 0;
  while (at < end && *at != 0) {
    const uint8_t opcode = *at & 0xf0, immediate = *at & 0x0f;
    ++at;
    if (opcode == 0x20) place = segments[immediate] + uleb(at);
    if (opcode == 0x50) rebase(place, immediate);
    if (opcode == 0x60) rebase(place, uleb(at));
  }
}

static void bindAll(const uint8_t* at, const uint8_t* end) {
  uint32_t place = 0, value = 0;
  while (at < end && *at != 0) {
    const uint8_t opcode = *at & 0xf0, immediate = *at & 0x0f;
    ++at;
    if (opcode == 0x40) {
      const char* name = reinterpret_cast<const char*>(at);
      at += lengthOf(name) + 1;
      value = addressOf(name);
      if (value == 0 && immediate == 0) {
        print(name);
        leave(2);
      }
    }
    if (opcode == 0x70) place = segments[immediate] + uleb(at);
    if (opcode == 0x90) putWord(image + place, value);
  }
}

/// For a tree with a single name.
static uint32_t onlyExport(const uint8_t* tree) {
  const uint8_t* at = tree;
  while (*at == 0) {
    at += 2;
    at += lengthOf(reinterpret_cast<const char*>(at)) + 1;
    at = tree + uleb(at);
  }
  at += 2;  // the size and the flags
  return uleb(at);
}

static int (*load())(int) {
  const uint8_t *info = nullptr, *command = file_start + 28;
  for (uint32_t i = 0; i < word(file_start + 16); ++i, command += word(command + 4)) {
    if (word(command) == 1) {
      segments[segmentCount++] = word(command + 24);
      if (!isSame(reinterpret_cast<const char*>(command + 8), "__LINKEDIT"))
        memcpy(image + word(command + 24), file_start + word(command + 32), word(command + 36));
    }
    if (word(command) == 0x80000022) info = command;
  }
  const auto table = [&](int field) { return file_start + word(info + field); };
  rebaseAll(table(8), table(8) + word(info + 12));
  bindAll(table(16), table(16) + word(info + 20));
  constexpr int protect = 125, readWriteExecute = 7;
  systemCall(protect, static_cast<int>(reinterpret_cast<uint32_t>(image)),
             reinterpret_cast<const void*>(sizeof image), readWriteExecute);
  command = file_start + 28;
  for (uint32_t i = 0; i < word(file_start + 16); ++i, command += word(command + 4)) {
    for (uint32_t j = 0; word(command) == 1 && j < word(command + 48); ++j) {
      const uint8_t* section = command + 56 + j * 68;
      if ((word(section + 56) & 0xff) != 9) continue;
      for (uint32_t k = 0; k < word(section + 36); k += 4)
        reinterpret_cast<void (*)()>(word(image + word(section + 32) + k))();
    }
  }
  return reinterpret_cast<int (*)(int)>(reinterpret_cast<uint32_t>(image) + onlyExport(table(40)));
}

static void printNumber(int value) {
  char text[] = "= 00\n";
  for (; value >= 10; value -= 10) ++text[2];
  text[3] = static_cast<char>('0' + value);
  print(text);
}

extern "C" [[noreturn]] void _start() {
  int (*entry)(int) = load();
  for (int i = 0; i < 4; ++i) printNumber(entry(i));
  leave(0);
}
