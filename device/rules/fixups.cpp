#include "rules/fixups.h"

#include "macho/error.h"
#include "macho/format.h"
#include "macho/opcodes.h"
#include "rules/rule.h"

namespace varnix::device {

namespace {

using Kind = FixupStep::Kind;

bool isWithin(const Image& image, uint64_t address, std::optional<size_t> segment) {
  if (!segment) return false;
  const SegmentCommand& it = image.segments[*segment];
  return address >= it.address && it.size >= image.pointerSize() &&
         address - it.address <= it.size - image.pointerSize();
}

/// Takes the steps of one stream. Stops at a word outside its segment, like the loader.
template <class Word>
class Walk {
 public:
  Walk(const Image& image, FixupStream stream, const LinkTable& table, bool isLazy)
      : image_(image),
        part_(image.bytes.part(table.offset, table.size)),
        steps_(stream, part_, image.pointerSize()),
        isLazy_(isLazy) {
    if (isLazy) word_.type = macho::kPointer;
  }

  FixupWalk<Word> run() {
    try {
      for (bool more = true; more;) {
        const auto step = steps_.next();
        more = step && take(*step);
      }
    } catch (const Error& error) {
      result_.unknownOpcode = error.what();
    }
    return std::move(result_);
  }

 private:
  bool take(const FixupStep& step) {
    if (isLazy_) result_.isEnded = step.kind == Kind::done;
    switch (step.kind) {
      case Kind::done:
        return isLazy_ && nextStream();
      case Kind::type:
        word_.type = step.number;
        return true;
      case Kind::segment:
        if (step.number >= image_.segments.size()) {
          result_.unknownSegment = "segment " + std::to_string(step.number);
          return false;
        }
        word_.segment = step.number;
        return moveTo(image_.segments[step.number].address + step.distance);
      case Kind::move:
        if (isLazy_) return refuse(step);
        return moveTo(word_.address + step.distance);
      case Kind::write:
        return (isLazy_ && step.opcode != macho::kBindDo) ? refuse(step) : write(step);
      default:
        return name(step);
    }
  }

  bool name(const FixupStep& step) {
    if constexpr (requires { word_.symbol; }) {
      if (step.kind == Kind::addend && isLazy_) return refuse(step);
      if (step.kind == Kind::addend) word_.addend = step.value;
      if (step.kind == Kind::library) word_.library = step.value;
      if (step.kind == Kind::symbol) {
        word_.symbol = step.symbol;
        word_.flags = step.number;
      }
    }
    return true;
  }

  bool refuse(const FixupStep& step) {
    result_.unknownOpcode = "an opcode that lazy binds do not have: " + hex(step.opcode);
    return false;
  }

  bool moveTo(uint64_t address) {
    word_.address = address & image_.addressMask();
    return true;
  }

  bool write(const FixupStep& step) {
    for (uint64_t i = 0; i < step.times; ++i) {
      // No stream needs more words than the file has bytes; one that does would use endless memory.
      if (result_.words.size() > image_.bytes.size()) throw Error("endless words");
      result_.words.push_back(word_);
      wroteInStream_ = true;
      if (!isWithin(image_, word_.address, word_.segment)) return false;
      moveTo(word_.address + image_.pointerSize() + step.distance);
    }
    return true;
  }

  bool nextStream() {
    bool isMore = false;
    for (uint64_t i = steps_.position(); i < part_.size(); ++i) isMore |= part_.u8(i) != 0;
    if constexpr (requires { word_.stream; }) {
      if (!wroteInStream_ && isMore) result_.emptyStreams.push_back(word_.stream);
      word_.stream = steps_.position();
    }
    wroteInStream_ = false;
    return true;
  }

  const Image& image_;
  Reader part_;
  FixupSteps steps_;
  bool isLazy_, wroteInStream_ = false;
  Word word_;
  FixupWalk<Word> result_;
};

void readSymbols(Fixups& fixups) {
  const Image& image = *fixups.image;
  const auto& [offset, count, names, namesSize] = *image.symbolTable;
  const Reader texts = image.bytes.part(names, namesSize);
  const uint64_t size = image.is64 ? macho::kNlistSize64 : macho::kNlistSize;
  const Reader table = image.bytes.part(offset, count * size);
  for (uint64_t at = 0; at < table.size(); at += size)
    fixups.symbols.push_back({texts.text(table.u32(at)), table.u8(at + 4), table.u16(at + 6),
                              image.is64 ? table.u64(at + 8) : table.u32(at + 8)});
  for (const SymbolEntry& symbol : fixups.symbols)
    if (symbol.isImport()) fixups.imports[symbol.name] = &symbol;
}

void readExports(Fixups& fixups) {
  const auto& info = *fixups.image->loaderInfo;
  fixups.exportTree = fixups.image->bytes.part(info[8], info[9]);
  try {
    walkExportTree(fixups.exportTree, [&](const std::string& name, const ExportTerminal& terminal) {
      fixups.exports.push_back({name, terminal});
      if (!terminal.isWhole) fixups.exportFault = name + ": its terminal has another size";
    });
  } catch (const Error& error) {
    fixups.exportFault = error.what();
  }
}

}  // namespace

bool BoundWord::mayBeMissing() const { return (flags & macho::kWeakImport) != 0; }

bool SymbolEntry::isImport() const {
  return (type & macho::kTypeMask) == macho::kUndefined && (type & macho::kExternal) != 0;
}

bool SymbolEntry::isExport() const {
  return (type & (macho::kExternal | macho::kPrivateExternal)) == macho::kExternal &&
         (type & macho::kTypeMask) == macho::kInSection;
}

const BoundWord* Fixups::bound(uint64_t address) const {
  const auto found = boundAt.find(address);
  return found == boundAt.end() ? nullptr : found->second;
}

Fixups readFixups(const Image& image) {
  Fixups fixups;
  fixups.image = &image;
  const auto& info = *image.loaderInfo;
  fixups.rebases =
      Walk<RebasedWord>(image, FixupStream::rebases, {"", info[0], info[1]}, false).run();
  fixups.binds = Walk<BoundWord>(image, FixupStream::binds, {"", info[2], info[3]}, false).run();
  fixups.lazyBinds = Walk<BoundWord>(image, FixupStream::binds, {"", info[6], info[7]}, true).run();
  for (BoundWord& word : fixups.lazyBinds.words) word.isLazy = true;
  for (const RebasedWord& word : fixups.rebases.words) fixups.rebasedAt[word.address] = &word;
  for (const BoundWord& word : fixups.binds.words) fixups.boundAt[word.address] = &word;
  for (const BoundWord& word : fixups.lazyBinds.words) fixups.lazilyBoundAt[word.address] = &word;
  readSymbols(fixups);
  readExports(fixups);
  return fixups;
}

std::string labelOf(const RebasedWord& word) { return hex(word.address); }

std::string labelOf(const BoundWord& word) {
  return printable(word.symbol) + " at " + hex(word.address);
}

}  // namespace varnix::device
