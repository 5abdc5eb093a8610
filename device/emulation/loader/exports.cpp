#include "loader/exports.h"

#include "macho/error.h"
#include "macho/export_tree.h"
#include "macho/format.h"

namespace varnix::device {

std::map<std::string, uint64_t, std::less<>> readExports(const ImageFile& image) {
  std::map<std::string, uint64_t, std::less<>> exports;
  walkExportTree(image.exports, [&](const std::string& name, const ExportTerminal& terminal) {
    if ((terminal.flags & (macho::kExportReexport | macho::kExportStubAndResolver)) != 0 ||
        (terminal.flags & macho::kExportKindMask) == macho::kExportAbsolute)
      throw Error("an export of a kind that is not known here: " + name);
    if (terminal.offset >= image.size) throw Error("an export lies outside the image: " + name);
    exports.emplace(name, terminal.offset);
  });
  return exports;
}

}  // namespace varnix::device
