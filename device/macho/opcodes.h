// What the loader is told to write into an image, one step after another.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "macho/bytes.h"
#include "macho/cursor.h"
#include "macho/error.h"

namespace varnix::device {

class UnknownOpcode : public Error {
 public:
  using Error::Error;
};

/// One opcode with its operands.
struct FixupStep {
  enum class Kind : uint8_t {
    done,     ///< The stream's end; of lazy binds, that of one.
    type,     ///< `number` is one of macho::kPointer and its like.
    segment,  ///< Go to `distance` within the segment `number`.
    move,     ///< Go on by `distance`, which may wrap around.
    write,    ///< `times` a word, leaving out `distance` behind each.
    library,  ///< `value` is the library's number, from one, or macho::kSelf and below.
    symbol,   ///< `symbol`, with the flags `number`.
    addend,   ///< Add `value` to what is bound.
  };
  Kind kind = Kind::done;
  uint8_t opcode = 0;  ///< As it stands in the file.
  uint8_t number = 0;
  uint64_t distance = 0, times = 0;
  int64_t value = 0;
  std::string_view symbol;
};

enum class FixupStream : uint8_t { rebases, binds };

/// Reads steps from a part of a file that has to stay.
class FixupSteps {
 public:
  FixupSteps(FixupStream stream, Reader part, uint64_t pointerSize)
      : stream_(stream), cursor_(part), pointerSize_(pointerSize) {}

  /// None at the part's end. Throws UnknownOpcode, and Error for an operand that is cut short, a
  /// number of more than 64 bits, or a name without an end.
  std::optional<FixupStep> next();
  /// Where the next step begins.
  uint64_t position() const { return cursor_.position(); }

 private:
  void rebase(FixupStep& step, uint8_t immediate);
  void bind(FixupStep& step, uint8_t immediate);

  FixupStream stream_;
  Cursor cursor_;
  uint64_t pointerSize_;
};

}  // namespace varnix::device
