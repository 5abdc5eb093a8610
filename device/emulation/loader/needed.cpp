#include "loader/needed.h"

#include "macho/error.h"
#include "macho/version.h"

namespace varnix::device {

namespace {

/// Takes off what is before the first `end`, and the `end` itself; everything if there is none.
std::string_view cut(std::string_view& text, char end) {
  const size_t at = text.find(end);
  const std::string_view part = text.substr(0, at);
  text.remove_prefix(at == std::string_view::npos ? text.size() : at + 1);
  return part;
}

/// How the platform's loader names a library in a message.
std::string shortName(std::string_view path) {
  return std::string(path.substr(path.find_last_of('/') + 1));
}

/// Why the library cannot be used; empty if it can.
std::string reasonAgainst(const ImageFile& image, const ImageLibrary& library,
                          std::optional<uint32_t> offered) {
  if (!offered) return "image not found";
  if (*offered >= library.version) return {};
  return "Incompatible library version: " + shortName(image.installName) + " requires version " +
         versionText(library.version) + " or later, but " + shortName(library.name) +
         " provides version " + versionText(*offered);
}

}  // namespace

LibraryVersions readLibraryVersions(std::string_view text) {
  LibraryVersions versions;
  while (!text.empty()) {
    const std::string_view line = cut(text, '\n');
    if (line.empty() || line.front() == '#') continue;
    std::string_view rest = line;
    const std::string_view name = cut(rest, '\t');
    try {
      if (!name.starts_with('/')) throw Error("not a path");
      if (!versions.emplace(name, parseVersion(cut(rest, '\t'))).second)
        throw Error("a second time");
    } catch (const Error& error) {
      throw Error(std::string(error.what()) + ": " + std::string(line));
    }
  }
  return versions;
}

void findNeeded(ImageFile& image, const OfferedVersion& offered) {
  for (ImageLibrary& library : image.libraries) {
    const std::string reason = reasonAgainst(image, library, offered(library.name));
    library.isMissing = !reason.empty();
    if (library.isMissing && !library.isWeak)
      throw Error("Library not loaded: " + std::string(library.name) +
                  ", Referenced from: " + std::string(image.installName) + ", Reason: " + reason);
  }
}

}  // namespace varnix::device
