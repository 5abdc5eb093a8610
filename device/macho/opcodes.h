// The loader's instructions for writing into an image, step by step.
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
    done,     ///< The stream's end; for lazy binds, the end of one.
    type,     ///< `number` is one of macho::kPointer and its like.
    segment,  ///< Go to `distance` within the segment `number`.
    move,     ///< Advance by `distance`, which may wrap around.
    write,    ///< `times` a word, skipping `distance` after each.
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

/// Reads steps from a part of a file, which must stay alive.
class FixupSteps {
 public:
  FixupSteps(FixupStream stream, Reader part, uint64_t pointerSize)
      : stream_(stream), cursor_(part), pointerSize_(pointerSize) {}

  /// Nothing at the part's end. Throws UnknownOpcode, and Error for a truncated operand, a number
  /// of more than 64 bits, or an unterminated name.
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
