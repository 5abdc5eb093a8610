// What the tests of the device's linker and signer share: small objects made by the assembler, and
// finished libraries read back by llvm's tools.
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

/// A folder that goes with the object.
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
  std::string output;  ///< Both streams.
};
Ran run(const std::string& command);
/// What a command that must succeed prints; throws when it fails.
std::string printed(const std::string& command);

/// Every place that a regular expression finds, as its groups.
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

/// A library as llvm's tools see it.
class ReadBack {
 public:
  explicit ReadBack(const Bytes& library);

  std::string objdump(const std::string& flags) const;
  std::string nm(const std::string& flags) const;

  /// Names with addresses, as the tree of exports has them.
  std::map<std::string, uint32_t> exports() const;
  /// "__data+8 first _imported+4", the place counted from its section's start.
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
