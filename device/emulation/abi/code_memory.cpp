#include "abi/code_memory.h"

#include <sys/mman.h>

#include <cstring>
#include <map>
#include <mutex>

#include "macho/bytes.h"
#include "macho/error.h"
#include "process/unwinding.h"

namespace varnix::device {

namespace {

/// Takes memory in large pieces that are never freed.
void* placed(const std::vector<uint32_t>& code) {
  constexpr size_t kPiece = 1 << 18;
  static char* next = nullptr;
  static size_t left = 0;
  const size_t size = alignUp(code.size() * sizeof(uint32_t), 8);
  if (size > left) {
    void* memory = mmap(nullptr, kPiece, PROT_READ | PROT_WRITE | PROT_EXEC,
                        MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw Error("no memory for code");
    // All code here saves its frame first, and saves no other register.
    const CodeFrame all{0, kPiece, {}};
    describeFrames({&all, 1}, memory);
    next = static_cast<char*>(memory);
    left = kPiece;
  }
  char* place = next;
  std::memcpy(place, code.data(), code.size() * sizeof(uint32_t));
  __builtin___clear_cache(place, place + size);
  next += size;
  left -= size;
  return place;
}

}  // namespace

void* placeCode(const std::vector<uint32_t>& code) {
  static auto* mutex = new std::mutex;
  static auto* made = new std::map<std::vector<uint32_t>, void*>;
  const std::scoped_lock guard(*mutex);
  void*& place = (*made)[code];
  if (place == nullptr) place = placed(code);
  return place;
}

}  // namespace varnix::device
