#include "linker/imports.h"

#include <algorithm>
#include <string>

#include "macho/error.h"

namespace varnix::device {
namespace {

/// The number, from one, of the library that offers a symbol; zero if none does.
uint32_t ordinalOf(std::string_view name, const std::vector<StubLibrary>& libraries) {
  uint32_t found = 0;
  for (uint32_t i = 0; i < libraries.size(); ++i) {
    if (!libraries[i].symbols.contains(name)) continue;
    if (found != 0)
      throw Error(std::string(name) + " is offered by " + libraries[found - 1].installName +
                  " and by " + libraries[i].installName);
    found = i + 1;
  }
  return found;
}

void giveStubs(const Object& object, Imports& imports) {
  for (const Section& section : object.sections)
    for (const Relocation& relocation : section.relocations) {
      if (relocation.kind != macho::kThumbBranch22 || !relocation.isExternal) continue;
      const auto found = imports.ofSymbol.find(relocation.target);
      if (found == imports.ofSymbol.end()) continue;
      Import& import = imports.all[found->second];
      if (!import.stub) import.stub = 0;
    }
  for (Import& import : imports.all)
    if (import.stub) import.stub = imports.stubCount++;
}

}  // namespace

Imports findImports(const Object& object, const std::vector<StubLibrary>& libraries) {
  std::vector<uint32_t> undefined;
  for (uint32_t i = 0; i < object.symbols.size(); ++i)
    if (object.symbols[i].isUndefined()) undefined.push_back(i);
  std::sort(undefined.begin(), undefined.end(), [&](uint32_t a, uint32_t b) {
    return object.symbols[a].name < object.symbols[b].name;
  });

  Imports imports;
  std::string missing;
  for (const uint32_t index : undefined) {
    const Symbol& symbol = object.symbols[index];
    if (!imports.all.empty() && imports.all.back().name == symbol.name)
      throw Error(std::string(symbol.name) + " stands twice in the symbol table");
    const uint32_t ordinal = ordinalOf(symbol.name, libraries);
    if (ordinal == 0) missing += "\n  " + std::string(symbol.name);
    imports.ofSymbol[index] = imports.all.size();
    const bool isWeak = (symbol.description & macho::kWeakReference) != 0 ||
                        (ordinal != 0 && libraries[ordinal - 1].isWeak);
    imports.all.push_back({symbol.name, ordinal, isWeak, {}});
  }
  if (!missing.empty()) throw Error("no library offers:" + missing);
  giveStubs(object, imports);
  return imports;
}

}  // namespace varnix::device
