#include "macho/files.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "macho/error.h"

namespace varnix::device {

std::string readTextFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file) throw Error(path + ": " + std::strerror(errno));
  return text;
}

std::vector<uint8_t> readFile(const std::string& path) {
  const std::string text = readTextFile(path);
  return {text.begin(), text.end()};
}

void writeFile(const std::string& path, std::span<const uint8_t> bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw Error(path + ": " + std::strerror(errno));
}

}  // namespace varnix::device
