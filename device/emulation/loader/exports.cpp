#include "loader/exports.h"

#include <vector>

#include "loader/cursor.h"
#include "loader/format.h"
#include "macho/error.h"

namespace varnix::device {

namespace {

constexpr int kDeepest = 256;
constexpr size_t kLongestName = 4096;

/// A walk over the prefix tree.
class Walk {
 public:
  explicit Walk(const ImageFile& image) : image_(image), seen_(image.exports.size()) {}

  void node(uint64_t at, const std::string& name, int depth) {
    if (depth > kDeepest || name.size() > kLongestName) throw Error("an export has no end");
    if (at >= seen_.size()) throw Error("an export lies outside the tree");
    // Two ways to one node would be a loop, or names without number.
    if (seen_[at]) throw Error("the tree of exports is no tree");
    seen_[at] = true;
    Cursor cursor(image_.exports, at);
    const uint64_t terminalSize = cursor.uleb();
    const uint64_t terminal = cursor.position();
    image_.exports.at(terminal, terminalSize);
    if (terminalSize != 0) add(name, Cursor(image_.exports.part(terminal, terminalSize)));
    Cursor children(image_.exports, terminal + terminalSize);
    const uint8_t count = children.u8();
    for (int i = 0; i < count; ++i) {
      const std::string_view more = children.text();
      node(children.uleb(), name + std::string(more), depth + 1);
    }
  }

  std::map<std::string, uint64_t, std::less<>> exports;

 private:
  void add(const std::string& name, Cursor terminal) {
    const uint64_t flags = terminal.uleb();
    if ((flags & (macho::kExportReexport | macho::kExportStubAndResolver)) != 0 ||
        (flags & macho::kExportKindMask) == macho::kExportAbsolute)
      throw Error("an export of a kind that is not known here: " + name);
    const uint64_t offset = terminal.uleb();
    if (offset >= image_.size) throw Error("an export lies outside the image: " + name);
    exports.emplace(name, offset);
  }

  const ImageFile& image_;
  std::vector<bool> seen_;
};

}  // namespace

std::map<std::string, uint64_t, std::less<>> readExports(const ImageFile& image) {
  Walk walk(image);
  if (image.exports.size() != 0) walk.node(0, "", 0);
  return std::move(walk.exports);
}

}  // namespace varnix::device
