#include "process/unbound_copy.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <span>
#include <stdexcept>

namespace host {

namespace {

using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Symbol = ElfW(Sym);

/// A name in every such file that no symbol has.
constexpr char kNobody[] = "libvarnix-host.so";

/// The parts of a shared library's file that list its imports.
class LibraryFile {
 public:
  explicit LibraryFile(const std::filesystem::path& path) : path_(path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) fail("cannot be read");
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
    const auto header = at<Header>(0, 1);
    if (std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0 || header->e_type != ET_DYN)
      fail("no library of this system");
    sections_ = {at<Section>(header->e_shoff, header->e_shnum), header->e_shnum};
    for (const Section& section : sections_) {
      if (section.sh_type != SHT_DYNSYM) continue;
      const std::size_t count = section.sh_size / sizeof(Symbol);
      symbols_ = {at<Symbol>(section.sh_offset, count), count};
      if (section.sh_link >= sections_.size()) fail("symbols without names");
      names_ = sections_[section.sh_link];
      at<char>(names_.sh_offset, names_.sh_size);
    }
  }

  /// Renames the library's imports of that name to a name that nothing has. Returns whether there
  /// were any; throws if one is not weak.
  bool unbind(const std::string& function) {
    bool found = false;
    for (Symbol& symbol : symbols_) {
      if (symbol.st_shndx != SHN_UNDEF || name(symbol) != function) continue;
      // The binding is the upper half of st_info, in 32- and 64-bit files alike.
      if (ELF64_ST_BIND(symbol.st_info) != STB_WEAK) fail("symbol not found: " + function);
      symbol.st_name = nobody();
      found = true;
    }
    return found;
  }

  /// The copy's path, valid as long as this process lives.
  std::filesystem::path copy() const {
    const int descriptor = memfd_create(path_.filename().c_str(), MFD_CLOEXEC);
    if (descriptor < 0) fail("cannot be copied");
    for (std::size_t done = 0; done < bytes_.size();) {
      const ssize_t written = write(descriptor, bytes_.data() + done, bytes_.size() - done);
      if (written < 0) fail("cannot be copied");
      done += static_cast<std::size_t>(written);
    }
    return "/proc/self/fd/" + std::to_string(descriptor);
  }

 private:
  [[noreturn]] void fail(const std::string& reason) const {
    throw std::runtime_error(path_.string() + ": " + reason);
  }
  template <class T>
  T* at(std::size_t offset, std::size_t count) {
    if (offset > bytes_.size() || count > (bytes_.size() - offset) / sizeof(T) ||
        offset % alignof(T) != 0)
      fail("no library of this system");
    return reinterpret_cast<T*>(bytes_.data() + offset);
  }
  std::string_view names() const { return {bytes_.data() + names_.sh_offset, names_.sh_size}; }
  std::string_view name(const Symbol& symbol) const {
    const std::string_view rest =
        names().substr(std::min<std::size_t>(symbol.st_name, names_.sh_size));
    return rest.substr(0, rest.find('\0'));
  }
  /// The library's names include the stand-in's file name, because it links the stand-in.
  ElfW(Word) nobody() const {
    const std::size_t found = names().find(std::string_view(kNobody, sizeof kNobody));
    if (found == std::string_view::npos) fail("not linked with the stand-in");
    return static_cast<ElfW(Word)>(found);
  }

  std::filesystem::path path_;
  std::vector<char> bytes_;
  std::span<Section> sections_;
  std::span<Symbol> symbols_;
  Section names_{};
};

}  // namespace

std::filesystem::path withoutFunctions(const std::filesystem::path& library,
                                       const std::vector<std::string>& functions) {
  if (functions.empty()) return library;
  LibraryFile file(library);
  const auto asked =
      std::count_if(functions.begin(), functions.end(),
                    [&](const std::string& function) { return file.unbind(function); });
  return asked == 0 ? library : file.copy();
}

}  // namespace host
