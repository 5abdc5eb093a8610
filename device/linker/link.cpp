#include "linker/link.h"

#include <openssl/sha.h>

#include <algorithm>
#include <map>
#include <set>

#include "linker/header.h"
#include "linker/imports.h"
#include "linker/layout.h"
#include "linker/link_edit.h"
#include "linker/relocate.h"
#include "macho/error.h"

namespace varnix::device {
namespace {

std::vector<Export> findExports(const Object& object, const Layout& layout,
                                const std::vector<std::string>& names) {
  std::map<std::string_view, const Symbol*> defined;
  for (const Symbol& symbol : object.symbols)
    if (symbol.isDefined() && symbol.isExternal()) defined[symbol.name] = &symbol;
  std::vector<Export> exports;
  std::set<std::string_view> seen;
  for (const std::string& name : names) {
    const auto found = defined.find(name);
    if (found == defined.end()) throw Error("to be exported, but not defined: " + name);
    if (!seen.insert(name).second) throw Error("to be exported twice: " + name);
    // The loader would have to search every library for another definition.
    if ((found->second->description & macho::kWeakDefinition) != 0)
      throw Error("to be exported, but a weak definition: " + name);
    exports.push_back({found->second->name, addressOf(object, layout, *found->second)});
  }
  return exports;
}

/// Different for different libraries, and equal for equal ones.
void writeUuid(std::vector<uint8_t>& file, size_t offset) {
  uint8_t digest[SHA256_DIGEST_LENGTH];
  SHA256(file.data(), file.size(), digest);
  digest[6] = static_cast<uint8_t>((digest[6] & 0x0f) | 0x50);  // version 5: made from a digest
  digest[8] = static_cast<uint8_t>((digest[8] & 0x3f) | 0x80);
  std::copy(digest, digest + 16, file.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// The platform loads nothing without it.
constexpr std::string_view kSystemLibrary = "/usr/lib/libSystem.B.dylib";

std::vector<StubLibrary> usedLibraries(const Object& object, const LinkOptions& options) {
  std::vector<StubLibrary> used;
  for (const StubLibrary& library : options.libraries)
    if (library.installName == kSystemLibrary ||
        std::ranges::any_of(object.symbols, [&library](const Symbol& symbol) {
          return symbol.isUndefined() && library.symbols.contains(symbol.name);
        }))
      used.push_back(library);
  return used;
}

}  // namespace

std::vector<uint8_t> link(const Object& object, const LinkOptions& given) {
  LinkOptions options = given;
  if (options.dropsUnusedLibraries) options.libraries = usedLibraries(object, options);
  if (options.isBundle && !options.installName.empty()) throw Error("a bundle has no install name");
  if (!options.isBundle && options.installName.empty())
    throw Error("a library needs an install name");
  // An import names its library in one byte, whose last few values mean something else.
  if (options.libraries.size() > 253) throw Error("more than 253 libraries");
  const Imports imports = findImports(object, options.libraries);
  Layout layout =
      layOut(object, imports.stubCount, headerSize(object.sections.size() + 2, options));
  const Fixups fixups = relocate(object, imports, layout);
  const LinkEdit edit =
      makeLinkEdit(object, imports, fixups, findExports(object, layout, options.exports), layout);
  layout.linkEdit.fileSize = static_cast<uint32_t>(edit.bytes.size());
  layout.linkEdit.size = static_cast<uint32_t>(alignUp(edit.bytes.size(), kPageSize));

  const Header header = makeHeader(layout, edit, object.minimumVersion, options);
  Writer out;
  out.bytes(header.bytes);
  for (const OutputSection& section : layout.sections) {
    if (section.isZeros() || section.size == 0) continue;
    out.fillTo(section.address);
    out.bytes(section.content);
  }
  out.fillTo(layout.linkEdit.fileOffset);
  out.bytes(edit.bytes);
  std::vector<uint8_t> file = out.take();
  writeUuid(file, header.uuid);
  return file;
}

}  // namespace varnix::device
