#include "abi/handler_table.h"

#include <cstring>

#include "macho/cursor.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

constexpr uint8_t kOmitted = 0xff;
/// How addresses of types are written: the distance to a pointer, in four signed bytes.
constexpr uint8_t kIndirectDistance = 0x9b;
constexpr uint64_t kDistanceSize = 4;

struct Parts {
  uint64_t calls = 0, actions = 0;
  uint64_t typesEnd = 0;  ///< Types are numbered backwards from here.
};

Parts readHead(Reader table) {
  Cursor head(table);
  Parts parts;
  if (head.u8() != kOmitted) throw Error("a table of handlers with a start of its own");
  if (const uint8_t encoding = head.u8(); encoding == kIndirectDistance) {
    const uint64_t length = head.uleb();
    parts.typesEnd = head.position() + length;
  } else if (encoding != kOmitted) {
    throw Error("types of exceptions in an unknown form");
  }
  head.u8();  // how addresses of calls would be written
  const uint64_t length = head.uleb();
  parts.calls = head.position();
  parts.actions = head.position() + length;
  return parts;
}

/// The type's address; nil for a handler of everything.
const void* typeAt(Reader table, uint64_t end, int32_t number) {
  const auto entry = table.at(end - kDistanceSize * static_cast<uint64_t>(number), kDistanceSize);
  const auto distance = static_cast<int32_t>(Reader(entry).u32(0));
  if (distance == 0) return nullptr;
  const void* type = nullptr;
  // The pointer lies outside the table.
  std::memcpy(&type, entry.data() + distance, sizeof type);
  return type;
}

}  // namespace

std::optional<Landing> findLanding(Reader table, uint32_t call,
                                   const std::function<bool(const void* type)>& catches) {
  const Parts parts = readHead(table);
  Cursor calls(table, parts.calls);
  Landing landing;
  uint64_t action = 0;
  for (uint32_t number = 0; number < call; ++number) {
    if (calls.position() >= parts.actions)
      throw Error("a call that is not in the table of handlers");
    landing.place = static_cast<uint32_t>(calls.uleb());
    action = calls.uleb();
  }
  if (action == 0) return landing;
  // Actions are numbered from one by their bytes. Each is a handler, and the distance to the next.
  for (uint64_t at = parts.actions + action - 1;;) {
    Cursor entry(table, at);
    landing.selector = static_cast<int32_t>(entry.sleb());
    if (landing.selector < 0) throw Error("a list of exceptions that a function may throw");
    if (landing.selector == 0) return landing;
    const void* type = typeAt(table, parts.typesEnd, landing.selector);
    if (type == nullptr || catches(type)) return landing;
    at = entry.position();
    const int64_t distance = entry.sleb();
    if (distance == 0) return {};
    at += static_cast<uint64_t>(distance);
  }
}

}  // namespace varnix::device
