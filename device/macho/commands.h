// A file's load commands, one after another.
#pragma once

#include <cstdint>
#include <functional>

#include "macho/bytes.h"
#include "macho/error.h"

namespace varnix::device {

/// An invalid load command.
class CommandError : public Error {
 public:
  enum class Kind : uint8_t { tooSmall, leavesHeader };
  CommandError(Kind which, const std::string& words) : Error(words), kind(which) {}
  Kind kind;
};

/// "load command #3 length (4) too small", as the platform's loader says it.
CommandError tooSmall(uint32_t index, uint32_t length);

struct LoadCommand {
  uint32_t index = 0;
  uint32_t kind = 0;  ///< macho::Command
  uint64_t at = 0;    ///< Where it stands in the file.
  Reader bytes;       ///< Kind and size, then what belongs to the kind.
};

/// Calls `each` for every load command of a file for one architecture. Throws CommandError if one
/// has fewer than 8 bytes or leaves the room that the header gives to all, and Error if the file
/// ends before.
void forEachCommand(Reader file, const std::function<void(const LoadCommand&)>& each);

}  // namespace varnix::device
