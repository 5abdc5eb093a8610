// Shared by the tests of the device's linker and signer: small objects made by the assembler, and
// finished libraries read by llvm's tools.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "linker/link.h"

namespace device_test {

using Bytes = std::vector<uint8_t>;

/// A temporary folder, removed with this object.
class Folder {
 public:
  Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder();
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

struct Ran {
  int status = 0;
  std::string output;  ///< standard output and error
};
Ran run(const std::string& command);
/// What a command prints; throws if the command fails.
std::string printed(const std::string& command);

/// All matches of a regular expression, as their groups.
std::vector<std::vector<std::string>> findAll(const std::string& text, const std::string& pattern);
uint32_t hexadecimal(const std::string& digits);

void writeText(const std::string& path, const std::string& text);

/// Code in `source` must say that it is Thumb, as compilers do.
Bytes assemble(const std::string& source, const std::string& target = "armv7-apple-ios9.3");

varnix::device::StubLibrary stubLibrary(const std::string& name,
                                        std::set<std::string, std::less<>> symbols);
/// The library "first" offers _imported and _called, "second" _other.
varnix::device::LinkOptions options(std::vector<std::string> exports = {});
Bytes linked(const Bytes& object, const varnix::device::LinkOptions& options);

/// A library as llvm's tools read it.
class ReadBack {
 public:
  explicit ReadBack(const Bytes& library);

  std::string objdump(const std::string& flags) const;
  std::string nm(const std::string& flags) const;

  /// Names with addresses, from the tree of exports.
  std::map<std::string, uint32_t> exports() const;
  /// "__data+8 first _imported+4"; the place counts from the start of its section.
  std::vector<std::string> binds() const;
  /// Addresses that the loader rebases.
  std::vector<uint32_t> rebases() const;

  struct Section {
    uint32_t size = 0, address = 0;
  };
  Section section(const std::string& name) const;
  /// The word at an address.
  uint32_t word(uint32_t address) const;
  /// Instructions with the address of each: {0x4000, "bl 0x4010"}.
  std::map<uint32_t, std::string> code() const;

 private:
  Folder folder_;
};

}  // namespace device_test
