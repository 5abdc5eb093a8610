#include "macho/opcodes.h"

#include <string>

#include "macho/format.h"

namespace varnix::device {

namespace {

using Kind = FixupStep::Kind;

void writeWords(FixupStep& step, uint64_t times, uint64_t distance) {
  step.kind = Kind::write;
  step.times = times;
  step.distance = distance;
}

void goOn(FixupStep& step, uint64_t distance) {
  step.kind = Kind::move;
  step.distance = distance;
}

void goTo(FixupStep& step, uint8_t segment, uint64_t distance) {
  step.kind = Kind::segment;
  step.number = segment;
  step.distance = distance;
}

void bindTo(FixupStep& step, int64_t library) {
  step.kind = Kind::library;
  step.value = library;
}

[[noreturn]] void unknown(uint8_t opcode) {
  throw UnknownOpcode("an unknown opcode of the loader: " + std::to_string(opcode));
}

}  // namespace

std::optional<FixupStep> FixupSteps::next() {
  if (cursor_.atEnd()) return std::nullopt;
  FixupStep step;
  step.opcode = cursor_.u8();
  const uint8_t immediate = step.opcode & macho::kImmediateMask;
  if (stream_ == FixupStream::rebases) rebase(step, immediate);
  else bind(step, immediate);
  return step;
}

void FixupSteps::rebase(FixupStep& step, uint8_t immediate) {
  switch (step.opcode & macho::kOpcodeMask) {
    case macho::kRebaseDone:
      return;
    case macho::kRebaseSetTypeImm:
      step.kind = Kind::type;
      step.number = immediate;
      return;
    case macho::kRebaseSetSegmentAndOffsetUleb:
      return goTo(step, immediate, cursor_.uleb());
    case macho::kRebaseAddAddressUleb:
      return goOn(step, cursor_.uleb());
    case macho::kRebaseAddAddressImmScaled:
      return goOn(step, immediate * pointerSize_);
    case macho::kRebaseDoImmTimes:
      return writeWords(step, immediate, 0);
    case macho::kRebaseDoUlebTimes:
      return writeWords(step, cursor_.uleb(), 0);
    case macho::kRebaseDoAddAddressUleb:
      return writeWords(step, 1, cursor_.uleb());
    case macho::kRebaseDoUlebTimesSkippingUleb: {
      const uint64_t times = cursor_.uleb();
      return writeWords(step, times, cursor_.uleb());
    }
    default:
      unknown(step.opcode);
  }
}

void FixupSteps::bind(FixupStep& step, uint8_t immediate) {
  switch (step.opcode & macho::kOpcodeMask) {
    case macho::kBindDone:
      return;
    case macho::kBindSetDylibOrdinalImm:
      return bindTo(step, immediate);
    case macho::kBindSetDylibOrdinalUleb: {
      const uint64_t number = cursor_.uleb();
      // Larger than any valid number, and still positive as an int.
      constexpr uint64_t most = 0x7fffffff;
      return bindTo(step, static_cast<int64_t>(number < most ? number : most));
    }
    case macho::kBindSetDylibSpecialImm:
      // A negative number in four bits; zero is the image itself.
      return bindTo(step, immediate == 0 ? macho::kSelf : immediate - 16);
    case macho::kBindSetSymbolTrailingFlagsImm:
      step.kind = Kind::symbol;
      step.number = immediate;
      step.symbol = cursor_.text();
      return;
    case macho::kBindSetTypeImm:
      step.kind = Kind::type;
      step.number = immediate;
      return;
    case macho::kBindSetAddendSleb:
      step.kind = Kind::addend;
      step.value = cursor_.sleb();
      return;
    case macho::kBindSetSegmentAndOffsetUleb:
      return goTo(step, immediate, cursor_.uleb());
    case macho::kBindAddAddressUleb:
      return goOn(step, cursor_.uleb());
    case macho::kBindDo:
      return writeWords(step, 1, 0);
    case macho::kBindDoAddAddressUleb:
      return writeWords(step, 1, cursor_.uleb());
    case macho::kBindDoAddAddressImmScaled:
      return writeWords(step, 1, immediate * pointerSize_);
    case macho::kBindDoUlebTimesSkippingUleb: {
      const uint64_t times = cursor_.uleb();
      return writeWords(step, times, cursor_.uleb());
    }
    default:
      unknown(step.opcode);
  }
}

}  // namespace varnix::device
