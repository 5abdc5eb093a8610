#include "linker/link_edit.h"

#include <algorithm>

#include "macho/format.h"

namespace varnix::device {
namespace {

class Builder {
 public:
  Builder(const Object& object, const Imports& imports, Layout& layout)
      : object_(object), imports_(imports), layout_(layout) {}

  LinkEdit run(const Fixups& fixups, std::vector<Export> exports) {
    std::sort(exports.begin(), exports.end(),
              [](const Export& a, const Export& b) { return a.name < b.name; });
    edit_.exportCount = static_cast<uint32_t>(exports.size());
    edit_.importCount = static_cast<uint32_t>(imports_.all.size());
    edit_.rebase = add(rebaseOpcodes(fixups.rebases, layout_));
    edit_.bind = add(bindOpcodes(fixups.binds, imports_, layout_));
    edit_.exports = add(exportTrie(exports));
    edit_.dataInCode = add(dataInCode());
    edit_.symbols = add(symbols(exports));
    edit_.indirect = add(indirect());
    edit_.names = add(names_.take());
    edit_.bytes = out_.take();
    return std::move(edit_);
  }

 private:
  Table add(const std::vector<uint8_t>& bytes) {
    out_.padTo(4);
    const Table table{layout_.linkEdit.fileOffset + static_cast<uint32_t>(out_.size()),
                      static_cast<uint32_t>(bytes.size())};
    out_.bytes(bytes);
    return bytes.empty() ? Table{} : table;
  }

  std::vector<uint8_t> dataInCode() const {
    Writer out;
    for (const DataInCode& entry : object_.dataInCode) {
      out.u32(layout_.moved(object_, object_.sectionAt(entry.address), entry.address));
      out.u16(entry.length);
      out.u16(entry.kind);
    }
    return out.take();
  }

  void symbol(Writer& out, std::string_view name, uint8_t type, size_t section,
              uint16_t description, uint32_t value) {
    out.u32(static_cast<uint32_t>(names_.size()));
    names_.text(name);
    out.u8(type);
    out.u8(static_cast<uint8_t>(section));
    out.u16(description);
    out.u32(value);
  }

  /// The number, from one, of the section that contains an address.
  size_t sectionOf(uint32_t address) const {
    size_t number = 0;
    for (size_t i = 0; i < layout_.sections.size(); ++i)
      if (layout_.sections[i].address <= address) number = i + 1;
    return number;
  }

  std::vector<uint8_t> symbols(const std::vector<Export>& exports) {
    // Offset zero means no name.
    names_.text(" ");
    Writer out;
    for (const Export& exported : exports)
      symbol(out, exported.name, macho::kInSection | macho::kExternal,
             sectionOf(exported.address & ~1u), (exported.address & 1) != 0 ? macho::kArmThumb : 0,
             exported.address & ~1u);
    for (const Import& import : imports_.all)
      symbol(
          out, import.name, macho::kUndefined | macho::kExternal, 0,
          static_cast<uint16_t>(import.ordinal << 8 | (import.isWeak ? macho::kWeakReference : 0)),
          0);
    return out.take();
  }

  std::vector<uint8_t> indirect() {
    Writer out;
    for (const size_t index : {layout_.stubs, layout_.stubPointers}) {
      layout_.sections[index].firstIndirect = static_cast<uint32_t>(out.size() / 4);
      for (uint32_t i = 0; i < imports_.all.size(); ++i)
        if (imports_.all[i].stub) out.u32(edit_.exportCount + i);
    }
    for (size_t i = 0; i < object_.sections.size(); ++i) {
      const Section& section = object_.sections[i];
      if (section.type() != macho::kNonLazySymbolPointers) continue;
      layout_.sections[layout_.ofObject[i]].firstIndirect = static_cast<uint32_t>(out.size() / 4);
      for (uint32_t entry = 0; entry < section.size / 4; ++entry) {
        const auto import = imports_.ofSymbol.find(object_.indirect[section.firstIndirect + entry]);
        out.u32(import == imports_.ofSymbol.end()
                    ? macho::kIndirectLocal
                    : edit_.exportCount + static_cast<uint32_t>(import->second));
      }
    }
    return out.take();
  }

  const Object& object_;
  const Imports& imports_;
  Layout& layout_;
  LinkEdit edit_;
  Writer out_, names_;
};

}  // namespace

LinkEdit makeLinkEdit(const Object& object, const Imports& imports, const Fixups& fixups,
                      std::vector<Export> exports, Layout& layout) {
  return Builder(object, imports, layout).run(fixups, std::move(exports));
}

}  // namespace varnix::device
