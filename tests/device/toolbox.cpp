#include "device/toolbox.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <stdexcept>

#include "macho/files.h"

namespace device_test {

namespace device = varnix::device;

Folder::Folder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "varnix-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = pattern;
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Ran run(const std::string& command) {
  Ran ran;
  FILE* pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  char part[4096];
  for (size_t size = 0; (size = std::fread(part, 1, sizeof part, pipe)) > 0;)
    ran.output.append(part, size);
  ran.status = pclose(pipe);
  return ran;
}

std::string printed(const std::string& command) {
  Ran ran = run(command);
  if (ran.status != 0) throw std::runtime_error(command + ": " + ran.output);
  return ran.output;
}

std::vector<std::vector<std::string>> findAll(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::vector<std::vector<std::string>> found;
  for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
    found.emplace_back(at->begin(), at->end());
  return found;
}

uint32_t hexadecimal(const std::string& digits) {
  return static_cast<uint32_t>(std::stoul(digits, nullptr, 16));
}

void writeText(const std::string& path, const std::string& text) {
  device::writeFile(path, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

Bytes assemble(const std::string& source, const std::string& target) {
  const Folder folder;
  writeText(folder / "it.s", source);
  printed("clang-19 --target=" + target + " -c " + (folder / "it.s") + " -o " + (folder / "it.o"));
  return device::readFile(folder / "it.o");
}

device::StubLibrary stubLibrary(const std::string& name,
                                std::set<std::string, std::less<>> symbols) {
  device::StubLibrary library;
  library.installName = "/usr/lib/" + name + ".dylib";
  library.symbols = std::move(symbols);
  return library;
}

device::LinkOptions options(std::vector<std::string> exports) {
  return {.installName = "/Library/it.dylib",
          .currentVersion = 0x20304,
          .exports = std::move(exports),
          .libraries = {stubLibrary("first", {"_imported", "_called"}),
                        stubLibrary("second", {"_other"})}};
}

Bytes linked(const Bytes& object, const device::LinkOptions& options) {
  return device::link(device::readObject(device::Reader(object)), options);
}

ReadBack::ReadBack(const Bytes& library) { device::writeFile(folder_ / "it", library); }

std::string ReadBack::objdump(const std::string& flags) const {
  return printed("llvm-objdump-19 " + flags + " " + (folder_ / "it"));
}

std::string ReadBack::nm(const std::string& flags) const {
  return printed("llvm-nm-19 " + flags + " " + (folder_ / "it"));
}

std::map<std::string, uint32_t> ReadBack::exports() const {
  std::map<std::string, uint32_t> found;
  for (const auto& match : findAll(objdump("--macho --exports-trie"), "(0x[0-9A-F]+) +(\\S+)"))
    found[match[2]] = hexadecimal(match[1]);
  return found;
}

std::vector<std::string> ReadBack::binds() const {
  std::vector<std::string> found;
  const std::string pattern =
      "__[A-Z]+ +(__[a-z_]+) +(0x[0-9A-F]+) pointer +(-?[0-9]+) (\\S+) +([^\n]+)";
  for (const auto& match : findAll(objdump("--macho --bind"), pattern)) {
    const uint32_t offset = hexadecimal(match[2]) - section(match[1]).address;
    found.push_back(match[1] + "+" + std::to_string(offset) + " " + match[4] + " " + match[5] +
                    (match[3] == "0" ? "" : "+" + match[3]));
  }
  return found;
}

std::vector<uint32_t> ReadBack::rebases() const {
  std::vector<uint32_t> found;
  for (const auto& match :
       findAll(objdump("--macho --rebase"), "__DATA +__[a-z_]+ +(0x[0-9A-F]+) +pointer"))
    found.push_back(hexadecimal(match[1]));
  return found;
}

ReadBack::Section ReadBack::section(const std::string& name) const {
  for (const auto& match :
       findAll(objdump("--section-headers"), "(__\\S+) +([0-9a-f]{8}) ([0-9a-f]{8})"))
    if (match[1] == name) return {hexadecimal(match[2]), hexadecimal(match[3])};
  throw std::runtime_error("no section " + name);
}

uint32_t ReadBack::word(uint32_t address) const {
  // Rows of up to four words, in the file's byte order.
  for (const auto& match : findAll(objdump("-s"), "\n ([0-9a-f]+) ([0-9a-f ]{35})")) {
    const uint32_t offset = address - hexadecimal(match[1]);
    if (offset >= 16) continue;
    std::string digits = match[2];
    std::erase(digits, ' ');
    if (digits.size() >= offset * 2 + 8)
      return __builtin_bswap32(hexadecimal(digits.substr(offset * 2, 8)));
  }
  throw std::runtime_error("nothing is there");
}

std::map<uint32_t, std::string> ReadBack::code() const {
  std::map<uint32_t, std::string> found;
  for (const auto& match :
       findAll(objdump("--macho -d"), "\n +([0-9a-f]+):\\s+(?:[0-9a-f]{2} ?)+\t([^\n]+)")) {
    std::string line = match[2];
    std::replace(line.begin(), line.end(), '\t', ' ');
    found[hexadecimal(match[1])] = line;
  }
  return found;
}

}  // namespace device_test
