#include "common/death_maps.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <span>

#include "process/image_loader.h"

namespace varnix::cli {

namespace {

using Address = std::uintptr_t;

struct Named {
  char given[4096];
  char file[4096];  ///< as the kernel gives it
};

constexpr std::size_t kMostNamed = 32;
Named libraries[kMostNamed];
std::size_t namedCount = 0;

char maps[1 << 20];
std::size_t mapsLength = 0;

struct Mapping {
  Address begin = 0, end = 0;
  std::string_view file;
};

/// "begin-end rwxp offset device inode      file".
Mapping mappingOf(std::string_view line) {
  constexpr int kFieldsBeforeFile = 5;
  Mapping mapping;
  const char* end = line.data() + line.size();
  auto [dash, error] = std::from_chars(line.data(), end, mapping.begin, 16);
  if (error != std::errc() || dash == end) return {};
  if (std::from_chars(dash + 1, end, mapping.end, 16).ec != std::errc()) return {};
  for (int field = 0; field < kFieldsBeforeFile; ++field) {
    line.remove_prefix(std::min(line.find(' '), line.size()));
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  }
  mapping.file = line;
  return mapping;
}

struct NamedRange {
  Address begin, end;
  const char* name;
};

// Each library has only a few.
NamedRange namedRanges[8 * kMostNamed];
std::size_t rangeCount = 0;

/// Calls the function for each mapping until it returns true.
template <class Function>
void forEachMapping(Function isEnough) {
  std::string_view rest(maps, mapsLength);
  while (!rest.empty()) {
    const std::size_t length = std::min(rest.find('\n'), rest.size());
    if (isEnough(mappingOf(rest.substr(0, length)))) return;
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
}

std::string_view fileName(std::string_view path) { return path.substr(path.rfind('/') + 1); }

/// A library that lacks functions is loaded as a copy in memory, under its name.
bool isCopy(std::string_view mapped, std::string_view file) {
  constexpr std::string_view kBefore = "/memfd:";
  constexpr std::string_view kBehind = " (deleted)";
  if (!mapped.starts_with(kBefore) || !mapped.ends_with(kBehind)) return false;
  mapped.remove_prefix(kBefore.size());
  mapped.remove_suffix(kBehind.size());
  return mapped == fileName(file);
}

const char* namedLike(std::string_view mapped) {
  for (const Named& library : std::span(libraries, namedCount)) {
    if (mapped == library.file || isCopy(mapped, library.file)) return library.given;
  }
  return nullptr;
}

}  // namespace

void nameLibrary(const std::string& file) {
  if (namedCount == kMostNamed) return;
  std::error_code error;
  auto real = std::filesystem::canonical(file, error);
  if (error) return;
  Named& library = libraries[namedCount++];
  std::snprintf(library.given, sizeof library.given, "%s", file.c_str());
  std::snprintf(library.file, sizeof library.file, "%s", real.c_str());
}

void readMaps() {
  const int file = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
  if (file < 0) return;
  mapsLength = 0;
  while (mapsLength < sizeof maps) {
    const ssize_t length = read(file, maps + mapsLength, sizeof maps - mapsLength);
    if (length <= 0) break;
    mapsLength += static_cast<std::size_t>(length);
  }
  close(file);
  rangeCount = 0;
  forEachMapping([](const Mapping& mapping) {
    if (const char* name = namedLike(mapping.file))
      namedRanges[rangeCount++] = {mapping.begin, mapping.end, name};
    return rangeCount == std::size(namedRanges);
  });
}

const char* namedLibraryAt(Address address) {
  for (const NamedRange& range : std::span(namedRanges, rangeCount)) {
    if (range.begin <= address && address < range.end) return range.name;
  }
  // Under emulation the device's libraries are not mapped from files. The emulation's list of them
  // never changes while one of them runs.
  if (host::imageLoader() == nullptr) return nullptr;
  const std::string path = host::imageLoader()->pathOf(reinterpret_cast<const void*>(address));
  return path.empty() ? nullptr : namedLike(path);
}

std::string_view fileAt(Address address) {
  std::string_view file;
  forEachMapping([&](const Mapping& mapping) {
    const bool isHere = mapping.begin <= address && address < mapping.end;
    if (isHere) file = mapping.file;
    return isHere;
  });
  return file;
}

}  // namespace varnix::cli
