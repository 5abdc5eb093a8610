#include "linker/dyld_info.h"

#include <algorithm>
#include <tuple>

#include "macho/format.h"

namespace varnix::device {
namespace {

/// All words that the loader sets are in the second segment.
constexpr uint8_t kDataSegment = 1;
constexpr uint32_t kLargestImmediate = 15;

}  // namespace

std::vector<uint8_t> rebaseOpcodes(const std::vector<uint32_t>& addresses, const Layout& layout) {
  if (addresses.empty()) return {};
  Writer out;
  out.u8(macho::kRebaseSetTypeImm | macho::kPointer);
  for (size_t start = 0; start < addresses.size();) {
    size_t end = start + 1;
    while (end < addresses.size() && addresses[end] == addresses[end - 1] + 4) ++end;
    out.u8(macho::kRebaseSetSegmentAndOffsetUleb | kDataSegment);
    out.uleb(addresses[start] - layout.data.address);
    const size_t count = end - start;
    if (count <= kLargestImmediate) {
      out.u8(static_cast<uint8_t>(macho::kRebaseDoImmTimes | count));
    } else {
      out.u8(macho::kRebaseDoUlebTimes);
      out.uleb(count);
    }
    start = end;
  }
  out.u8(0);
  return out.take();
}

std::vector<uint8_t> bindOpcodes(std::vector<Bind> binds, const Imports& imports,
                                 const Layout& layout) {
  if (binds.empty()) return {};
  const auto key = [&](const Bind& bind) {
    return std::tuple(imports.all[bind.import].ordinal, bind.import, bind.address);
  };
  std::sort(binds.begin(), binds.end(),
            [&](const Bind& a, const Bind& b) { return key(a) < key(b); });
  Writer out;
  out.u8(macho::kBindSetTypeImm | macho::kPointer);
  uint32_t ordinal = 0;
  int32_t addend = 0;
  const Import* symbol = nullptr;
  for (const Bind& bind : binds) {
    const Import& import = imports.all[bind.import];
    if (import.ordinal != ordinal) {
      ordinal = import.ordinal;
      if (ordinal <= kLargestImmediate) {
        out.u8(static_cast<uint8_t>(macho::kBindSetDylibOrdinalImm | ordinal));
      } else {
        out.u8(macho::kBindSetDylibOrdinalUleb);
        out.uleb(ordinal);
      }
    }
    if (&import != symbol) {
      symbol = &import;
      out.u8(macho::kBindSetSymbolTrailingFlagsImm | (import.isWeak ? macho::kWeakImport : 0));
      out.text(import.name);
    }
    if (bind.addend != addend) {
      addend = bind.addend;
      out.u8(macho::kBindSetAddendSleb);
      out.sleb(addend);
    }
    out.u8(macho::kBindSetSegmentAndOffsetUleb | kDataSegment);
    out.uleb(bind.address - layout.data.address);
    out.u8(macho::kBindDo);
  }
  out.u8(0);
  return out.take();
}

}  // namespace varnix::device
